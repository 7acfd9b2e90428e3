# What `cmake --install` puts in place: the headers under include/tessaline/, the static
# libraries and the shared one, a CMake package (find_package(Tessaline) gives
# Tessaline::tessaline, Tessaline::headless, Tessaline::xml, Tessaline::regexp, Tessaline::chart,
# Tessaline::catalogue, Tessaline::host, Tessaline::shared and, built with Qt, Tessaline::qt) and
# a pkg-config file for the shared library. A project that adds Tessaline with add_subdirectory
# links the same names.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TESSALINE_EXPORTED tessaline tessaline_headless tessaline_xml tessaline_regexp tessaline_chart
    tessaline_catalogue tessaline_host)
if(TARGET tessaline_qt)
  list(APPEND TESSALINE_EXPORTED tessaline_qt)
  set(TESSALINE_WITH_QT ON)
else()
  set(TESSALINE_WITH_QT OFF)
endif()
foreach(target IN LISTS TESSALINE_EXPORTED)
  string(REPLACE "tessaline_" "" exported ${target})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${exported})
  add_library(Tessaline::${exported} ALIAS ${target})
endforeach()
set_target_properties(tessaline_shared PROPERTIES EXPORT_NAME shared)
add_library(Tessaline::shared ALIAS tessaline_shared)

install(TARGETS ${TESSALINE_EXPORTED} tessaline_shared EXPORT TessalineTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
# The chart engine's own headers (cairo's among them) stay inside: its face is install.h and the
# platform's chart interfaces.
install(DIRECTORY values frame platform validation support entry display action navigation
                  gauges trends host server
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tessaline
        FILES_MATCHING PATTERN "*.h"
        REGEX "platform/chart/[^/]*\\.h$" EXCLUDE)
install(FILES platform/chart/install.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tessaline/platform/chart)
install(EXPORT TessalineTargets NAMESPACE Tessaline::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tessaline)
configure_package_config_file(cmake/TessalineConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/TessalineConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tessaline)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/TessalineConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/TessalineConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/TessalineConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tessaline)
# The pkg-config file finds the prefix from where it lies, so that the installed tree can move
# (cmake --install --prefix, a package unpacked elsewhere).
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(TESSALINE_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH TESSALINE_PC_UP "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  string(REGEX REPLACE "/$" "" TESSALINE_PC_UP "${TESSALINE_PC_UP}")
  set(TESSALINE_PC_PREFIX "\${pcfiledir}/${TESSALINE_PC_UP}")
endif()
configure_file(cmake/tessaline.pc.in ${CMAKE_CURRENT_BINARY_DIR}/tessaline.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tessaline.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

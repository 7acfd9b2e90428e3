# What `cmake --install` puts in place: the headers under include/tessaline/, the static
# libraries and the shared one, a CMake package (find_package(Tessaline) gives
# Tessaline::tessaline, Tessaline::headless, Tessaline::xml, Tessaline::regexp, Tessaline::chart,
# Tessaline::catalogue, Tessaline::host and, built with Qt, Tessaline::qt) and a pkg-config file
# for the shared library.
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
endforeach()
set_target_properties(tessaline_shared PROPERTIES EXPORT_NAME shared)

install(TARGETS ${TESSALINE_EXPORTED} tessaline_shared EXPORT TessalineTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY values frame platform validation support entry display action navigation
                  gauges trends host server
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tessaline
        FILES_MATCHING PATTERN "*.h")
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
configure_file(cmake/tessaline.pc.in ${CMAKE_CURRENT_BINARY_DIR}/tessaline.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tessaline.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

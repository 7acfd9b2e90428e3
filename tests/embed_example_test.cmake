# Installs the build into a fresh prefix and uses it as someone else's project would:
# - builds examples/embed-qt against the installed CMake package alone and runs it offscreen;
# - compiles each installed header on its own, with the package's targets;
# - moves the prefix elsewhere and builds examples/pkg-config with pkg-config alone, and runs it;
# - configures a project that adds the source tree with add_subdirectory and links the same
#   Tessaline:: names.
#   cmake -DBUILD=<build dir> -DSOURCE=<source dir> -DWORK=<scratch dir> -DCXX=<compiler>
#         -P embed_example_test.cmake
file(REMOVE_RECURSE "${WORK}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${WORK}/prefix"
                RESULT_VARIABLE failed OUTPUT_QUIET)
if(failed)
  message(FATAL_ERROR "cmake --install failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S "${SOURCE}/examples/embed-qt" -B "${WORK}/build"
                        -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_BUILD_TYPE=Release
                RESULT_VARIABLE failed OUTPUT_QUIET)
if(failed)
  message(FATAL_ERROR "the example doesn't configure against the installed package")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build "${WORK}/build" RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "the example doesn't build against the installed package")
endif()
set(ENV{QT_QPA_PLATFORM} offscreen)
execute_process(COMMAND "${WORK}/build/embed-qt" --check RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "the example ran but drew no gauge")
endif()

# Every installed header, each in a file of its own.
file(GLOB_RECURSE headers RELATIVE "${WORK}/prefix/include" "${WORK}/prefix/include/*.h")
set(sources)
foreach(header IN LISTS headers)
  string(MAKE_C_IDENTIFIER "${header}" name)
  file(WRITE "${WORK}/headers/${name}.cpp" "#include <${header}>\n")
  list(APPEND sources "${name}.cpp")
endforeach()
file(WRITE "${WORK}/headers/CMakeLists.txt" "
cmake_minimum_required(VERSION 3.25)
project(headers LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 20)
find_package(Tessaline REQUIRED)
add_library(headers OBJECT ${sources})
target_link_libraries(headers PRIVATE Tessaline::qt Tessaline::headless Tessaline::xml
                      Tessaline::regexp Tessaline::chart Tessaline::catalogue Tessaline::host)
")
execute_process(COMMAND ${CMAKE_COMMAND} -S "${WORK}/headers" -B "${WORK}/headers/build"
                        -DCMAKE_PREFIX_PATH=${WORK}/prefix
                RESULT_VARIABLE failed OUTPUT_QUIET)
if(NOT failed)
  execute_process(COMMAND ${CMAKE_COMMAND} --build "${WORK}/headers/build" -j2
                  RESULT_VARIABLE failed OUTPUT_VARIABLE output ERROR_VARIABLE output)
endif()
if(failed)
  message(FATAL_ERROR "an installed header doesn't compile for a user:\n${output}")
endif()

# The pkg-config file finds its prefix where the tree lies now.
file(RENAME "${WORK}/prefix" "${WORK}/moved")
file(GLOB_RECURSE pcfile "${WORK}/moved/*/tessaline.pc")
if(NOT pcfile)
  message(FATAL_ERROR "no tessaline.pc installed")
endif()
get_filename_component(pcdir "${pcfile}" DIRECTORY)
get_filename_component(libdir "${pcdir}" DIRECTORY)
set(ENV{PKG_CONFIG_PATH} "${pcdir}")
execute_process(COMMAND pkg-config --cflags --libs tessaline RESULT_VARIABLE failed
                OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE)
if(failed)
  message(FATAL_ERROR "pkg-config knows no tessaline")
endif()
if(flags MATCHES "/usr/local|${WORK}/prefix")
  message(FATAL_ERROR "the pkg-config file names another prefix: ${flags}")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
execute_process(COMMAND "${CXX}" -std=c++20 "${SOURCE}/examples/pkg-config/main.cpp" ${flags}
                        -o "${WORK}/pkg-config-example"
                RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "the pkg-config example doesn't build with the flags: ${flags}")
endif()
set(ENV{LD_LIBRARY_PATH} "${libdir}")
execute_process(COMMAND "${WORK}/pkg-config-example" RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "the pkg-config example ran but its box showed nothing")
endif()

# The same names from the source tree, configured only.
file(WRITE "${WORK}/subdirectory/CMakeLists.txt" "
cmake_minimum_required(VERSION 3.25)
project(subdirectory LANGUAGES C CXX)
add_subdirectory(\"${SOURCE}\" tessaline)
add_executable(embed-qt \"${SOURCE}/examples/embed-qt/main.cpp\")
target_link_libraries(embed-qt PRIVATE Tessaline::qt Tessaline::xml Tessaline::regexp
                      Tessaline::chart Tessaline::host Tessaline::catalogue Tessaline::headless
                      Tessaline::shared Tessaline::tessaline)
")
execute_process(COMMAND ${CMAKE_COMMAND} -S "${WORK}/subdirectory" -B "${WORK}/subdirectory/build"
                RESULT_VARIABLE failed OUTPUT_QUIET ERROR_VARIABLE output)
if(failed)
  message(FATAL_ERROR "the Tessaline:: names don't resolve under add_subdirectory:\n${output}")
endif()
file(REMOVE_RECURSE "${WORK}")

# Installs the build into a fresh prefix, builds examples/embed-qt against the installed
# package alone, and runs it once offscreen:
#   cmake -DBUILD=<build dir> -DSOURCE=<source dir> -DWORK=<scratch dir> -P embed_example_test.cmake
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
file(REMOVE_RECURSE "${WORK}")

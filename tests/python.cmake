# The Python package's own tests, on Linux: with the library and the tool that are built here. Where
# these have the address sanitizer its runtime is in the process before them; what Python itself keeps
# until its end is no leak of ours.
find_program(PYTHON3 NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH)
find_program(PYTHON3 NAMES python3 REQUIRED)
set(python_environment
    PYTHONPATH=${PROJECT_SOURCE_DIR}/python:${PROJECT_SOURCE_DIR}/python/tests
    PYTHONDONTWRITEBYTECODE=1
    TUNEDEX_LIBRARY=$<TARGET_FILE:ZorTunedex>
    TUNEDEX_TOOL=$<TARGET_FILE:tunedex>)
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=address")
  foreach(name asan stdc++)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=lib${name}.so
                    OUTPUT_VARIABLE runtime OUTPUT_STRIP_TRAILING_WHITESPACE)
    string(APPEND python_runtimes "${runtime} ")
  endforeach()
  list(APPEND python_environment "LD_PRELOAD=${python_runtimes}" ASAN_OPTIONS=detect_leaks=0)
endif()
add_test(NAME python_tests
         COMMAND ${PYTHON3} -m unittest discover -s ${PROJECT_SOURCE_DIR}/python/tests)
set_tests_properties(python_tests PROPERTIES ENVIRONMENT "${python_environment}")

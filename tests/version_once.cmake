# The version stands in the top CMakeLists.txt, and nowhere else by hand. A list of changes names the
# versions that there were.
#
# SOURCE: the top directory. VERSION: the version.
string(REPLACE . "\\." pattern ${VERSION})
file(GLOB_RECURSE files ${SOURCE}/cmake/* ${SOURCE}/docs/* ${SOURCE}/scripts/* ${SOURCE}/src/*
     ${SOURCE}/tests/*.cpp ${SOURCE}/tests/*.h ${SOURCE}/tests/*.txt)
list(APPEND files ${SOURCE}/CMakeLists.txt ${SOURCE}/README.md ${SOURCE}/CONTRIBUTING.md)
foreach(file ${files})
  file(STRINGS ${file} lines REGEX "(^|[^0-9.])${pattern}([^0-9]|$)")
  foreach(line ${lines})
    string(APPEND found "${file}: ${line}\n")
  endforeach()
endforeach()
if(NOT found STREQUAL "${SOURCE}/CMakeLists.txt: project(ZorTunedex VERSION ${VERSION} LANGUAGES CXX)\n")
  message(FATAL_ERROR "the version ${VERSION} stands here:\n${found}")
endif()

# Tests under linux/ do not run on Windows. So that nobody takes them for run, the programs of Windows
# have one test for each such file, which is skipped and says why: each file tells its reason in a line
# "// Linux only: REASON". A file without one ends the configuration, on both targets.
#
# zortunedex_linux_only(FOLDER LIST): on Windows, appends to the list the source with the skipped tests.
function(zortunedex_linux_only folder list)
  set(skipped "")
  file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR}
       ${folder}/linux/*.cpp)
  foreach(file ${files})
    file(READ ${file} text)
    string(REGEX MATCHALL "\n[A-Z_]*TEST(_F|_P)?\\(" tests "${text}")
    list(LENGTH tests count)
    if(count EQUAL 0)
      continue()
    endif()
    if(NOT "\n${text}" MATCHES "\n// Linux only: ([^\n]+)\n")
      message(FATAL_ERROR "tests/${file} has no line \"// Linux only: REASON\"")
    endif()
    set(reason "${CMAKE_MATCH_1}")
    string(REGEX REPLACE "^${folder}/linux/(.*)\\.cpp$" "\\1" name ${file})
    string(MAKE_C_IDENTIFIER ${name} name)
    string(APPEND skipped
           "TEST(LinuxOnly, ${name}) { GTEST_SKIP() << R\"(${file}, ${count} tests: ${reason})\"; }\n")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  endforeach()
  if(WIN32 AND skipped)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/linux_only/${folder}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include <gtest/gtest.h>\n\n${skipped}" @ONLY)
    set(${list} ${${list}} ${source} PARENT_SCOPE)
  endif()
endfunction()

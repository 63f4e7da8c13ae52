# What the kit's archive defines is called so that no host has the like by chance: its own names, those
# of the public headers, and what the headers of others leave in it. It names no directory, either.
#
# ARCHIVE: the file. NM: the program that lists it. ROOT: where it was built.
cmake_policy(VERSION 3.25)

execute_process(COMMAND ${NM} --demangle --defined-only --extern-only --format=posix ${ARCHIVE}
                OUTPUT_VARIABLE listed COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE ";" "," listed "${listed}")
string(REPLACE "[" "<" listed "${listed}")
string(REPLACE "]" ">" listed "${listed}")
string(REPLACE "\n" ";" listed "${listed}")
set(known "zortunedex|std::|nlohmann::|__gnu_cxx::|__cxxabiv1::|station_blocks::|ComError|ComPtr<|Bstr|IUnknown|component::")
set(count 0)
set(slips "")
foreach(line IN LISTS listed)
  # A name, its kind, and numbers; of a function without its parameters.
  if(NOT line MATCHES "^(.+) [A-Zuv]( [0-9a-f]+)* *$")
    continue()
  endif()
  math(EXPR count "${count} + 1")
  string(REGEX REPLACE "\\(.*" "" name "${CMAKE_MATCH_1}")
  if(NOT name MATCHES "${known}" AND NOT name MATCHES "^(decltype|CLSID_|IID_|DW\\.ref\\.|\\.refptr)")
    list(APPEND slips "${name}")
  endif()
endforeach()
list(REMOVE_DUPLICATES slips)
if(slips)
  message(SEND_ERROR "names that a host may have, too: ${slips}")
endif()
if(count LESS 1000)
  message(SEND_ERROR "${ARCHIVE} defines ${count} names: it is not whole")
endif()
execute_process(COMMAND grep -qaF ${ROOT} ${ARCHIVE} RESULT_VARIABLE status)
if(NOT status EQUAL 1)
  message(SEND_ERROR "${ARCHIVE} names the directory where it was built")
endif()

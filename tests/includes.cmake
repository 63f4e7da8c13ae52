# scripts/check-includes passes the sources as they are, and each edge that must not be is found in a
# copy of them.
#
# SOURCE: the top directory. WORK: a directory of its own.
function(check)
  execute_process(COMMAND ${SOURCE}/scripts/check-includes ${ARGV} RESULT_VARIABLE status
                  OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(status ${status} PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

# refuses(FILE LINE MESSAGE): with the line at the file's end that is what the script says, alone.
function(refuses file line message)
  file(READ ${WORK}/${file} before)
  file(APPEND ${WORK}/${file} "${line}\n")
  check(${WORK})
  file(WRITE ${WORK}/${file} "${before}")
  if(status EQUAL 0 OR NOT output STREQUAL "check-includes: ${message}\n")
    message(FATAL_ERROR "${line} in ${file}: ${status}\n${output}")
  endif()
endfunction()

check()
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${output}")
endif()

file(REMOVE_RECURSE ${WORK})
file(COPY ${SOURCE}/src ${SOURCE}/docs DESTINATION ${WORK})
file(COPY ${SOURCE}/cmake/public_headers.cmake DESTINATION ${WORK}/cmake)
check(${WORK})
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the copy: ${output}")
endif()
refuses(src/xml/elements/xml_nodes.cpp "#include \"channels/chan_info_mgr.h\""
        "src/xml/elements/xml_nodes.cpp includes channels/chan_info_mgr.h")
refuses(src/platform/text.cpp "#  include \"core/keep_alive.h\""
        "src/platform/text.cpp includes core/keep_alive.h")
refuses(src/kit/text/utf.h "#include \"platform/text.h\""
        "src/kit/text/utf.h includes platform/text.h")
refuses(src/kit/json/channel_json.cpp "#include \"kit/files/whole_file.h\""
        "src/kit/json/channel_json.cpp includes kit/files/whole_file.h")
refuses(src/tool/main.cpp "#include \"xml/elements/xml_nodes.h\"" "src/tool/main.cpp includes xml/elements/xml_nodes.h")
refuses(src/core/module_lock.h "#include \"core/aggregatable.h\""
        "files include each other:\n  src/core/aggregatable.h\n  src/core/module_lock.h")
file(WRITE ${WORK}/src/attic/old.cpp "#include \"core/keep_alive.h\"\n")
check(${WORK})
if(NOT output STREQUAL "check-includes: src/attic/old.cpp stands in no folder of the table\n")
  message(FATAL_ERROR "a folder without a row: ${output}")
endif()
file(REMOVE_RECURSE ${WORK}/src/attic)
file(READ ${WORK}/docs/architecture.md document)
string(REPLACE "| `words` | `core`" "| `words` | `module`, `core`" document "${document}")
file(WRITE ${WORK}/docs/architecture.md "${document}")
check(${WORK})
if(NOT output MATCHES "^check-includes: nothing in words includes module: the table lists it\n$")
  message(FATAL_ERROR "an edge that is none: ${output}")
endif()

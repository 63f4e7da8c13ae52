# Runs an example of a guide in a directory that has a copy of the samples, and holds what it prints
# against what stands there.
#
# PROGRAM: the program with what starts it. PRINTED: the file with the text. SAMPLES: the samples, WORK:
# a directory.
# LINES: the most lines that the example at SOURCE may have; 0 for any number.
file(REMOVE_RECURSE ${WORK})
file(COPY ${SAMPLES} DESTINATION ${WORK})
execute_process(COMMAND ${PROGRAM} WORKING_DIRECTORY ${WORK} RESULT_VARIABLE result
                OUTPUT_VARIABLE output ERROR_VARIABLE error)
string(REPLACE "\r" "" output "${output}")
file(READ ${PRINTED} printed)
if(NOT result EQUAL 0 OR NOT output STREQUAL printed)
  message(SEND_ERROR "${PROGRAM}: ${result}, ${error}; it printed\n${output}and not\n${printed}")
endif()
if(LINES)
  file(STRINGS ${SOURCE} lines)
  list(LENGTH lines count)
  if(count GREATER LINES)
    message(SEND_ERROR "${SOURCE} has ${count} lines and not ${LINES} at most")
  endif()
endif()

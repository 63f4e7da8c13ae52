# Runs a client on a copy of the samples and compares what it says with texts that hold on both
# targets: the samples as they are, each step of a change, and the records that are there when the
# saved file is loaded again. Files that either target saved load as the same records on both.
#
# CLIENT: the program with what starts it. REGISTER, UNREGISTER: commands around it, or empty.
# SAMPLES, DATA, WORK: directories. SAVED: the file that this target saves, byte for byte, or empty
# where that is the platform's business.
function(run expected)
  execute_process(COMMAND ${CLIENT} ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output
                  RESULT_VARIABLE status)
  file(READ ${DATA}/${expected} golden)
  if(NOT status EQUAL 0 OR NOT output STREQUAL golden)
    set(failed "${failed}client ${ARGN}: status ${status}, expected ${expected}\n${output}"
        PARENT_SCOPE)
  endif()
endfunction()

function(must)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}: ${status}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
file(COPY ${SAMPLES}/ChanInfo.xml DESTINATION ${WORK})

if(REGISTER)
  must(${REGISTER})
endif()
run(samples.txt list ${WORK})
run(change.txt change ${WORK})
run(changed.txt list ${WORK})
run(changed.txt list ${DATA}/saved_linux)
run(changed.txt list ${DATA}/saved_windows)
if(UNREGISTER)
  must(${UNREGISTER})
endif()
if(SAVED)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${WORK}/ChanInfo.xml ${SAVED}
                  RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    set(failed "${failed}the saved file is not ${SAVED}\n")
  endif()
endif()
if(failed)
  message(FATAL_ERROR "${failed}")
endif()

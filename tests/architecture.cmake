# scripts/check-architecture passes docs/architecture.md as it is, and finds a file, a folder and a
# function that are not there in a copy.
#
# SOURCE: the top directory. WORK: a directory of its own.
file(REMOVE_RECURSE ${WORK})
file(COPY ${SOURCE}/docs DESTINATION ${WORK})
foreach(folder cmake python scripts src tests)
  file(CREATE_LINK ${SOURCE}/${folder} ${WORK}/${folder} SYMBOLIC)
endforeach()
file(READ ${SOURCE}/docs/architecture.md document)

# says(EXPECTED OLD NEW): what the script says of the document with OLD replaced.
function(says expected old new)
  string(REPLACE "${old}" "${new}" text "${document}")
  if(expected AND text STREQUAL document)
    message(FATAL_ERROR "docs/architecture.md has no ${old}")
  endif()
  file(WRITE ${WORK}/docs/architecture.md "${text}")
  execute_process(COMMAND ${SOURCE}/scripts/check-architecture ${WORK} RESULT_VARIABLE status
                  OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(expected)
    set(expected "check-architecture: ${expected}\n")
  endif()
  if(NOT output STREQUAL "${expected}" OR (expected AND status EQUAL 0)
     OR (NOT expected AND NOT status EQUAL 0))
    message(FATAL_ERROR "${new} for ${old}: ${status}\n${output}")
  endif()
endfunction()

says("" "" "")
says("there is no channels/sorting/introsorts.h" "`channels/sorting/introsort.h`"
     "`channels/sorting/introsorts.h`")
says("there is no src/kits" "`src/kit`" "`src/kits`")
says("database/tunedex.cpp has no function LoadChannel" "`OpenDocuments`, `LoadChannels`"
     "`OpenDocuments`, `LoadChannel`")

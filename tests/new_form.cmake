# A form or a source that is added to core/station_blocks/layout.h must not compile until every place that
# reads or writes fields says what it does with it.
file(READ ${SOURCE}/core/station_blocks/layout.h header)

# Checks both files with an enumerator more behind `last`.
function(expect_refused enumeration last)
  string(REPLACE "${last}\n}" "${last}\nAddedByTheTest,\n}" text "${header}")
  if(text STREQUAL header)
    message(FATAL_ERROR "the last enumerator of ${enumeration} was not found")
  endif()
  file(WRITE ${WORK}/core/station_blocks/layout.h "${text}")
  foreach(file xml/codecs/channel_reader xml/codecs/channel_writer)
    execute_process(COMMAND ${COMPILER} -std=c++20 -Wall -Werror -fsyntax-only -I${WORK} -I${SOURCE}
                            ${SOURCE}/${file}.cpp
                    ERROR_VARIABLE errors)
    if(NOT errors MATCHES "AddedByTheTest[^\n]*Werror=switch")
      message(FATAL_ERROR "${file}.cpp takes a new ${enumeration} without a word: ${errors}")
    endif()
  endforeach()
endfunction()

expect_refused(Form "  SpectralInversion,")
expect_refused(Source "  Lock,             ///< IChannelInfo::GetLock")

# Holds a host and its project as a document shows them against those in samples/, and runs the host: on
# the samples, on directories that a host may be given, and on what is none.
#
# DOCUMENT, HOST: the two texts. PROGRAM: the program with what starts it. SAMPLES, WORK: directories.
# REFUSED, MISSING: what it says of a directory that the library does not take, and of one that is not
# there. WINDOWS: true where paths are text of a code page, which is that of Western Europe.
file(READ ${DOCUMENT} document)
file(READ ${HOST} host)
string(FIND "${document}" "```cpp\n${host}```" found)
if(found EQUAL -1)
  message(FATAL_ERROR "${DOCUMENT} does not show ${HOST} as it is")
endif()
get_filename_component(folder ${HOST} DIRECTORY)
file(READ ${folder}/CMakeLists.txt project)
string(FIND "${document}" "```cmake\n${project}```" found)
if(found EQUAL -1)
  message(FATAL_ERROR "${DOCUMENT} does not show ${folder}/CMakeLists.txt as it is")
endif()

function(expect status out err)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE error RESULT_VARIABLE result)
  if(NOT result STREQUAL status OR NOT output MATCHES "^${out}$" OR NOT error MATCHES "^${err}$")
    message(SEND_ERROR "${ARGN}: the host answered ${result}, wrote \"${output}\" and \"${error}\"")
  endif()
endfunction()

set(counted "47 television channels\r?\n")
set(refused "${REFUSED}\r?\n")
set(missing "${MISSING}\r?\n")
expect(0 "${counted}" "" ${PROGRAM} ${SAMPLES})

file(REMOVE_RECURSE ${WORK})
foreach(name "Küche und Bad" "日本語")
  file(COPY ${SAMPLES}/ DESTINATION "${WORK}/${name}")
endforeach()
expect(0 "${counted}" "" ${PROGRAM} "${WORK}/Küche und Bad")
if(WINDOWS)
  expect(1 "" "${refused}" ${PROGRAM} "${WORK}/日本語")
else()
  expect(0 "${counted}" "" ${PROGRAM} "${WORK}/日本語")
  expect(1 "" "[^\n]*annot convert[^\n]*\n" sh -c "exec \"$0\" \"$(printf 'K\\374che')\"" ${PROGRAM})
endif()
expect(1 "" "${missing}" ${PROGRAM} "${WORK}/missing")
expect(1 "" "${missing}" ${PROGRAM} "${WORK}/fehlt für immer")

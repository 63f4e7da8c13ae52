# Makes an archive fit to be linked with any host: without debug symbols, and with what it has of the
# platform below names of its own, so that nothing of a host's can be taken for it.
#
# Usage: cmake -DARCHIVE=FILE -DNM=... -DOBJCOPY=... -P kit_archive.cmake
set(own host files domtree dom temporary_file placing memory_stream msxml wide_path code_page
    countries FileDescriptor FileHandle IconvConverter)

execute_process(COMMAND ${NM} --defined-only --format=posix ${ARCHIVE} OUTPUT_VARIABLE symbols
                COMMAND_ERROR_IS_FATAL ANY)
# Mangled names have each part's length in front of it.
string(REGEX MATCHALL "\n_Z[^ \n]+ [TDBRVWuS] " lines "${symbols}")
list(REMOVE_DUPLICATES lines)
set(renamed "")
foreach(line ${lines})
  string(REGEX REPLACE "^\n([^ ]+) .*" "\\1" symbol "${line}")
  set(new ${symbol})
  # A function in no namespace.
  if(symbol MATCHES "^_Z([0-9]+)(.*)$")
    math(EXPR length "${CMAKE_MATCH_1} + 15")
    set(new _Z${length}zortunedex_kit_${CMAKE_MATCH_2})
  endif()
  foreach(name ${own})
    string(LENGTH ${name} length)
    math(EXPR prefixed "${length} + 15")
    string(REGEX REPLACE "([^0-9])${length}${name}" "\\1${prefixed}zortunedex_kit_${name}" new "${new}")
  endforeach()
  if(NOT new STREQUAL symbol)
    string(APPEND renamed "${symbol} ${new}\n")
  endif()
endforeach()
file(WRITE ${ARCHIVE}.names "${renamed}")
execute_process(COMMAND ${OBJCOPY} --strip-debug --redefine-syms=${ARCHIVE}.names ${ARCHIVE}
                COMMAND_ERROR_IS_FATAL ANY)

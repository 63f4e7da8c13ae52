# What the header for C++20 refuses when a program is compiled, with the words that it says it in: one
# line of a program each.
#
# COMPILER: of the target. INCLUDE: the folder with zortunedex/. WORK: a directory of its own.
set(start "#include <zortunedex/zortunedex.hpp>\n")
function(compile code)
  file(WRITE ${WORK}/refused.cpp "${start}${code}")
  execute_process(COMMAND ${COMPILER} -std=c++20 -Wall -Wextra -Wconversion -Wshadow -Werror
                          -fsyntax-only -I${INCLUDE} ${WORK}/refused.cpp
                  RESULT_VARIABLE status ERROR_VARIABLE errors)
  set(status ${status} PARENT_SCOPE)
  set(errors "${errors}" PARENT_SCOPE)
endfunction()

compile("void Use(zortunedex::channel& c) {
  c.set<\"serviceID\">(5).set<\"name\">(\"a\").set<\"polarisation\">(BDA_POLARISATION_LINEAR_H);
  c.set_frequency(static_cast<std::uint32_t>(c.get<\"symbolRate\">()));
  c.set_streams<\"AudioStream\">(c.streams<\"AudioStream\">());\n}\n")
if(NOT status EQUAL 0)
  message(FATAL_ERROR "what is right does not compile:\n${errors}")
endif()

set(program "")
set(line 1)
set(expected "")
function(refused code words)
  string(APPEND program "void Use${line}(zortunedex::channel& c) { ${code} }\n")
  math(EXPR line "${line} + 1")
  set(line ${line} PARENT_SCOPE)
  set(program "${program}" PARENT_SCOPE)
  set(expected ${expected} "refused.cpp:${line}:" "error: [^\n]*${words}" PARENT_SCOPE)
endfunction()
refused("c.get<\"noSuchField\">();" "no channel has a field of that name")
refused("c.set<\"noSuchField\">(1);" "no channel has a field of that name")
refused("c.set<\"index\">(1);" "the list numbers its channels")
refused("c.set<\"numOfAudioStreams\">(1);" "set the streams: their count follows")
refused("c.set<\"name\">(1);" "the field is a text")
refused("c.set<\"serviceID\">(\"1\");" "the field is a number")
refused("c.set<\"polarisation\">(1);" "the field is a value of that type")
refused("c.streams<\"NoStream\">();" "no channel has streams of that name")
compile("${program}")
foreach(words ${expected})
  if(status EQUAL 0 OR NOT errors MATCHES "${words}")
    message(SEND_ERROR "${words}: ${status}\n${errors}")
  endif()
endforeach()

# The examples of a guide as programs: one program holds those that are the inside of a function, and
# takes the name of one; one that has a main of its own is a program of its own.
#
# zortunedex_guide(DOCUMENT PROGRAM FOLDER): writes FOLDER/PROGRAM.cpp, FOLDER/NAME.cpp for each example
# with a main, and FOLDER/NAME.txt for what each prints. GUIDE_EXAMPLES and GUIDE_PROGRAMS name them.
# PROGRAM is cpp_guide, or kit_guide for examples that see the kit and hold a library.
#
# As a script it does the same, with -DDOCUMENT -DPROGRAM -DFOLDER, and FOLDER/examples.txt names those
# of the one program.
function(zortunedex_guide document program folder)
  if(NOT CMAKE_SCRIPT_MODE_FILE)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${document})
  endif()
  set(headers <zortunedex/zortunedex.hpp>)
  set(parameter "")
  set(argument "")
  set(namespace zortunedex)
  if(program STREQUAL kit_guide)
    # What the page names, in its words.
    file(STRINGS ${document} lines REGEX "^#include <zortunedex/kit/")
    list(TRANSFORM lines REPLACE "^#include " "")
    list(REMOVE_DUPLICATES lines)
    list(APPEND headers ${lines})
    set(namespace zortunedex::kit)
    set(library "  const zortunedex::library library;\n")
    set(parameter "[[maybe_unused]] const zortunedex::library& library")
    set(argument library)
  endif()
  list(TRANSFORM headers PREPEND "#include ")
  list(JOIN headers "\n" headers)
  file(READ ${document} rest)
  set(names "")
  set(programs "")
  set(functions "")
  set(calls "")
  while(rest MATCHES "<!-- example: ([a-z]+) -->\n```cpp\n([^`]*)```\n\n```text\n([^`]*)```\n")
    set(name ${CMAKE_MATCH_1})
    set(code "${CMAKE_MATCH_2}")
    set(printed "${CMAKE_MATCH_3}")
    string(FIND "${rest}" "<!-- example: ${name} -->" place)
    math(EXPR place "${place} + 20")
    string(SUBSTRING "${rest}" ${place} -1 rest)
    file(CONFIGURE OUTPUT ${folder}/${name}.txt CONTENT "${printed}" @ONLY)
    if(code MATCHES "int main\\(")
      list(APPEND programs ${name})
      file(CONFIGURE OUTPUT ${folder}/${name}.cpp CONTENT "${code}" @ONLY)
    else()
      list(APPEND names ${name})
      string(APPEND functions "void Show_${name}(${parameter}) {\n${code}}\n\n")
      string(APPEND calls "  if (name == \"${name}\") return Show_${name}(${argument}), 0;\n")
    endif()
  endwhile()
  file(CONFIGURE OUTPUT ${folder}/${program}.cpp @ONLY CONTENT
"#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <ranges>
#include <string>
#include <vector>
${headers}

using namespace ${namespace};

namespace {

${functions}}  // namespace

int main(int argc, char** argv) try {
  const std::string name = argc > 1 ? argv[1] : \"\";
${library}${calls}  return 2;
} catch (const std::exception& raised) {
  std::cerr << raised.what() << '\\n';
  return 1;
}
")
  set(GUIDE_EXAMPLES ${names} PARENT_SCOPE)
  set(GUIDE_PROGRAMS ${programs} PARENT_SCOPE)
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
  zortunedex_guide(${DOCUMENT} ${PROGRAM} ${FOLDER})
  list(JOIN GUIDE_EXAMPLES "\n" names)
  file(WRITE ${FOLDER}/examples.txt "${names}\n")
endif()

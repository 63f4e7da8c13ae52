# The examples of docs/cpp.md as programs: cpp_guide holds those that are the inside of a function, and
# takes the name of one; one that has a main of its own is a program of its own.
#
# zortunedex_cpp_guide(DOCUMENT FOLDER): writes FOLDER/cpp_guide.cpp, FOLDER/NAME.cpp for each example
# with a main, and FOLDER/NAME.txt for what each prints. CPP_GUIDE_EXAMPLES and CPP_GUIDE_PROGRAMS name
# them.
function(zortunedex_cpp_guide document folder)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${document})
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
      string(APPEND functions "void Show_${name}() {\n${code}}\n\n")
      string(APPEND calls "  if (name == \"${name}\") return Show_${name}(), 0;\n")
    endif()
  endwhile()
  file(CONFIGURE OUTPUT ${folder}/cpp_guide.cpp @ONLY CONTENT
"#include <algorithm>
#include <functional>
#include <iostream>
#include <ranges>
#include <string>
#include <vector>
#include <zortunedex/zortunedex.hpp>

using namespace zortunedex;

namespace {

${functions}}  // namespace

int main(int argc, char** argv) try {
  const std::string name = argc > 1 ? argv[1] : \"\";
${calls}  return 2;
} catch (const std::exception& raised) {
  std::cerr << raised.what() << '\\n';
  return 1;
}
")
  set(CPP_GUIDE_EXAMPLES ${names} PARENT_SCOPE)
  set(CPP_GUIDE_PROGRAMS ${programs} PARENT_SCOPE)
endfunction()

# The headers for hosts: what one of them includes by a way is there, too, and one of the kit needs no
# other library, has no macros and opens no namespace.
#
# INCLUDE: the folder zortunedex that packages have. WORK: a directory.

cmake_policy(VERSION 3.25)

# what_is_wrong(FOLDER RESULT): a line for each slip.
function(what_is_wrong folder result)
  set(slips "")
  file(GLOB_RECURSE headers RELATIVE ${folder} ${folder}/*.h ${folder}/*.hpp)
  foreach(header ${headers})
    get_filename_component(place ${folder}/${header} DIRECTORY)
    file(STRINGS ${folder}/${header} lines REGEX "^ *# *include|^ *# *define|^ *using namespace")
    foreach(line ${lines})
      if(line MATCHES "^ *# *include +\"(.*)\"")
        # Those of platform/ name the other system's, too, and do not take them.
        if(NOT EXISTS ${place}/${CMAKE_MATCH_1} AND NOT CMAKE_MATCH_1 MATCHES "^(linux|windows)/")
          list(APPEND slips "${header} includes ${CMAKE_MATCH_1}, which is not there")
        endif()
      elseif(header MATCHES "^kit/" AND NOT line MATCHES "include +<[a-z_]+>")
        string(REPLACE ";" "" line "${line}")
        list(APPEND slips "${header}: ${line}")
      endif()
    endforeach()
  endforeach()
  set(${result} "${slips}" PARENT_SCOPE)
endfunction()

what_is_wrong(${INCLUDE} slips)
foreach(slip ${slips})
  message(SEND_ERROR "${slip}")
endforeach()
file(GLOB_RECURSE headers ${INCLUDE}/kit/*.h)
if(NOT headers)
  message(SEND_ERROR "there is no header of the kit in ${INCLUDE}")
endif()

# A slip of each kind is found.
file(REMOVE_RECURSE ${WORK})
file(WRITE ${WORK}/kit/a.h "#include <string>\n#include \"b.h\"\n")
file(WRITE ${WORK}/kit/b.h "#include <nlohmann/json_fwd.hpp>\n#define A\nusing namespace std;\n")
file(WRITE ${WORK}/c.hpp "#include \"kit/none.h\"\n#define B\n")
what_is_wrong(${WORK} slips)
list(LENGTH slips count)
if(NOT count EQUAL 4)
  message(SEND_ERROR "of four slips ${count} are found: ${slips}")
endif()

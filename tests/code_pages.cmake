# A process on Windows has one ANSI code page, so what depends on it is run in several: the plain entry of
# a program is in 1252, that of Western Europe, and zortunedex_code_pages adds one in 932, where a
# character has up to two bytes and the second may be a backslash, and one in UTF-8. Tests of one page
# (support/code_page.h) are skipped in the others.
#
# zortunedex_code_pages(PROGRAM FOLDER): nothing on Linux, where a test chooses the page.
function(zortunedex_code_pages program folder)
  if(NOT WIN32)
    return()
  endif()
  foreach(page 932 65001)
    set(filter *)
    # Most of these have names with accents in their data, which 932 lacks.
    if(page EQUAL 932 AND folder MATCHES "^(xml|contract)$")
      set(filter *932.*)
    endif()
    add_test(NAME ${program}_${page} COMMAND ${program} --gtest_filter=${filter})
    # Reports of the same program would take each other's name.
    set_tests_properties(${program}_${page} PROPERTIES
                         ENVIRONMENT "WINE_CODE_PAGE=${page};GTEST_OUTPUT=xml:reports/${page}/")
  endforeach()
endfunction()

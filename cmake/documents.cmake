# Documents as the packages have them: all in one folder beside the notices of what is compiled in.

# zortunedex_install_documents(FOLDER INCLUDES DOCUMENT...): links lead to where the things are there,
# INCLUDES being the way from the folder to the public headers. What is for those who change the sources
# stays behind, with the lines of tables that name it.
function(zortunedex_install_documents folder includes)
  foreach(document ${ARGN})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${document})
    file(READ ${document} text)
    string(REGEX REPLACE "\n\\| \\[CONTRIBUTING\\.md\\][^\n]*" "" text "${text}")
    string(REGEX REPLACE "\\[([^]]*)\\]\\(\\.\\./CONTRIBUTING[^)]*\\)" "\\1" text "${text}")
    string(REPLACE "](docs/" "](" text "${text}")
    string(REPLACE "](../CHANGELOG" "](CHANGELOG" text "${text}")
    string(REPLACE "](src/api/" "](${includes}/" text "${text}")
    string(REPLACE "](../src/api/" "](${includes}/" text "${text}")
    string(REPLACE "](src/" "](${includes}/" text "${text}")
    string(REPLACE "](../src/" "](${includes}/" text "${text}")
    get_filename_component(name ${document} NAME)
    string(REGEX REPLACE "\\.in$" "" name ${name})
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/documents/${name} CONTENT "${text}" @ONLY)
    install(FILES ${CMAKE_BINARY_DIR}/documents/${name} DESTINATION ${folder})
  endforeach()
endfunction()

# zortunedex_install_notice(FOLDER NAME PACKAGE...): the notice as it comes with the first of these
# Debian packages that is installed, which is the version that is compiled in.
function(zortunedex_install_notice folder name)
  foreach(package ${ARGN})
    set(notice /usr/share/doc/${package}/copyright)
    if(EXISTS ${notice})
      install(FILES ${notice} DESTINATION ${folder}/notices RENAME ${name}.txt)
      return()
    endif()
  endforeach()
  message(WARNING "no notice of ${name}: packages made here lack it")
endfunction()

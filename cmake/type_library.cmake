# The type library and a header for client programs, both made of the IDL file by the IDL compiler
# that comes with the cross compiler. `type_library` builds them into one folder, with the IDL file
# and what it imports beside them: all of this is in the package.
set(ZORTUNEDEX_TYPE_LIBRARY_DIR ${CMAKE_BINARY_DIR}/type-library CACHE INTERNAL "")

find_program(WIDL x86_64-w64-mingw32-widl REQUIRED)
# The platform's basic type library, which ours refers to. Wine has one.
find_path(STDOLE2_DIR stdole2.tlb
          PATHS /usr/lib/x86_64-linux-gnu /usr/lib /usr/lib64 /usr/local/lib /usr/local/lib64
                /opt/wine-stable/lib64 /opt/wine-stable/lib
          PATH_SUFFIXES wine/x86_64-windows wine NO_CMAKE_FIND_ROOT_PATH REQUIRED)

file(MAKE_DIRECTORY ${ZORTUNEDEX_TYPE_LIBRARY_DIR})
set(idl_folder ${PROJECT_SOURCE_DIR}/src/module)
set(idl_files ${idl_folder}/ZorTunedex.idl ${idl_folder}/ole2.idl)
set(widl ${WIDL} -m64 --nostdinc -L${STDOLE2_DIR})
set(made ZorTunedex.tlb ZorTunedex.h ZorTunedex.idl ole2.idl)
list(TRANSFORM made PREPEND ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/)
# In the folder itself: the header names the file that it was made from.
add_custom_command(
  OUTPUT ${made}
  COMMAND ${CMAKE_COMMAND} -E copy ${idl_files} .
  COMMAND ${widl} -t -o ZorTunedex.tlb ZorTunedex.idl
  COMMAND ${widl} -h -o ZorTunedex.h ZorTunedex.idl
  WORKING_DIRECTORY ${ZORTUNEDEX_TYPE_LIBRARY_DIR}
  DEPENDS ${idl_files}
  COMMENT "Making the type library"
  VERBATIM)
add_custom_target(type_library DEPENDS ${made})

# The type library and a header for client programs, both made of the IDL file by the IDL compiler
# that comes with the cross compiler. `type_library` builds them into one folder, with the IDL file
# beside them.
set(ZORTUNEDEX_TYPE_LIBRARY_DIR ${CMAKE_BINARY_DIR}/type-library CACHE INTERNAL "")

find_program(WIDL x86_64-w64-mingw32-widl REQUIRED)
# The platform's basic type library, which ours refers to. Wine has one.
find_path(STDOLE2_DIR stdole2.tlb
          PATHS /usr/lib/x86_64-linux-gnu /usr/lib /usr/lib64 /usr/local/lib /usr/local/lib64
                /opt/wine-stable/lib64 /opt/wine-stable/lib
          PATH_SUFFIXES wine/x86_64-windows wine NO_CMAKE_FIND_ROOT_PATH REQUIRED)

file(MAKE_DIRECTORY ${ZORTUNEDEX_TYPE_LIBRARY_DIR})
set(idl ${PROJECT_SOURCE_DIR}/src/module/ZorTunedex.idl)
set(idl_types ${PROJECT_SOURCE_DIR}/src/module/idl)
set(widl ${WIDL} -m64 --nostdinc -I${idl_types} -L${STDOLE2_DIR})
add_custom_command(
  OUTPUT ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/ZorTunedex.tlb ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/ZorTunedex.h
         ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/ZorTunedex.idl
  COMMAND ${widl} -t -o ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/ZorTunedex.tlb ${idl}
  COMMAND ${widl} -h -o ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/ZorTunedex.h ${idl}
  COMMAND ${CMAKE_COMMAND} -E copy ${idl} ${ZORTUNEDEX_TYPE_LIBRARY_DIR}
  DEPENDS ${idl} ${idl_types}/oaidl.idl
  COMMENT "Making the type library"
  VERBATIM)
add_custom_target(type_library DEPENDS ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/ZorTunedex.tlb)

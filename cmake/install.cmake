# What the packages hold. Linux: the usual directories below a prefix, which can be moved. Windows:
# one folder with the library and the tool beside each other.
include(CMakePackageConfigHelpers)
include(cmake/documents.cmake)

if(WIN32)
  set(bin_dir .)
  set(doc_dir docs)
  set(include_dir include)
  set(includes_from_docs ../include)
  set(samples_dir samples)
else()
  set(bin_dir bin)
  set(lib_dir lib)
  set(doc_dir share/doc/zortunedex)
  set(include_dir include/zortunedex)
  set(includes_from_docs ../../../include/zortunedex)
  set(samples_dir share/zortunedex/samples)
endif()

# The public headers, and what they include on this target.
set(ZORTUNEDEX_PUBLIC_HEADERS core/interfaces.h core/station_blocks.h platform/bstr.h platform/com.h
                   platform/com_error.h platform/com_ptr.h platform/component.h
                   platform/${ZORTUNEDEX_PLATFORM}/com_types.h
                   platform/${ZORTUNEDEX_PLATFORM}/component.h)
if(WIN32)
  list(APPEND ZORTUNEDEX_PUBLIC_HEADERS platform/windows/module_path.h)
endif()
foreach(header ${ZORTUNEDEX_PUBLIC_HEADERS})
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES src/${header} DESTINATION ${include_dir}/${folder})
endforeach()

install(DIRECTORY samples/home samples/host DESTINATION ${samples_dir})
install(FILES samples/README.md DESTINATION ${samples_dir})

# Programs for Windows hold the runtime as a whole; those for Linux what its headers leave in them.
zortunedex_install_notice(${doc_dir} cli11 libcli11-dev)
zortunedex_install_notice(${doc_dir} nlohmann-json nlohmann-json3-dev)
set(ZORTUNEDEX_RUNTIME_USERS "`ZorTunedex.dll` and `tunedex`")
if(WIN32)
  zortunedex_install_notice(${doc_dir} gcc g++-mingw-w64-x86-64-posix gcc-mingw-w64-base)
  zortunedex_install_notice(${doc_dir} mingw-w64 mingw-w64-x86-64-dev)
  set(ZORTUNEDEX_MORE_NOTICES "| MinGW-w64's runtime and winpthreads | `ZorTunedex.dll` and `tunedex` | several, all free | [notices/mingw-w64.txt](notices/mingw-w64.txt) |")
else()
  zortunedex_install_notice(${doc_dir} gcc gcc-12-base gcc-14-base gcc-13-base)
  set(ZORTUNEDEX_RUNTIME_USERS "the library and `tunedex`, by its headers")
endif()
file(GLOB documents CONFIGURE_DEPENDS docs/*.md)
zortunedex_install_documents(${doc_dir} ${includes_from_docs} README.md CHANGELOG.md
                             cmake/package/NOTICES.md ${documents})

if(WIN32)
  install(TARGETS ZorTunedex tunedex RUNTIME DESTINATION ${bin_dir} LIBRARY DESTINATION ${bin_dir})
  install(FILES cmake/package/README.txt DESTINATION ${bin_dir})
  install(FILES ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/ZorTunedex.tlb ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/ZorTunedex.idl
          DESTINATION ${bin_dir})
  return()
endif()

target_include_directories(ZorTunedex INTERFACE $<INSTALL_INTERFACE:${include_dir}>)
install(TARGETS ZorTunedex EXPORT ZorTunedexTargets LIBRARY DESTINATION ${lib_dir})
set_target_properties(tunedex PROPERTIES INSTALL_RPATH $ORIGIN/../lib)
install(TARGETS tunedex RUNTIME DESTINATION ${bin_dir})
install(FILES docs/tunedex.1 DESTINATION share/man/man1)

set(package_dir ${lib_dir}/cmake/ZorTunedex)
install(EXPORT ZorTunedexTargets NAMESPACE ZorTunedex:: DESTINATION ${package_dir}
        FILE ZorTunedexConfig.cmake)
write_basic_package_version_file(ZorTunedexConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_file(cmake/package/zortunedex.pc.in zortunedex.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZorTunedexConfigVersion.cmake DESTINATION ${package_dir})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zortunedex.pc DESTINATION ${lib_dir}/pkgconfig)

set(CPACK_PACKAGE_NAME zortunedex)
set(CPACK_PACKAGE_VENDOR "ZorTunedex maintainers")
set(CPACK_PACKAGE_CONTACT "ZorTunedex maintainers <maintainers@zortunedex.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Channel database of a television tuner application")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Keeps the channels that a scan found, satellites with their transponders and\ndish assignments, and presets by area, in XML files. Library, headers, samples\nand the command-line host tunedex.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/src)
include(CPack)

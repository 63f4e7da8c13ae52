# What the packages hold. Linux: the usual directories below a prefix, which can be moved. Windows:
# one folder with the library and the tool beside each other.
include(CMakePackageConfigHelpers)

if(WIN32)
  set(bin_dir .)
  set(doc_dir docs)
  set(include_dir include)
  set(samples_dir samples)
else()
  set(bin_dir bin)
  set(lib_dir lib)
  set(doc_dir share/doc/zortunedex)
  set(include_dir include/zortunedex)
  set(samples_dir share/zortunedex/samples)
endif()

# The public headers, and what they include on this target.
set(public_headers core/interfaces.h core/station_blocks.h platform/arguments.h platform/bstr.h platform/com.h
                   platform/com_error.h platform/com_ptr.h platform/component.h
                   platform/interface_uuid.h
                   platform/${ZORTUNEDEX_PLATFORM}/arguments.h platform/${ZORTUNEDEX_PLATFORM}/com_types.h
                   platform/${ZORTUNEDEX_PLATFORM}/component.h
                   platform/${ZORTUNEDEX_PLATFORM}/interface_uuid.h)
if(WIN32)
  list(APPEND public_headers platform/windows/module_path.h)
endif()
foreach(header ${public_headers})
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES src/${header} DESTINATION ${include_dir}/${folder})
endforeach()

install(DIRECTORY samples/home samples/host DESTINATION ${samples_dir})
install(FILES samples/README.md DESTINATION ${samples_dir})
install(DIRECTORY docs/ DESTINATION ${doc_dir} FILES_MATCHING PATTERN *.md)

if(WIN32)
  # Its links as they are from the folder of the documents; what is about the source tree stays there.
  file(READ README.md readme)
  string(REPLACE "](docs/" "](" readme "${readme}")
  string(REPLACE "](src/" "](../${include_dir}/" readme "${readme}")
  string(REGEX REPLACE "\n[^\n]*]\\(CONTRIBUTING.md\\)[^\n]*" "" readme "${readme}")
  file(CONFIGURE OUTPUT package/README.md CONTENT "${readme}" @ONLY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS README.md)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/package/README.md DESTINATION ${doc_dir})
  install(TARGETS ZorTunedex tunedex RUNTIME DESTINATION ${bin_dir} LIBRARY DESTINATION ${bin_dir})
  configure_file(cmake/package/README.txt package/README.txt @ONLY NEWLINE_STYLE DOS)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/package/README.txt DESTINATION ${bin_dir})
  foreach(file ZorTunedex.tlb ZorTunedex.idl ole2.idl)
    install(FILES ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/${file} DESTINATION ${bin_dir})
  endforeach()
  install(FILES ${ZORTUNEDEX_TYPE_LIBRARY_DIR}/ZorTunedex.h DESTINATION ${include_dir})
  return()
endif()

target_include_directories(ZorTunedex INTERFACE $<INSTALL_INTERFACE:${include_dir}>)
install(TARGETS ZorTunedex EXPORT ZorTunedexTargets LIBRARY DESTINATION ${lib_dir})
set_target_properties(tunedex PROPERTIES INSTALL_RPATH $ORIGIN/../lib)
install(TARGETS tunedex RUNTIME DESTINATION ${bin_dir})
install(FILES docs/tunedex.1 DESTINATION share/man/man1)

install(FILES README.md DESTINATION ${doc_dir})
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

# The target check_headers compiles every header of this platform by itself, so that none leans on what
# its users happen to include before it; those of the packages in the C++ that a host may have, C++17.

# zortunedex_check_headers(TARGET FOLDER HEADER...): a source for each header, which is its path in FOLDER.
function(zortunedex_check_headers target folder)
  set(sources "")
  foreach(header ${ARGN})
    set(source ${CMAKE_BINARY_DIR}/headers/${target}/${header}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${PROJECT_SOURCE_DIR}/${folder}/${header}\"\n")
    list(APPEND sources ${source})
  endforeach()
  add_library(${target} OBJECT EXCLUDE_FROM_ALL ${sources})
  target_link_libraries(${target} PRIVATE zortunedex_flags)
  target_compile_options(${target} PRIVATE -O0 -g0)
  set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
endfunction()

if(WIN32)
  set(folders src tests)
  set(other_platform linux)
else()
  set(folders src tests bench fuzz)
  set(other_platform windows)
endif()
list(TRANSFORM folders REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/\\1/*.h" OUTPUT_VARIABLE patterns)
list(APPEND patterns ${PROJECT_SOURCE_DIR}/src/*.hpp)
file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${patterns})
list(FILTER headers EXCLUDE REGEX "/${other_platform}/")
zortunedex_check_headers(check_all_headers . ${headers})
target_include_directories(check_all_headers PRIVATE . tests tests/client/${ZORTUNEDEX_PLATFORM} fuzz)
target_include_directories(check_all_headers SYSTEM PRIVATE ${CMAKE_BINARY_DIR}/header-only)
# Those of tests name directories that their programs are told.
target_compile_definitions(check_all_headers PRIVATE ZORTUNEDEX_SAMPLES="" ZORTUNEDEX_TEST_DATA="")
if(WIN32)
  target_include_directories(check_all_headers SYSTEM PRIVATE
                             /usr/src/googletest/googletest/include ${ZORTUNEDEX_TYPE_LIBRARY_DIR})
  add_dependencies(check_all_headers type_library)
else()
  find_package(LibXml2 REQUIRED)
  target_link_libraries(check_all_headers PRIVATE LibXml2::LibXml2)
endif()

zortunedex_check_headers(check_public_headers src ${ZORTUNEDEX_PUBLIC_HEADERS})
set_target_properties(check_public_headers PROPERTIES CXX_STANDARD 17)

add_custom_target(check_headers DEPENDS check_all_headers check_public_headers)

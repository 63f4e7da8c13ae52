# What a host may include, and what that includes on this target; paths below src/. Packages hold these
# headers, and the target check_headers compiles each alone.
set(ZORTUNEDEX_PUBLIC_HEADERS
    core/interfaces.h core/station_blocks.h platform/arguments.h platform/bstr.h platform/com.h
    platform/com_error.h platform/com_ptr.h platform/component.h platform/interface_uuid.h
    platform/${ZORTUNEDEX_PLATFORM}/arguments.h platform/${ZORTUNEDEX_PLATFORM}/com_types.h
    platform/${ZORTUNEDEX_PLATFORM}/component.h platform/${ZORTUNEDEX_PLATFORM}/interface_uuid.h)
if(WIN32)
  list(APPEND ZORTUNEDEX_PUBLIC_HEADERS platform/windows/module_path.h)
endif()
file(GLOB parts CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/src
     ${PROJECT_SOURCE_DIR}/src/core/interfaces/*.h ${PROJECT_SOURCE_DIR}/src/core/station_blocks/*.h)
list(APPEND ZORTUNEDEX_PUBLIC_HEADERS ${parts})
# The header for C++20 with its parts.
file(GLOB ZORTUNEDEX_API_HEADERS CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/src
     ${PROJECT_SOURCE_DIR}/src/api/*.hpp ${PROJECT_SOURCE_DIR}/src/api/zortunedex/*.hpp)

# Where a header is for hosts, below the folder zortunedex: what they name stands in front.
function(zortunedex_host_path header result)
  string(REGEX REPLACE "^api/zortunedex/" "api/" path ${header})
  string(REGEX REPLACE "^api/zortunedex\\.hpp$" "zortunedex.hpp" path ${path})
  set(${result} ${path} PARENT_SCOPE)
endfunction()

# As the packages have them, below include/ in the build directory. They include each other by the way
# from one to the other, so that no header of a host's own can be taken for one of them.
foreach(header ${ZORTUNEDEX_PUBLIC_HEADERS} ${ZORTUNEDEX_API_HEADERS})
  set(source ${PROJECT_SOURCE_DIR}/src/${header})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  zortunedex_host_path(${header} path)
  get_filename_component(folder /${path} DIRECTORY)
  file(READ ${source} text)
  string(REGEX MATCHALL "#include \"[^\"]+\"" lines "${text}")
  list(REMOVE_DUPLICATES lines)
  foreach(line ${lines})
    string(REGEX REPLACE "^#include \"(.*)\"$" "\\1" included "${line}")
    zortunedex_host_path(${included} included)
    file(RELATIVE_PATH way ${folder} /${included})
    string(REPLACE "${line}" "#include \"${way}\"" text "${text}")
  endforeach()
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/include/zortunedex/${path} CONTENT "${text}" @ONLY)
endforeach()

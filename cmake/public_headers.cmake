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

# Those of the kit for hosts: these, and what they include of it. None may need JSON's.
set(ZORTUNEDEX_KIT_HEADERS
    kit/check/check_json.h kit/check/checker.h kit/check/directory_repair.h
    kit/check/findings/report.h kit/check/known_countries.h kit/check/repair.h
    kit/history/change.h kit/history/comparison/changes.h kit/history/directory_lock.h
    kit/history/recording.h kit/history/replacement.h kit/history/snapshots/retention.h
    kit/history/snapshots/store.h
    kit/interchange/list/exchange_files.h kit/interchange/list/exporting.h
    kit/interchange/list/formats.h kit/interchange/list/importing.h
    kit/interchange/list/list_in_exchange.h kit/interchange/list/scan.h
    kit/interchange/loss_report.h kit/interchange/service.h
    kit/interchange/services/tuning_tables.h
    kit/json/channel_text.h
    kit/merge/directory/directory_merge.h kit/merge/merge.h kit/merge/merge_base.h
    kit/merge/merge_report.h
    kit/model/channel_layout.h kit/model/channel_list.h kit/model/channel_table.h
    kit/model/field_setter.h kit/model/field_value.h
    kit/saving/inventory.h kit/saving/list_editor.h kit/saving/save_table.h
    kit/selection/channel_filter.h kit/text/signal_types.h)
set(unread ${ZORTUNEDEX_KIT_HEADERS})
while(unread)
  list(POP_FRONT unread header)
  file(STRINGS ${PROJECT_SOURCE_DIR}/src/${header} lines REGEX "^#include \"kit/")
  foreach(line ${lines})
    string(REGEX REPLACE "^#include \"(.*)\"$" "\\1" included "${line}")
    if(NOT included IN_LIST ZORTUNEDEX_KIT_HEADERS)
      list(APPEND ZORTUNEDEX_KIT_HEADERS ${included})
      list(APPEND unread ${included})
    endif()
  endforeach()
endwhile()

# Where a header is for hosts, below the folder zortunedex: what they name stands in front.
function(zortunedex_host_path header result)
  string(REGEX REPLACE "^api/zortunedex/" "api/" path ${header})
  string(REGEX REPLACE "^api/zortunedex\\.hpp$" "zortunedex.hpp" path ${path})
  set(${result} ${path} PARENT_SCOPE)
endfunction()

# As the packages have them, below include/ in the build directory. They include each other by the way
# from one to the other, so that no header of a host's own can be taken for one of them.
foreach(header ${ZORTUNEDEX_PUBLIC_HEADERS} ${ZORTUNEDEX_API_HEADERS} ${ZORTUNEDEX_KIT_HEADERS})
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

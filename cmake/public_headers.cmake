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

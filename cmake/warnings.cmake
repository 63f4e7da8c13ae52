# Flags of our own code; what comes from elsewhere is included as SYSTEM.
add_library(zortunedex_flags INTERFACE)
target_compile_options(zortunedex_flags INTERFACE
                       $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror>)
# GCC 12 sees overlaps and overruns that cannot be when it inlines std::string (its bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(zortunedex_flags INTERFACE
                         $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict -Wno-array-bounds>)
endif()
target_include_directories(zortunedex_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(WIN32)
  target_compile_definitions(zortunedex_flags INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0601
                             ZORTUNEDEX_OWN_TUNING_TYPES)
  target_link_options(zortunedex_flags INTERFACE -static)
endif()

# ZorTunedex::ZorTunedex for hosts in C++20, ZorTunedex::Interfaces for those on the interfaces; with
# the component "kit" also ZorTunedex::Kit, which needs libxml2's development files.
# find_package keeps the policies of the project.
cmake_policy(VERSION 3.12...3.25)
foreach(component IN LISTS ZorTunedex_FIND_COMPONENTS)
  if(NOT component STREQUAL "kit" AND ZorTunedex_FIND_REQUIRED_${component})
    set(ZorTunedex_FOUND FALSE)
    set(ZorTunedex_NOT_FOUND_MESSAGE "there is no component ${component}; there is: kit")
    return()
  endif()
  set(ZorTunedex_${component}_FOUND FALSE)
endforeach()

if("kit" IN_LIST ZorTunedex_FIND_COMPONENTS)
  if(ZorTunedex_FIND_REQUIRED_kit)
    include(CMakeFindDependencyMacro)
    find_dependency(LibXml2)
  else()
    find_package(LibXml2 QUIET)
  endif()
endif()

include(${CMAKE_CURRENT_LIST_DIR}/ZorTunedexTargets.cmake)
if("kit" IN_LIST ZorTunedex_FIND_COMPONENTS AND TARGET LibXml2::LibXml2)
  include(${CMAKE_CURRENT_LIST_DIR}/ZorTunedexKitTargets.cmake)
  set(ZorTunedex_kit_FOUND TRUE)
endif()

# One library a folder. A target sees the headers of its own folder and of the targets it links, and
# no others: each folder's headers are linked into an include root of that target alone, under the
# folder's path, so that `#include "link/ClassSerialComm.h"` fails to compile above the wall.
#
#   velmoor_library(link DEPENDS session)
#   velmoor_library(project/data DEPENDS link)
#
# Target names replace "/" by "_" and begin with "velmoor_".
function(velmoor_include_root target folder source_folder scope)
  set(root ${CMAKE_BINARY_DIR}/include/${target})
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${source_folder}/*.h)
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${folder})
  foreach(header ${headers})
    get_filename_component(name ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${folder}/${name} SYMBOLIC)
  endforeach()
  target_include_directories(${target} ${scope} ${root})
endfunction()

function(velmoor_library folder)
  cmake_parse_arguments(ARG "" "BASE" "DEPENDS" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  set(target velmoor_${name})
  if(ARG_BASE)
    set(source_folder ${ARG_BASE}/${folder})
  else()
    set(source_folder src/${folder})
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${source_folder}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  set(scope PUBLIC)
  if(sources)
    add_library(${target} STATIC ${sources})
  else()
    add_library(${target} INTERFACE)
    set(scope INTERFACE)
  endif()
  velmoor_include_root(${target} ${folder} ${source_folder} ${scope})
  foreach(dependency ${ARG_DEPENDS})
    string(REPLACE "/" "_" dependency ${dependency})
    target_link_libraries(${target} ${scope} velmoor_${dependency})
  endforeach()
endfunction()

# A program compiles with the precompiled header of the Qt adapters. That serves code of its own kind
# of addresses alone: later compilers refuse it to any other.
function(velmoor_reuse_qt_header target)
  target_compile_options(${target} PRIVATE -fPIC)
  target_precompile_headers(${target} REUSE_FROM velmoor_platform_qt)
endfunction()

# The system that a program is built for: "platform/native/Native.h" names its adapters.
function(velmoor_native_adapters system)
  add_library(velmoor_platform_native INTERFACE)
  set(root ${CMAKE_BINARY_DIR}/include/velmoor_platform_native)
  file(MAKE_DIRECTORY ${root}/platform/native)
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/platform/${system}/Native.h
       ${root}/platform/native/Native.h SYMBOLIC)
  target_include_directories(velmoor_platform_native INTERFACE ${root})
  target_link_libraries(velmoor_platform_native INTERFACE velmoor_platform_${system})
endfunction()

# Flags that every target of the project is built with.
add_library(kgen_flags INTERFACE)
target_compile_options(kgen_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow)
if(KGEN_WERROR)
  target_compile_options(kgen_flags INTERFACE -Werror)
endif()
# What is not installed is linked by the quickest linker there is.
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=lld KGEN_HAS_LLD)
if(KGEN_HAS_LLD AND NOT CMAKE_BUILD_TYPE STREQUAL "Release")
  target_link_options(kgen_flags INTERFACE -fuse-ld=lld)
endif()
# Apart, so that the linker can leave them out and put them in order.
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  target_compile_options(kgen_flags INTERFACE -ffunction-sections -fdata-sections)
endif()
if(KGEN_SANITIZE)
  target_compile_options(kgen_flags INTERFACE -fsanitize=${KGEN_SANITIZE} -fno-sanitize-recover=all
                                              -fno-omit-frame-pointer)
  target_link_options(kgen_flags INTERFACE -fsanitize=${KGEN_SANITIZE})
  # What a sanitizer knows of the code holds millions of addresses; those of a program with a fixed
  # place are known before it starts.
  target_link_options(kgen_flags INTERFACE
                      $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-no-pie>)
endif()

# kgen_library(NAME [DEPENDS other...]): the folder src/NAME as one target. A folder sees the
# headers of those it depends on and of no others, so a forbidden call does not compile or link.
function(kgen_library name)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  if(sources)
    add_library(kgen_${name} STATIC ${sources})
    set(scope PUBLIC)
  else()
    add_library(kgen_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_link_libraries(kgen_${name} ${scope} kgen_flags)
  # Headers are included as "folder/header.h": one include folder a target, holding a link to it.
  set(include_dir ${CMAKE_BINARY_DIR}/include/${name})
  file(MAKE_DIRECTORY ${include_dir})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${name} ${include_dir}/${name} SYMBOLIC)
  target_include_directories(kgen_${name} ${scope} ${include_dir})
  foreach(other IN LISTS arg_DEPENDS)
    target_link_libraries(kgen_${name} ${scope} kgen_${other})
  endforeach()
endfunction()

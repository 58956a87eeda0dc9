# SPDX-License-Identifier: GPL-3.0-or-later
# What every target of the project shares: language level, warnings, sanitizers, ccache.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release)
endif()

find_program(ORVANE_CCACHE ccache)
if(ORVANE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ORVANE_CCACHE})
endif()

add_library(orvane_options INTERFACE)
target_include_directories(orvane_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_definitions(orvane_options INTERFACE ORVANE_VERSION="${PROJECT_VERSION}")
# Equal inputs must give equal bytes on every machine: no fused multiply-add behind our back.
target_compile_options(orvane_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -ffp-contract=off
  # The hash index of the built-in dictionary is computed while compiling.
  $<$<CXX_COMPILER_ID:GNU>:-fconstexpr-ops-limit=200000000>
  $<$<CXX_COMPILER_ID:Clang>:-fconstexpr-steps=200000000>
  $<$<BOOL:${ORVANE_WERROR}>:-Werror>)
if(CMAKE_SYSTEM_NAME STREQUAL Linux)
  # The files come from elsewhere: no table of addresses stays writable.
  target_link_options(orvane_options INTERFACE LINKER:-z,relro LINKER:-z,now)
  if(ORVANE_HARDENED AND CMAKE_BUILD_TYPE STREQUAL Release AND NOT ORVANE_SANITIZE)
    # A write beyond its place ends the program instead of taking it over.
    target_compile_options(orvane_options INTERFACE
      -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3
      $<$<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},x86_64>:-fcf-protection>)
  endif()
endif()
if(ORVANE_SANITIZE)
  target_compile_options(orvane_options INTERFACE
    -fsanitize=${ORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orvane_options INTERFACE -fsanitize=${ORVANE_SANITIZE})
endif()
if(ORVANE_FUZZ)
  # Numbers that are compared with each other are not told to the fuzzer: that takes half of the time
  # and the first inputs have every number that files are recognised by.
  target_compile_options(orvane_options INTERFACE
    -fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
  target_compile_definitions(orvane_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()

# orvane_library(NAME SOURCES... LINKS...): one library per folder of src/, so that what a folder may
# include is what it links. Shared ones must find all that they call in the rooms below them: a static
# library may call upward and still link.
function(orvane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  if(ORVANE_SHARED_ROOMS)
    add_library(${name} SHARED ${ARG_SOURCES})
    target_link_options(${name} PRIVATE LINKER:-z,defs)
  else()
    add_library(${name} STATIC ${ARG_SOURCES})
  endif()
  target_link_libraries(${name} PUBLIC orvane_options ${ARG_LINKS})
endfunction()

# orvane_windowed(TARGET): a program with windows can draw without a display too. A shared Qt loads
# what that takes; into a static one it is linked.
function(orvane_windowed target)
  get_target_property(type Qt6::Core TYPE)
  if(type STREQUAL STATIC_LIBRARY)
    qt_import_plugins(${target} INCLUDE Qt6::QOffscreenIntegrationPlugin)
  endif()
endfunction()

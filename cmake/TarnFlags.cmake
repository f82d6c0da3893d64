# SPDX-License-Identifier: Apache-2.0
# Flags that all our targets share. Warnings become errors by CMAKE_COMPILE_WARNING_AS_ERROR in
# the presets, so that a consumer with another compiler is not stopped by a new warning.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
  add_link_options(-fuse-ld=mold)
endif()

add_library(tarn_flags INTERFACE)
target_compile_options(tarn_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # -Wpedantic objects to the 128-bit integer that the compare-and-swap needs; __extension__ marks
  # those places, and maybe-uninitialized of g++ 12 has false positives in optimised std::map code.
  target_compile_options(tarn_flags INTERFACE -Wno-maybe-uninitialized)
endif()
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # In a batch each source is an included file, where a member of an unnamed namespace's type looks
  # like one that others could see too.
  target_compile_options(tarn_flags INTERFACE -Wno-subobject-linkage)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # Qt 6.4's own macros trip these in clang 14.
  target_compile_options(tarn_flags INTERFACE -Wno-unused-private-field)
endif()
target_compile_definitions(tarn_flags INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

if(TARN_SANITIZE)
  list(JOIN TARN_SANITIZE "," sanitizers)
  add_compile_options(-fsanitize=${sanitizers} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${sanitizers})
endif()

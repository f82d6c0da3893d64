# SPDX-License-Identifier: Apache-2.0
# TarnCore: objects of the portable core, compiled against QtCore alone. Nothing else is on their
# include path, so a widget or a socket class of the toolkit cannot slip in.
# Tarn: the shared library, the core's objects and everything that stands on them.
include(GenerateExportHeader)

set(TARN_GENERATED_DIR ${PROJECT_BINARY_DIR}/generated)

macro(tarn_add_library)
  add_library(TarnCore OBJECT)
  # Tarn lists the core's headers too, and one of the two must make their meta objects.
  set_target_properties(TarnCore PROPERTIES AUTOMOC OFF)
  add_library(Tarn SHARED)
  add_library(Tarn::Tarn ALIAS Tarn)
  # A header that a list gains makes nothing out of date for AUTOMOC, which would leave its classes
  # without meta objects. So it looks again after each configuration.
  file(REMOVE ${PROJECT_BINARY_DIR}/Tarn_autogen/timestamp)

  if(BUILD_TESTING)
    set(autotest "#define TARN_AUTOTEST_EXPORT TARN_EXPORT\n")
  else()
    set(autotest "#define TARN_AUTOTEST_EXPORT\n")
  endif()
  generate_export_header(Tarn BASE_NAME TARN CUSTOM_CONTENT_FROM_VARIABLE autotest
    EXPORT_FILE_NAME ${TARN_GENERATED_DIR}/kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h)
  target_sources(Tarn PUBLIC FILE_SET generated_headers TYPE HEADERS BASE_DIRS ${TARN_GENERATED_DIR}
    FILES ${TARN_GENERATED_DIR}/kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h)

  target_include_directories(TarnCore PUBLIC ${PROJECT_SOURCE_DIR} ${TARN_GENERATED_DIR})
  target_compile_definitions(TarnCore PRIVATE Tarn_EXPORTS)
  target_link_libraries(TarnCore PUBLIC Qt6::Core Threads::Threads)
  target_link_libraries(TarnCore PRIVATE tarn_flags)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    # The lock-free queue swaps two words at once; without the flag the builtin is a library call.
    target_compile_options(TarnCore PUBLIC -mcx16)
    target_compile_options(Tarn PUBLIC -mcx16)
  endif()

  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Calls of our own exported functions may be inlined; nobody is to replace them at run time.
    target_compile_options(TarnCore PRIVATE -fno-semantic-interposition)
    target_compile_options(Tarn PRIVATE -fno-semantic-interposition)
  endif()

  target_link_libraries(Tarn PRIVATE TarnCore $<BUILD_INTERFACE:tarn_flags>)
  target_link_libraries(Tarn PUBLIC Qt6::Core Qt6::Gui Qt6::Widgets Qt6::Network Threads::Threads)
  set_target_properties(Tarn PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    INTERFACE_COMPILE_FEATURES cxx_std_20)
endmacro()

# tarn_core_sources(HEADERS public.h... SOURCES x.cpp x_p.h...): files of the current folder for
# the core. A header listed under HEADERS is installed.
function(tarn_core_sources)
  cmake_parse_arguments(A "" "" "HEADERS;SOURCES" ${ARGN})
  target_sources(TarnCore PRIVATE ${A_HEADERS} ${A_SOURCES})
  if(A_HEADERS)
    target_sources(Tarn PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${A_HEADERS})
  endif()
endfunction()

# tarn_sources: the same for what stands above the core (or needs more of the toolkit).
function(tarn_sources)
  cmake_parse_arguments(A "" "" "HEADERS;SOURCES" ${ARGN})
  target_sources(Tarn PRIVATE ${A_SOURCES})
  if(A_HEADERS)
    target_sources(Tarn PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${A_HEADERS})
  endif()
endfunction()

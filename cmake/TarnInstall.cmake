# SPDX-License-Identifier: Apache-2.0
# Installed tree: include/Tarn/<ClassName> forwards to include/Tarn/api/<path from the root>.
include(CMakePackageConfigHelpers)

get_target_property(plain Tarn HEADER_SET)
get_target_property(generated Tarn HEADER_SET_generated_headers)
set(listing "")
foreach(header IN LISTS plain generated)
  string(REPLACE "${TARN_GENERATED_DIR}/" "" include "${header}")
  string(REPLACE "${PROJECT_SOURCE_DIR}/" "" include "${include}")
  string(APPEND listing "${include}\t${header}\n")
endforeach()
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/public_headers.txt CONTENT "${listing}" @ONLY)

set(forwarding ${PROJECT_BINARY_DIR}/forwarding)
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/forwarding.stamp
  COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/forwarding_headers.py
    ${forwarding} ${PROJECT_BINARY_DIR}/public_headers.txt
  COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/forwarding.stamp
  DEPENDS ${PROJECT_SOURCE_DIR}/tools/forwarding_headers.py
    ${PROJECT_BINARY_DIR}/public_headers.txt ${plain} ${generated}
  COMMENT "Forwarding headers"
  VERBATIM)
add_custom_target(forwarding_headers DEPENDS ${PROJECT_BINARY_DIR}/forwarding.stamp)
add_dependencies(Tarn forwarding_headers)
if(TARGET vctp3_generate)
  add_dependencies(forwarding_headers vctp3_generate)
endif()
target_include_directories(Tarn PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<BUILD_INTERFACE:${TARN_GENERATED_DIR}>
  $<BUILD_INTERFACE:${forwarding}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/Tarn/api>)

install(TARGETS Tarn EXPORT TarnTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Tarn/api
  FILE_SET generated_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Tarn/api)
install(DIRECTORY ${forwarding}/Tarn DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT TarnTargets NAMESPACE Tarn:: FILE TarnTargets.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tarn)

configure_package_config_file(cmake/TarnConfig.cmake.in ${PROJECT_BINARY_DIR}/TarnConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tarn)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TarnConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TarnConfig.cmake ${PROJECT_BINARY_DIR}/TarnConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tarn)

# The prefix is found from the file's own place, since cmake --install --prefix may move the tree.
file(RELATIVE_PATH TARN_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
  set(TARN_PC_CFLAGS -mcx16)
endif()
configure_file(cmake/tarn.pc.in ${PROJECT_BINARY_DIR}/tarn.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tarn.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

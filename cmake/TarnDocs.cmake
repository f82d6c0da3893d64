# SPDX-License-Identifier: Apache-2.0
# Reference of the public headers. Any warning of doxygen fails the target.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  file(GLOB pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md)
  list(PREPEND pages ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md)
  string(REPLACE ";" " \\\n    " TARN_DOC_INPUT "${plain};${generated};${pages}")
  configure_file(docs/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)
  add_custom_target(docs
    COMMAND ${DOXYGEN_EXECUTABLE} ${PROJECT_BINARY_DIR}/Doxyfile
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Reference of the public headers"
    VERBATIM)
  if(TARGET vctp3_generate)
    add_dependencies(docs vctp3_generate)
  endif()
endif()
add_custom_target(generated)
if(TARGET vctp3_generate)
  add_dependencies(generated vctp3_generate)
endif()

# SPDX-License-Identifier: Apache-2.0
# Target `docs`: pages about the public headers, in docs/html of the build folder.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  configure_file(Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)
  add_custom_target(docs
    COMMAND ${DOXYGEN_EXECUTABLE} ${PROJECT_BINARY_DIR}/Doxyfile
    COMMENT "Writing docs/html/index.html"
    VERBATIM)
endif()

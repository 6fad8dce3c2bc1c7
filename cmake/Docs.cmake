# SPDX-License-Identifier: Apache-2.0
# The reference site: public headers, guides and tables of the vocabularies. docs/doxygen has the files for it.
option(PI_BUILD_DOCS "Build the reference site, which needs Doxygen and Python" OFF)
if(NOT PI_BUILD_DOCS)
    return()
endif()

find_package(Doxygen 1.9.4 REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

find_program(XMLLINT xmllint REQUIRED)  # of libxml2-utils

set(PI_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)
set(PI_DOXYGEN_EXTRA "")
if(DOXYGEN_VERSION VERSION_GREATER_EQUAL 1.9.5)
    # The stylesheet is for a light page; newer versions would use the dark mode of the reader's system.
    set(PI_DOXYGEN_EXTRA "HTML_COLORSTYLE = LIGHT")
endif()

# All installed headers except those with only macros, and all documents.
file(GLOB headers CONFIGURE_DEPENDS include/pi/*.h base/*/include/*/*.h exchange/include/pi/exchange/*.h)
file(GLOB documents CONFIGURE_DEPENDS *.md docs/*.md bench/*.md)
list(JOIN headers "\" \"" PI_DOCS_INPUT)
configure_file(docs/doxygen/Doxyfile.in docs/Doxyfile @ONLY)

file(GLOB sources CONFIGURE_DEPENDS docs/images/* docs/doxygen/* docs/*.tsv include/pi/vocabulary/*.def src/*/*.def
    share/pi/strings.en.xml tests/reference/examples_test.cpp)
add_custom_command(
    OUTPUT docs/built
    # Removes the results of an earlier build, so that one that fails leaves nothing that looks complete.
    COMMAND ${CMAKE_COMMAND} -E rm -rf docs/built ${PI_DOCS_DIR}/html ${PI_DOCS_DIR}/xml ${PI_DOCS_DIR}/pages
    COMMAND Python3::Interpreter -B ${PROJECT_SOURCE_DIR}/docs/doxygen/pages.py ${PI_DOCS_DIR}/pages ${documents}
    COMMAND Doxygen::doxygen ${PI_DOCS_DIR}/Doxyfile
    COMMAND Python3::Interpreter -B ${PROJECT_SOURCE_DIR}/docs/doxygen/finish.py ${PI_DOCS_DIR}/html
    COMMAND sh ${PROJECT_SOURCE_DIR}/docs/doxygen/documented.sh ${XMLLINT} ${PI_DOCS_DIR}/xml
    COMMAND ${CMAKE_COMMAND} -E touch docs/built
    DEPENDS ${headers} ${documents} ${sources} ${PI_DOCS_DIR}/Doxyfile
    COMMENT "Building the reference site in ${PI_DOCS_DIR}/html"
    VERBATIM)
add_custom_target(docs ALL DEPENDS docs/built)

install(DIRECTORY ${PI_DOCS_DIR}/html DESTINATION ${CMAKE_INSTALL_DOCDIR})

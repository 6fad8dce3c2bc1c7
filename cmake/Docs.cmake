# SPDX-License-Identifier: Apache-2.0
# The reference site: public headers, guides and tables of the vocabularies. docs/doxygen holds what it is made with.
option(PI_BUILD_DOCS "Build the reference site, which needs Doxygen and Python" OFF)
if(NOT PI_BUILD_DOCS)
    return()
endif()

find_package(Doxygen 1.9.4 REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(PI_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)
set(PI_DOXYGEN_EXTRA "")
if(DOXYGEN_VERSION VERSION_GREATER_EQUAL 1.9.5)
    # The stylesheet is for a light page; newer versions would follow the reader's system into the dark.
    set(PI_DOXYGEN_EXTRA "HTML_COLORSTYLE = LIGHT")
endif()
configure_file(docs/doxygen/Doxyfile.in docs/Doxyfile @ONLY)

file(GLOB docs_inputs CONFIGURE_DEPENDS *.md bench/*.md docs/*.md docs/images/* docs/doxygen/*
    tests/reference/examples_test.cpp
    include/pi/*.h include/pi/vocabulary/*.def exchange/include/pi/exchange/*.h base/*/include/*/*.h src/*/*.def)
add_custom_command(
    OUTPUT docs/built
    # What an earlier build has left, so that one which fails leaves nothing that looks whole.
    COMMAND ${CMAKE_COMMAND} -E rm -rf docs/built ${PI_DOCS_DIR}/html ${PI_DOCS_DIR}/xml ${PI_DOCS_DIR}/pages
        ${PI_DOCS_DIR}/images
    COMMAND Python3::Interpreter -B ${PROJECT_SOURCE_DIR}/docs/doxygen/pages.py ${PI_DOCS_DIR}
    COMMAND Doxygen::doxygen ${PI_DOCS_DIR}/Doxyfile
    COMMAND Python3::Interpreter -B ${PROJECT_SOURCE_DIR}/docs/doxygen/search.py ${PI_DOCS_DIR}/html
    COMMAND Python3::Interpreter -B ${PROJECT_SOURCE_DIR}/docs/doxygen/documented.py ${PI_DOCS_DIR}/xml
    COMMAND Python3::Interpreter -B ${PROJECT_SOURCE_DIR}/docs/doxygen/links.py ${PI_DOCS_DIR}/html
    COMMAND ${CMAKE_COMMAND} -E touch docs/built
    DEPENDS ${docs_inputs} ${PROJECT_SOURCE_DIR}/share/pi/strings.en.xml ${PI_DOCS_DIR}/Doxyfile
    COMMENT "Building the reference site in ${PI_DOCS_DIR}/html"
    VERBATIM)
add_custom_target(docs ALL DEPENDS docs/built)

install(DIRECTORY ${PI_DOCS_DIR}/html DESTINATION ${CMAKE_INSTALL_DOCDIR})

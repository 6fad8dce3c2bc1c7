# SPDX-License-Identifier: Apache-2.0
# service_plugin(name sources...): a plug-in for the host in examples/service.
set(SERVICE_PLUGINS_DIR ${CMAKE_CURRENT_LIST_DIR})

function(service_plugin name)
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE PI::pi)
    target_include_directories(${name} PRIVATE ${SERVICE_PLUGINS_DIR} ${SERVICE_PLUGINS_DIR}/../service)
    # GCC makes static members of templates unique symbols, and the loader never unmaps an object that owns one in use.
    target_compile_options(${name} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion
        $<$<BOOL:${PI_WARNINGS_AS_ERRORS}>:-Werror>
        $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    target_link_options(${name} PRIVATE -Wl,--version-script=${SERVICE_PLUGINS_DIR}/plugin.map)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        LINK_DEPENDS ${SERVICE_PLUGINS_DIR}/plugin.map)
endfunction()

# SPDX-License-Identifier: Apache-2.0

# pi_add_plugin(name sources...): a plug-in NAME.so that uses the library and can be unloaded. It exports the functions
# of C linkage that are marked PI_API, and nothing else.
function(pi_add_plugin name)
    set(map ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/plugin.map)
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE PI::pi)
    # GCC makes static members of templates unique symbols, and the loader never unmaps an object that owns one in use.
    target_compile_options(${name} PRIVATE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
    target_link_options(${name} PRIVATE -Wl,--version-script=${map} -Wl,--exclude-libs,ALL)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        C_VISIBILITY_PRESET hidden
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        LINK_DEPENDS ${map})
endfunction()

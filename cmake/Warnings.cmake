# SPDX-License-Identifier: Apache-2.0
# pi_warnings(target): the warnings that all of the project's code is clean under.
function(pi_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    if(PI_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

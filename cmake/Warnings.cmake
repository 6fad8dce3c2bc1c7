# SPDX-License-Identifier: Apache-2.0
# pi_warnings(target): the warnings for the project's code.
function(pi_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    if(PI_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

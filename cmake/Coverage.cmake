# SPDX-License-Identifier: Apache-2.0

option(PI_COVERAGE "Count what runs, for scripts/coverage" OFF)

# pi_coverage(target): where coverage is measured. Not the tests, whose own lines prove nothing.
function(pi_coverage target)
    if(PI_COVERAGE)
        # Without optimisation, so that every line is one of the program. Threads count without losing any.
        target_compile_options(${target} PRIVATE -O0 --coverage -fprofile-update=atomic)
        target_link_options(${target} PUBLIC --coverage)
    endif()
endfunction()

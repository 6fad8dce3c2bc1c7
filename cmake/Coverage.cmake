# SPDX-License-Identifier: Apache-2.0

option(PI_COVERAGE "Count what runs, for scripts/coverage" OFF)

# pi_coverage(target): measures the coverage of a target. Not for the tests themselves.
function(pi_coverage target)
    if(PI_COVERAGE)
        # Without optimisation, so that every line remains. Counts of threads are atomic.
        target_compile_options(${target} PRIVATE -O0 --coverage -fprofile-update=atomic)
        target_link_options(${target} PUBLIC --coverage)
    endif()
endfunction()

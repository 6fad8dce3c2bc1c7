# SPDX-License-Identifier: Apache-2.0
# Options that make faults harder to exploit, for everything built here; scripts/hardening checks the built
# files. Not for debug builds: the fortified functions need the optimiser.
string(TOUPPER "${CMAKE_BUILD_TYPE}" build_type)
if(build_type MATCHES "^(RELEASE|RELWITHDEBINFO|MINSIZEREL)$")
    set(PI_HARDENING_DEFAULT ON)
else()
    set(PI_HARDENING_DEFAULT OFF)
endif()
option(PI_HARDENING "Harden what is built" ${PI_HARDENING_DEFAULT})

if(PI_HARDENING)
    # Some compilers fortify by default, to a level of their own.
    add_compile_options(-fstack-protector-strong -fstack-clash-protection -fcf-protection=full
        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack)
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
endif()

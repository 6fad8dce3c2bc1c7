// SPDX-License-Identifier: Apache-2.0
// The program and the library both use the base library of this project.
#include <pi/pi.h>
#include <velk/clock.h>

#include <iostream>

int main() {
    const PI::CTask task;
    std::cout << VELK::now() << '\n' << task.m_CreationTime << '\n' << VELKTrace::tracesEnabled << '\n';
}

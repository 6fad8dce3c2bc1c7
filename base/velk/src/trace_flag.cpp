// SPDX-License-Identifier: Apache-2.0

#include <pi/trace.h>

bool VELKTrace::tracesEnabled = false;

#include <pi/trace.h>

bool VELKTrace::tracesEnabled = false;

/// @file
/// The data model that service and plug-ins exchange.
#pragma once

#include <pi/property.h>

// SPDX-License-Identifier: Apache-2.0
/// @file
/// The data model that service and plug-ins exchange.
#pragma once

#include <pi/layout.h>
#include <pi/layout_reading.h>
#include <pi/object.h>
#include <pi/property.h>
#include <pi/task.h>

// SPDX-License-Identifier: Apache-2.0
/// @file
/// Events and progress.
#pragma once

#include <pi/etr.h>
#include <pi/event.h>
#include <pi/text_table.h>
#include <pi/time_remaining.h>

/// @file
/// Events and progress.
#pragma once

#include <pi/etr.h>
#include <pi/event.h>

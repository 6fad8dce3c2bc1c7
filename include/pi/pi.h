// SPDX-License-Identifier: Apache-2.0
/// @file
/// Every public header of the library.
#pragma once

#include <pi/adapters.h>
#include <pi/build_check.h>
#include <pi/config_file.h>
#include <pi/drive_combination.h>
#include <pi/drive_health.h>
#include <pi/drives.h>
#include <pi/endurance_rating.h>
#include <pi/events.h>
#include <pi/health_assessment.h>
#include <pi/health_changes.h>
#include <pi/model.h>
#include <pi/object_builder.h>
#include <pi/plugin_helper.h>
#include <pi/remaining_lifetime.h>
#include <pi/sense.h>
#include <pi/ssd_endurance.h>
#include <pi/trace.h>
#include <pi/types.h>
#include <pi/version.h>
#include <pi/vocabulary.h>
#include <pi/vocabulary_lists.h>
#include <pi/wear_forecast.h>

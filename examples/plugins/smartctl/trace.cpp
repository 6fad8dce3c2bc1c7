// SPDX-License-Identifier: Apache-2.0

#include "trace.h"

#include <pi/trace.h>

namespace smartctl {
namespace {

constexpr int TRACE_NUMBER = 502;  // marks this plug-in's lines
constexpr const char* TRACE_NAME = "smartctl";

}  // namespace

void Trace(const std::string& text) {
    VELKTrace(TRACE_NUMBER, TRACE_NAME, 275, "%s") << text;
}

void TraceDebug(const std::string& text) {
    VELKTrace(TRACE_NUMBER, TRACE_NAME, 276, "%s") << text;
}

}  // namespace smartctl

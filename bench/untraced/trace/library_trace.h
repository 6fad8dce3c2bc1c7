// SPDX-License-Identifier: Apache-2.0
// Stands in for the library's header of the same name: the statements of its traces, and nothing behind them.
#pragma once

namespace PI {

constexpr int TRACE_CATEGORY_DATA = 3;
constexpr int TRACE_CATEGORY_PROPERTY = 20;
constexpr int TRACE_CATEGORY_DRIVE_COMBINATION = 21;

template <class... Arguments>
void Trace(int, const char*, const Arguments&...) {}

}  // namespace PI

struct VELKTrace {
    static constexpr bool tracesEnabled = false;
};

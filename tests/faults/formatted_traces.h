// SPDX-License-Identifier: Apache-2.0
// Traces that are written as text, and kept nowhere.
#pragma once

#include <pi/trace.h>
#include <plog/Log.h>

#include <cstddef>
#include <string>

namespace PI::Test {

/// While it lives, traces are on and logger Instance formats each record, as a logger to a file would.
template <int Instance>
class FormattedTraces : public plog::IAppender {
public:
    FormattedTraces() : m_Logger(plog::debug) {
        m_Logger.addAppender(this);
        VELKTrace::tracesEnabled = true;
    }
    ~FormattedTraces() { VELKTrace::tracesEnabled = false; }

    void write(const plog::Record& record) override { m_Bytes += std::string(record.getMessage()).size(); }

    std::size_t m_Bytes = 0;

private:
    plog::Logger<Instance> m_Logger;
};

}  // namespace PI::Test

// SPDX-License-Identifier: Apache-2.0
// Collects what the library traces into a plog logger.
#pragma once

#include <pi/trace.h>
#include <plog/Log.h>

#include <string>
#include <vector>

namespace PI::Test {

/// A record as it reaches an appender.
struct TraceRecord {
    plog::Severity m_Severity;
    std::string m_Message;
    std::string m_Function;
    std::size_t m_Line;
    std::string m_File;
    const void* m_Object;
    int m_Instance;

    /// What stands behind the line's prefix: "[tag][milliseconds][name][number]".
    std::string Text() const {
        std::size_t end = 0;
        for (int bracket = 0; bracket < 4; ++bracket) {
            end = m_Message.find(']', end) + 1;
        }
        return m_Message.substr(end);
    }
};

/// While it lives, traces are on and logger Instance writes into it.
template <int Instance>
class TraceRecorder : public plog::IAppender {
public:
    explicit TraceRecorder(plog::Severity maxSeverity = plog::debug) : m_Logger(maxSeverity) {
        m_Logger.addAppender(this);
        VELKTrace::tracesEnabled = true;
    }
    ~TraceRecorder() { VELKTrace::tracesEnabled = false; }

    void write(const plog::Record& record) override {
        m_Records.push_back({record.getSeverity(), record.getMessage(), record.getFunc(), record.getLine(),
                             record.getFile(), record.getObject(), record.getInstanceId()});
    }

    /// The messages of all records so far, without their prefixes.
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const TraceRecord& record : m_Records) {
            texts.push_back(record.Text());
        }
        return texts;
    }

    std::vector<TraceRecord> m_Records;

private:
    plog::Logger<Instance> m_Logger;
};

}  // namespace PI::Test

// SPDX-License-Identifier: Apache-2.0
// Which of a drive's self-tests still speak against it.
#pragma once

#include <cstdint>

namespace PI {

enum class SelfTestResult { PASSED, FAILED, NEITHER };

/// Counts failed tests, the newest first: a test that passed makes up for older ones that failed, a
/// short test only for short ones.
class SelfTestCounter {
public:
    void Add(SelfTestResult result, bool extended) {
        if (result == SelfTestResult::PASSED) {
            m_ExtendedPassed = m_ExtendedPassed || extended;
            m_ShortPassed = true;
        } else if (result == SelfTestResult::FAILED && !(extended ? m_ExtendedPassed : m_ShortPassed)) {
            ++m_Failed;
        }
    }

    std::int64_t Failed() const { return m_Failed; }

private:
    bool m_ExtendedPassed = false;
    bool m_ShortPassed = false;
    std::int64_t m_Failed = 0;
};

}  // namespace PI

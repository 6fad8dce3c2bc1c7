// SPDX-License-Identifier: Apache-2.0

#include <pi/etr.h>

#include <time.h>

#include <algorithm>
#include <cstdio>

#include "trace/library_trace.h"

namespace PI {

namespace {

constexpr std::uint64_t MINUTE = 60000;
constexpr std::uint64_t UNKNOWN = 0xFFFFFFFFFFFFFFFF;

// Extends the sign to 64 bits, as the unsigned products below expect.
std::uint64_t Widen(std::int32_t percent) {
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(percent));
}

// What remains at the pace of the elapsed time; truncates before it adds, which the results depend on.
std::uint64_t RemainingAtPace(std::uint64_t elapsed, std::uint64_t percent) {
    return 100 * (elapsed / percent + 1) - elapsed;
}

template <class Value>
void MakeRoomForOneMore(std::vector<Value>& values) {
    if (values.size() == values.capacity()) {
        values.reserve(std::max<std::size_t>(2 * values.size(), 8));
    }
}

}  // namespace

CETR::CETR(unsigned long id, int percent, unsigned long timeStamp) : m_ID(id), m_StartTime(timeStamp) {
    Compute(percent, timeStamp);
}

unsigned long CETR::GetID() {
    return m_ID;
}

unsigned long CETR::NowSteady() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const auto nanoseconds =
        static_cast<unsigned long>(now.tv_sec) * 1000000000 + static_cast<unsigned long>(now.tv_nsec);
    return nanoseconds / 1000000;
}

void CETR::Compute(int percent, unsigned long timeStamp) {
    // First of all, so that if allocation fails the estimate stays as it is.
    MakeRoomForOneMore(m_PercentageComplete);
    MakeRoomForOneMore(m_TimeStamps);

    if (m_StartTime == UNKNOWN) {
        m_StartTime = timeStamp - MINUTE;
    }
    if (percent < 0) {
        return;
    }
    if (percent > 99 && m_RemainingTime > MINUTE) {
        m_RemainingTime = MINUTE;
        return;
    }

    const std::uint64_t done = Widen(percent);
    const std::uint64_t toDo = 100 - done;
    std::vector<std::int32_t>& percents = m_PercentageComplete;
    std::vector<std::uint64_t>& times = m_TimeStamps;

    if (percents.empty()) {
        m_RemainingTime = toDo * std::max(timeStamp - m_StartTime, MINUTE);
        percents.push_back(percent);
        times.push_back(timeStamp);
        m_LastTime = timeStamp;
        return;
    }

    // Progress that went back or did not change drops the samples that it contradicts.
    const auto repeated =
        std::find_if(percents.begin(), percents.end(), [&](auto kept) { return kept >= percent; });
    const bool appended = repeated == percents.end();
    if (!appended) {
        times.resize(static_cast<std::size_t>(repeated - percents.begin()));
        percents.erase(repeated, percents.end());
        m_LastTime = timeStamp;
    }
    percents.push_back(percent);
    times.push_back(timeStamp);
    const std::size_t count = percents.size();

    const bool isThirdSample = appended && count == 3;
    if (isThirdSample) {
        // Where 0 percent would have been at the pace of the last step.
        const std::uint64_t start = times[1] - (times[2] - times[1]) * Widen(percents[1]);
        m_StartTime = std::min(m_StartTime, start);
    }

    if (percent <= 0) {
        m_StartTime = timeStamp;
        m_RemainingTime = toDo * MINUTE;
    } else {
        const std::uint64_t elapsed = timeStamp - m_StartTime;
        if (count <= 2) {
            m_RemainingTime = toDo * std::max(elapsed, MINUTE);
        } else if (count <= 9 || percent <= 32) {
            m_RemainingTime = RemainingAtPace(elapsed, done);
        } else {
            const std::uint64_t step = Widen(percents[count - 1]) - Widen(percents[count - 6]);
            if (step != 0) {
                const std::uint64_t recentPace = (times[count - 1] - times[count - 6]) / step + 1;
                m_RemainingTime = (RemainingAtPace(elapsed, done) + recentPace * done) * toDo / 100;
            } else {
                // Not reached, since all samples that are kept are below the new one; guards the division.
                Trace(TRACE_CATEGORY_DATA,
                      "The same values in m_PercentageComplete. This should not be possible!");
            }
        }
    }

    Trace(TRACE_CATEGORY_DATA, "m_StartTime: %s m_LastTime: %s timeStamp: %s m_RemainingTime: %s",
          m_StartTime, m_LastTime, timeStamp, m_RemainingTime);
    m_LastTime = timeStamp;
}

long CETR::Add(std::vector<CETR>& list, unsigned long id, int percent, bool pause, unsigned long timeStamp) {
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const CETR& etr) { return etr.m_ID == id; });
    if (found == list.end()) {
        list.emplace_back(id, percent, timeStamp);
        return static_cast<long>(list.size()) - 1;
    }
    if (pause) {
        found->m_StartTime = timeStamp + found->m_StartTime - found->m_LastTime;
        found->m_LastTime = timeStamp;
    } else {
        found->Compute(percent, timeStamp);
    }
    return found - list.begin();
}

void CETR::Remove(std::vector<CETR>& list, unsigned long id) {
    const auto removed =
        std::remove_if(list.begin(), list.end(), [&](const CETR& etr) { return etr.m_ID == id; });
    list.erase(removed, list.end());
}

std::string CETR::RemainingTimeToString(unsigned long ms) {
    const unsigned long hours = ms / 3600000;
    const unsigned long minutes = ms / 60000 - 60 * hours;
    const unsigned long seconds = ms / 1000 - 60 * (ms / 60000);
    if (hours == 0 && minutes == 0 && seconds == 0) {
        return std::string();
    }
    if (hours > 99) {
        return "> 99:59:59";
    }
    char text[sizeof("99:59:59")];
    std::snprintf(text, sizeof(text), "%02u:%02u:%02u", static_cast<unsigned>(hours),
                  static_cast<unsigned>(minutes), static_cast<unsigned>(seconds));
    return text;
}

void CETR::GetETR(std::string& out) {
    out = RemainingTimeToString(m_RemainingTime);
    if (VELKTrace::tracesEnabled) {
        Trace(TRACE_CATEGORY_DATA, "ETR: %s SteadyClock: %s", out, NowSteady());
    }
}

}  // namespace PI

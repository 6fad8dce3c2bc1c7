// SPDX-License-Identifier: Apache-2.0

#include <pi/adapters.h>

#include <algorithm>
#include <mutex>

namespace PI {

std::map<std::string, std::vector<int>> CGlobalAdapterID::AllHostsAdaptersUniqueIDs;

namespace {

std::mutex mutex;

void Register(const std::string& host, int id) {
    const std::lock_guard<std::mutex> lock(mutex);
    std::vector<int>& ids = CGlobalAdapterID::AllHostsAdaptersUniqueIDs[host];
    if (std::find(ids.begin(), ids.end(), id) == ids.end()) {
        ids.push_back(id);
    }
}

// A weighted sum, not a hash; the 2 keeps it clear of 0 and 1. Unsigned, because it wraps.
int UniqueID(int a, int b, int c, int d) {
    const auto sum = static_cast<std::uint32_t>(a) + 2 * static_cast<std::uint32_t>(b) +
                     3 * static_cast<std::uint32_t>(c) + 4 * static_cast<std::uint32_t>(d) + 2;
    return static_cast<int>(sum);
}

bool IsAssigned(int id) {
    return static_cast<std::uint32_t>(id) > 1;
}

}  // namespace

int CGlobalAdapterID::GetAdapterUniqueID() const {
    return m_AdapterUniqueID;
}

void CGlobalAdapterID::SetAdapterUniqueID(int id) {
    Register(m_HostName, id);
    m_AdapterUniqueID = id;
}

unsigned int CGlobalAdapterID::GetGlobalAdapterNumber() const {
    const std::lock_guard<std::mutex> lock(mutex);
    const std::vector<int>& ids = AllHostsAdaptersUniqueIDs[m_HostName];
    const auto found = std::find(ids.begin(), ids.end(), m_AdapterUniqueID);
    return found == ids.end() ? 0xFFFFFFFF : static_cast<unsigned int>(found - ids.begin());
}

// cppcheck-suppress passedByValue ; part of the interface
// NOLINTNEXTLINE(performance-unnecessary-value-param): part of the interface
int CGlobalAdapterID::GenerateUniqueAdapterNumber(int a, int b, int c, int d, std::string host) {
    const int id = UniqueID(a, b, c, d);
    Register(host, id);
    return id;
}

void CGlobalAdapterID::GenerateUniqueAdapterNumber() {
    const int id = UniqueID(m_IDPart1, m_IDPart2, m_IDPart3, m_IDPart4);
    if (IsAssigned(id) && IsAssigned(m_AdapterUniqueID)) {
        SetAdapterUniqueID(id);
    }
}

}  // namespace PI

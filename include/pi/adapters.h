// SPDX-License-Identifier: Apache-2.0
/// @file
/// Numbering of adapters across all plug-ins of the process.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup utilities
/// @{

/// Gives an adapter an identifier made from where it sits, and a number: its place among the host's adapters,
/// in the order in which they were registered.
///
/// Made from PCI addresses, identifiers collide: the 8,192 places of 256 buses with 32 devices in a domain,
/// passed as domain, bus, device and function 0, make 602 of them. Where adapters have serial numbers, make
/// the identifier from that and register it with SetAdapterUniqueID; the example of @ref utilities does so.
///
/// The lists are one for the process and are never cleared, so numbers stay. Different places can make the
/// same identifier; such adapters share a number. Asking may add an empty list for a new host.
///
/// Threads: any number of them may register adapters and ask for numbers at once, each with adapters of its
/// own.
class PI_API CGlobalAdapterID {
public:
    /// Identifiers by host, in the order of registration. Read and change it directly only while no other
    /// thread registers or asks.
    static std::map<std::string, std::vector<int>> AllHostsAdaptersUniqueIDs;

    /// The identifier, m_AdapterUniqueID.
    int GetAdapterUniqueID() const;

    /// Sets the identifier and registers it for the host, if it is not registered yet. If allocation fails,
    /// it does neither.
    void SetAdapterUniqueID(int id);

    /// The adapter's place among its host's, from 0; 0xFFFFFFFF when its identifier is not registered.
    unsigned int GetGlobalAdapterNumber() const;

    /// Makes an identifier, a + 2b + 3c + 4d + 2 in wrapping 32-bit arithmetic, and registers it for the
    /// host.
    /// @return the identifier, new or not
    static int GenerateUniqueAdapterNumber(int a, int b, int c, int d, std::string host);

    /// Never registers an adapter that has no identifier yet, so a fresh one is numbered with the static form
    /// and SetAdapterUniqueID.
    ///
    /// Makes an identifier from m_IDPart1 to 4 in the same way, sets and registers it; only when both it and
    /// the present identifier are above 1 as unsigned numbers, so an adapter without an identifier keeps
    /// none.
    void GenerateUniqueAdapterNumber();

    /// @{
    /// Where the adapter sits, set by the plug-in.
    std::int32_t m_IDPart1 = 0;
    std::int32_t m_IDPart2 = 0;
    std::int32_t m_IDPart3 = 0;
    std::int32_t m_IDPart4 = 0;
    /// @}
    std::int32_t m_AdapterUniqueID = 0;  ///< 0 and 1: the adapter has no identifier
    std::string m_HostName;              ///< the host that the adapter belongs to
};

/// @}

}  // namespace PI

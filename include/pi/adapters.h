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

/// Gives an adapter an identifier computed from its location, and a number: its index among the adapters of
/// its host, in the order of registration.
///
/// Identifiers computed from PCI addresses collide: the 8,192 addresses of a domain with 256 buses of 32
/// devices, passed as domain, bus, device and function 0, give only 602 identifiers. If adapters have serial
/// numbers, compute the identifier from those and register it with SetAdapterUniqueID, as the example in
/// @ref utilities does.
///
/// All modules of the process share the lists, which are never cleared, so that numbers do not change.
/// Adapters whose locations give the same identifier share a number. Asking for a number may add an empty
/// list for a new host.
///
/// Threads: any number of threads may register adapters and ask for numbers at once, each with objects of its
/// own.
class PI_API CGlobalAdapterID {
public:
    /// Identifiers by host, in the order of registration. Read and change it directly only while no other
    /// thread registers adapters or asks for numbers.
    static std::map<std::string, std::vector<int>> AllHostsAdaptersUniqueIDs;

    /// The identifier, m_AdapterUniqueID.
    int GetAdapterUniqueID() const;

    /// Sets the identifier and registers it for the host, if it is not registered yet.
    /// @throws std::bad_alloc if allocation fails; the identifier is then neither set nor registered
    void SetAdapterUniqueID(int id);

    /// Index of the adapter among those of its host, from 0; 0xFFFFFFFF if its identifier is not registered.
    /// @throws std::bad_alloc if allocation fails
    unsigned int GetGlobalAdapterNumber() const;

    /// Computes an identifier, a + 2b + 3c + 4d + 2 in wrapping 32-bit arithmetic, and registers it for the
    /// host.
    /// @return the identifier, whether it was registered before or not
    /// @throws std::bad_alloc if allocation fails
    static int GenerateUniqueAdapterNumber(int a, int b, int c, int d, std::string host);

    /// Computes an identifier from m_IDPart1 to m_IDPart4 in the same way, and sets and registers it, but
    /// only if both it and the present identifier are above 1 as unsigned numbers.
    ///
    /// So it never gives an adapter its first identifier: use the static function and SetAdapterUniqueID for
    /// that.
    /// @throws std::bad_alloc if allocation fails
    void GenerateUniqueAdapterNumber();

    /// @{
    /// Location of the adapter, set by the plug-in.
    std::int32_t m_IDPart1 = 0;
    std::int32_t m_IDPart2 = 0;
    std::int32_t m_IDPart3 = 0;
    std::int32_t m_IDPart4 = 0;
    /// @}
    std::int32_t m_AdapterUniqueID = 0;  ///< 0 or 1: the adapter has no identifier
    std::string m_HostName;              ///< the host that the adapter belongs to
};

/// @}

}  // namespace PI

// SPDX-License-Identifier: Apache-2.0
/// @file
/// How much a solid-state drive is rated to be written, by its model and for every protocol.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace PI {

/// @addtogroup drives
/// @{

namespace RatingList {
/// The list that a rating is from. Lists are searched in this order.
enum _RATING_LIST : std::int32_t {
    NONE = 0,        ///< in no list
    SATA = 1,        ///< SATASSDEndurance
    SAS = 2,         ///< SASSSDEndurance
    NVME = 3,        ///< NVMeSSDEndurance
    ADDITIONAL = 4,  ///< the library's list of further models of all protocols
};
}  // namespace RatingList
using RatingList::_RATING_LIST;

namespace RatingBasis {
/// What a rating rests on. docs/ssd-endurance-sources.tsv names the source of every row.
enum _RATING_BASIS : std::int32_t {
    NONE = 0,      ///< there is no rating
    GIVEN = 1,     ///< the product data that the lists were begun with; no other source is known
    SOURCED = 2,   ///< published by the vendor, or by somebody who quotes the vendor or measured it
    COMPUTED = 3,  ///< drive writes per day x capacity x days of warranty, or from a drive of the same series
    ASSUMED = 4,   ///< nothing is published that fits; as for drives of its kind
    CONTRADICTED = 5,  ///< sources give different figures, both of which are given
};
}  // namespace RatingBasis
using RatingBasis::_RATING_BASIS;

/// The rated endurance of a solid-state drive.
///
/// A rating is a floor, what the vendor vouches for: of drives worn 3 percent or more in a public collection
/// of smartctl reports, the median takes 2.08 times its rating before it counts itself worn out. So a drive
/// beyond its rating is not worn out for that, and the drive's own wear figure counts before the rating.
///
/// A value without hidden state: it may be copied, and read by several threads.
class PI_API CEnduranceRating {
public:
    /// No rating.
    CEnduranceRating() = default;

    /// Whether the model is in a list.
    bool IsListed() const;
    /// Which list it is in.
    _RATING_LIST GetList() const;
    /// What the rating rests on.
    _RATING_BASIS GetBasis() const;
    /// Whether sources contradict each other (RatingBasis::CONTRADICTED).
    bool IsDoubtful() const;
    /// Vendor in capital letters, such as "INTEL", which for a drive sold under another name is who sells it;
    /// empty when the model is in no list.
    std::string GetVendor() const;

    /// Terabytes (10^12 bytes) that may be written, above 0. No value when the model is in no list, or is
    /// rated in erase cycles.
    std::optional<std::uint64_t> GetTerabytes() const;
    /// The figure of the source that contradicts the rating, in the same unit; no value when none does.
    std::optional<std::uint64_t> GetContradictingTerabytes() const;
    /// Erase cycles of the flash memory that the drive is rated for, which InnoDisk states in place of
    /// terabytes. No value for all others.
    std::optional<std::uint64_t> GetEraseCycles() const;

    /// The rating in words for people, in English, such as "at least 1752 TB (published)".
    /// @throws std::bad_alloc
    std::string GetText() const;

private:
    /// @cond
    friend PI_API CEnduranceRating FindEnduranceRating(std::string_view modelText) noexcept;
    /// @endcond

    std::uint32_t m_Row = 0;  ///< of the library's table, counted from 1
    [[maybe_unused]] std::uint32_t m_Reserved[3] = {};
};

/// Looks a drive's rating up by its model, whatever its protocol: first in the three lists, in their order
/// and by their rules, then among the additional models.
///
/// The text may be as the drive prints it, with or without its vendor: "INTEL SSDSC2BB016T7",
/// "Micron_5300_MTFDDAK960TDS", "Dell Ent NVMe CM6 RI 1.92TB". A row is compared with what begins at any
/// word; letter case, and whether blanks or underscores separate words, never matter. What follows a part
/// number matters to the models that are compared whole alone: those of SAS and InnoDisk. A rating never goes
/// from one capacity to another, but some vendors rate all capacities of a model alike.
///
/// @param modelText any bytes; above 128 characters it is in no list
/// @return an answer that is not listed where the model is unknown. Thread-safe.
PI_API CEnduranceRating FindEnduranceRating(std::string_view modelText) noexcept;

/// @}

}  // namespace PI

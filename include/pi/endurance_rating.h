// SPDX-License-Identifier: Apache-2.0
/// @file
/// Rated write endurance of solid-state drives of every protocol, by model.
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
/// What a rating is based on. docs/ssd-endurance-sources.tsv names the source of every row.
enum _RATING_BASIS : std::int32_t {
    NONE = 0,     ///< there is no rating
    GIVEN = 1,    ///< the product data that the lists started from; no other source is known
    SOURCED = 2,  ///< published by the vendor, or by somebody who quotes the vendor or measured it
    COMPUTED =
        3,  ///< drive writes per day x capacity x days of warranty, or scaled from a drive of the same series
    ASSUMED = 4,       ///< nothing suitable is published; the figure is that of similar drives
    CONTRADICTED = 5,  ///< sources give different figures, and both are kept
};
}  // namespace RatingBasis
using RatingBasis::_RATING_BASIS;

/// The rated endurance of a solid-state drive.
///
/// A rating is a minimum that the vendor guarantees: among drives worn 3 percent or more in a public
/// collection of smartctl reports, the median drive takes 2.08 times its rating before it reports that it is
/// worn out. So a drive is not worn out because it is beyond its rating, and the drive's own wear figure
/// takes precedence.
///
/// A value: copies are independent, and any number of threads may read one.
class PI_API CEnduranceRating {
public:
    /// No rating.
    CEnduranceRating() = default;

    /// Whether the model is in a list.
    bool IsListed() const;
    /// Which list it is in.
    _RATING_LIST GetList() const;
    /// What the rating is based on.
    _RATING_BASIS GetBasis() const;
    /// Whether sources contradict each other (RatingBasis::CONTRADICTED).
    bool IsDoubtful() const;
    /// Vendor in capital letters, such as "INTEL"; of a drive that is sold under another name, the seller.
    /// Empty if the model is in no list.
    /// @throws std::bad_alloc if allocation fails
    std::string GetVendor() const;

    /// Terabytes (10^12 bytes) that may be written, above 0. No value if the model is in no list or is rated
    /// in erase cycles.
    std::optional<std::uint64_t> GetTerabytes() const;
    /// The figure of the source that contradicts the rating, in the same unit; no value if none does.
    std::optional<std::uint64_t> GetContradictingTerabytes() const;
    /// Erase cycles of the flash memory that the drive is rated for, which InnoDisk states instead of
    /// terabytes. No value for all other drives.
    std::optional<std::uint64_t> GetEraseCycles() const;

    /// The rating in words for people, in English, such as "at least 1752 TB (published)".
    /// @throws std::bad_alloc if allocation fails
    std::string GetText() const;

private:
    /// @cond
    friend PI_API CEnduranceRating FindEnduranceRating(std::string_view modelText) noexcept;
    /// @endcond

    std::uint32_t m_Row = 0;  ///< of the library's table, counted from 1
    [[maybe_unused]] std::uint32_t m_Reserved[3] = {};
};

/// Looks up a drive's rating by its model, for any protocol: first in the three lists, in their order and by
/// their rules, then among the additional models.
///
/// The text may be as the drive prints it, with or without its vendor: "INTEL SSDSC2BB016T7",
/// "Micron_5300_MTFDDAK960TDS", "Dell Ent NVMe CM6 RI 1.92TB". A row may match from the beginning of any
/// word; letter case is ignored, and blanks and underscores are equal. What follows the part number is
/// compared for SAS drives and InnoDisk only, whose models have to match whole. A rating is never carried
/// over to another capacity, but some vendors rate all capacities of a model alike.
///
/// @param modelText any bytes; a text of more than 128 is in no list
/// @return a rating that is not listed if the model is unknown. Thread-safe.
PI_API CEnduranceRating FindEnduranceRating(std::string_view modelText) noexcept;

/// @}

}  // namespace PI

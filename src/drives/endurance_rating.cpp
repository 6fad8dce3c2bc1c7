// SPDX-License-Identifier: Apache-2.0

#include <pi/endurance_rating.h>

#include <cstddef>
#include <iterator>

#include "util/text.h"

namespace PI {

namespace {

/// A row of one of the lists. It holds its characters, so that loading the library has no pointer to set.
struct Row {
    std::uint64_t m_Rating = 0;
    std::uint64_t m_Contrary = 0;  ///< 0: no source contradicts
    std::uint8_t m_Length = 0;     ///< of the text that is compared
    bool m_IsWhole = false;        ///< nothing but the vendor may follow that text
    _RATING_LIST m_List = RatingList::NONE;
    _RATING_BASIS m_Basis = RatingBasis::NONE;
    char m_Vendor[9] = {};
    char m_Model[31] = {};  ///< in upper case
};

constexpr Row MakeRow(_RATING_LIST list, std::string_view vendor, std::string_view model,
                      std::size_t matchLength, std::uint64_t rating, _RATING_BASIS basis,
                      std::uint64_t contrary) {
    Row row;
    row.m_Rating = rating;
    row.m_Contrary = contrary;
    row.m_Length = static_cast<std::uint8_t>(matchLength == 0 ? model.size() : matchLength);
    row.m_IsWhole = matchLength == 0;
    row.m_List = list;
    row.m_Basis = basis;
    for (std::size_t i = 0; i < vendor.size(); ++i) {
        row.m_Vendor[i] = vendor[i];
    }
    for (std::size_t i = 0; i < model.size(); ++i) {
        row.m_Model[i] = ToUpper(model[i]);
    }
    return row;
}

constexpr Row ROWS[] = {
#define PI_SATA_SSD(vendor, model, matchLength, enduranceTB, reserved, groupFlag, basis, contrary) \
    MakeRow(RatingList::SATA, vendor, model, matchLength, enduranceTB, RatingBasis::basis, contrary),
#include "drives/ssd_endurance_sata.def"
#undef PI_SATA_SSD
#define PI_SAS_SSD(vendor, model, enduranceTB, reserved, basis, contrary) \
    MakeRow(RatingList::SAS, vendor, model, 0, enduranceTB, RatingBasis::basis, contrary),
#include "drives/ssd_endurance_sas.def"
#undef PI_SAS_SSD
#define PI_NVME_SSD(vendor, model, matchLength, enduranceTB, reserved, groupFlag, basis, contrary) \
    MakeRow(RatingList::NVME, vendor, model, matchLength, enduranceTB, RatingBasis::basis, contrary),
#include "drives/ssd_endurance_nvme.def"
#undef PI_NVME_SSD
#define PI_ADDITIONAL_SSD(vendor, model, enduranceTB, basis, contrary)                                 \
    MakeRow(RatingList::ADDITIONAL, vendor, model, sizeof(model) - 1, enduranceTB, RatingBasis::basis, \
            contrary),
#include "drives/ssd_endurance_additional.def"
#undef PI_ADDITIONAL_SSD
};

/// A model in upper case, its words separated by one blank.
struct Words {
    char m_Text[128];
    std::size_t m_Length = 0;

    /// @return false when the text is too long
    bool Take(std::string_view text) {
        bool isWordOver = false;
        for (const char character : text) {
            const bool isSeparator = static_cast<unsigned char>(character) <= ' ' || character == '_';
            if (isSeparator) {
                isWordOver = m_Length > 0;
                continue;
            }
            if (m_Length + (isWordOver ? 2 : 1) > std::size(m_Text)) {
                return false;
            }
            if (isWordOver) {
                m_Text[m_Length++] = ' ';
                isWordOver = false;
            }
            m_Text[m_Length++] = ToUpper(character);
        }
        return true;
    }

    /// The rest of the text from a place on.
    std::string_view From(std::size_t place) const { return {m_Text + place, m_Length - place}; }
};

bool Matches(const Row& row, std::string_view text) {
    // Most rows differ in the first or in the last character, which is soon seen.
    const std::size_t length = row.m_Length;
    if (text.size() < length || text[0] != row.m_Model[0] || text[length - 1] != row.m_Model[length - 1] ||
        text.substr(0, length) != std::string_view(row.m_Model, length)) {
        return false;
    }
    const std::string_view rest = text.substr(length);
    return !row.m_IsWhole || rest.empty() || (rest[0] == ' ' && rest.substr(1) == row.m_Vendor);
}

/// The row of a rating; 0 is one without anything.
const Row& RowOf(std::uint32_t number) {
    static constexpr Row NO_ROW;
    return number == 0 ? NO_ROW : ROWS[number - 1];
}

/// InnoDisk's rows hold erase cycles.
bool IsRatedInCycles(const Row& row) {
    return std::string_view(row.m_Vendor) == "INNODISK";
}

std::optional<std::uint64_t> KnownIfAboveZero(std::uint64_t figure) {
    return figure != 0 ? std::optional(figure) : std::nullopt;
}

const char* BasisText(_RATING_BASIS basis) {
    switch (basis) {
        case RatingBasis::GIVEN: return "product data";
        case RatingBasis::SOURCED: return "published";
        case RatingBasis::COMPUTED: return "computed, not published";
        case RatingBasis::ASSUMED: return "assumed, as for drives of its kind";
        case RatingBasis::NONE:
        case RatingBasis::CONTRADICTED: break;
    }
    return "";
}

}  // namespace

CEnduranceRating FindEnduranceRating(std::string_view modelText) noexcept {
    CEnduranceRating rating;
    Words words;
    if (!words.Take(modelText)) {
        return rating;
    }
    for (std::size_t place = 0; place < words.m_Length; ++place) {
        if (place > 0 && words.m_Text[place - 1] != ' ') {
            continue;
        }
        for (const Row& row : ROWS) {
            if (Matches(row, words.From(place))) {
                rating.m_Row = static_cast<std::uint32_t>(&row - ROWS + 1);
                return rating;
            }
        }
    }
    return rating;
}

bool CEnduranceRating::IsListed() const {
    return m_Row != 0;
}

_RATING_LIST CEnduranceRating::GetList() const {
    return RowOf(m_Row).m_List;
}

_RATING_BASIS CEnduranceRating::GetBasis() const {
    return IsDoubtful() ? RatingBasis::CONTRADICTED : RowOf(m_Row).m_Basis;
}

bool CEnduranceRating::IsDoubtful() const {
    return RowOf(m_Row).m_Contrary != 0;
}

std::string CEnduranceRating::GetVendor() const {
    return RowOf(m_Row).m_Vendor;
}

std::optional<std::uint64_t> CEnduranceRating::GetTerabytes() const {
    const Row& row = RowOf(m_Row);
    return IsRatedInCycles(row) ? std::nullopt : KnownIfAboveZero(row.m_Rating);
}

std::optional<std::uint64_t> CEnduranceRating::GetContradictingTerabytes() const {
    return KnownIfAboveZero(RowOf(m_Row).m_Contrary);
}

std::optional<std::uint64_t> CEnduranceRating::GetEraseCycles() const {
    const Row& row = RowOf(m_Row);
    return IsRatedInCycles(row) ? KnownIfAboveZero(row.m_Rating) : std::nullopt;
}

std::string CEnduranceRating::GetText() const {
    const Row& row = RowOf(m_Row);
    if (!IsListed()) {
        return "not in the endurance lists";
    }
    std::string text = "at least " + std::to_string(row.m_Rating);
    text += IsRatedInCycles(row) ? " erase cycles (" : " TB (";
    text += BasisText(row.m_Basis);
    if (IsDoubtful()) {
        text += "; another source says " + std::to_string(row.m_Contrary) + " TB";
    }
    return text + ")";
}

}  // namespace PI

// SPDX-License-Identifier: Apache-2.0

#include <pi/exchange/smartctl.h>

namespace PI {

struct CReportRefusal::CFacts {
    std::string m_Reason;
    std::uint64_t m_Line;
    std::uint64_t m_Column;
};

CReportRefusal::CReportRefusal(const std::string& reason, std::uint64_t line, std::uint64_t column)
    : m_Facts(new CFacts{reason, line, column}) {}

CReportRefusal::CReportRefusal(const CReportRefusal& source) : m_Facts(new CFacts(*source.m_Facts)) {}

CReportRefusal::CReportRefusal(CReportRefusal&& source) noexcept = default;

CReportRefusal& CReportRefusal::operator=(const CReportRefusal& source) {
    return *this = CReportRefusal(source);
}

CReportRefusal& CReportRefusal::operator=(CReportRefusal&& source) noexcept = default;

CReportRefusal::~CReportRefusal() = default;

const std::string& CReportRefusal::GetReason() const noexcept {
    return m_Facts->m_Reason;
}

std::uint64_t CReportRefusal::GetLine() const noexcept {
    return m_Facts->m_Line;
}

std::uint64_t CReportRefusal::GetColumn() const noexcept {
    return m_Facts->m_Column;
}

}  // namespace PI

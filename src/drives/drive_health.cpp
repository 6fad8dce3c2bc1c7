// SPDX-License-Identifier: Apache-2.0

#include <pi/drive_health.h>
#include <pi/plugin_helper.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include "drives/health_figures.h"
#include "drives/health_pages.h"
#include "drives/health_state.h"
#include "drives/self_tests.h"

namespace PI {

namespace {

// In the order of the kinds' numbers.
constexpr PageReader PAGE_READERS[] = {
    ReadATASmartData,           ReadATASmartThresholds, ReadATADeviceStatistics, ReadATASelfTestLog,
    ReadATAExtendedSelfTestLog, ReadNVMeHealthLog,      ReadNVMeSelfTestLog,     ReadNVMeEnduranceGroupLog,
    ReadNVMeIdentifyController, ReadSCSILogPage,
};

/// Copies what fits of a text, and a terminating zero.
template <std::size_t Size>
void CopyText(char (&target)[Size], const char* text, std::size_t length) {
    const std::size_t count = std::min(length, Size - 1);
    std::memcpy(target, text, count);
    target[count] = '\0';
}

}  // namespace

CDriveHealth::CDriveHealth(_DRIVE_PROTOCOL protocol, const std::string& model)
    : m_Facts(std::make_unique<CFacts>()) {
    m_Facts->m_Protocol = protocol;
    const std::size_t begin = std::min(model.find_first_not_of(' '), model.size());
    const std::size_t end = model.find_last_not_of(' ') + 1;
    CopyText(m_Facts->m_Model, model.data() + begin, std::max(begin, end) - begin);
    m_Facts->m_Rating = FindEnduranceRating(m_Facts->m_Model);
    if (m_Facts->m_Rating.GetEraseCycles()) {
        std::string vendor;
        std::string name;
        CPluginHelper::SplitSATAModelName(model, vendor, name);
        m_Facts->m_RatedInCycles = CPluginHelper::findLifeTimeProp(name);
        if (m_Facts->m_RatedInCycles == nullptr) {  // printed without its vendor
            m_Facts->m_RatedInCycles = CPluginHelper::findLifeTimeProp(model);
        }
    }
}

CDriveHealth::CDriveHealth(const CDriveHealth& source) : m_Facts(std::make_unique<CFacts>(*source.m_Facts)) {}

CDriveHealth::CDriveHealth(CDriveHealth&& source) noexcept = default;

CDriveHealth& CDriveHealth::operator=(const CDriveHealth& source) {
    return *this = CDriveHealth(source);
}

CDriveHealth& CDriveHealth::operator=(CDriveHealth&& source) noexcept = default;

CDriveHealth::~CDriveHealth() = default;

void CDriveHealth::SetCapacity(std::uint64_t bytes) noexcept {
    m_Facts->m_CapacityBytes = bytes;
}

void CDriveHealth::SetBlockSize(std::uint32_t bytes) noexcept {
    constexpr std::uint32_t USUAL = 512;
    m_Facts->m_BlockSize = bytes != 0 ? bytes : USUAL;
}

void CDriveHealth::SetMedium(int medium) noexcept {
    m_Facts->m_Medium = medium;
}

const char* CDriveHealth::Take(_HEALTH_PAGE page, const void* bytes, std::size_t length) noexcept {
    const std::int64_t index = std::int64_t{page} - HealthPage::ATA_SMART_DATA;
    if (index < 0 || index >= static_cast<std::int64_t>(std::size(PAGE_READERS))) {
        return "no such kind of page";
    }
    return PAGE_READERS[index](static_cast<const std::uint8_t*>(bytes), bytes != nullptr ? length : 0,
                               *m_Facts);
}

void CDriveHealth::TakeVerdict(bool passed) noexcept {
    m_Facts->Put(HealthFigure::VERDICT, FigureSource::DRIVE_VERDICT, 0, passed ? 0 : 1);
}

void CDriveHealth::TakeGrownDefects(std::uint64_t count) noexcept {
    m_Facts->Put(HealthFigure::REALLOCATED_SECTORS, FigureSource::SCSI_DEFECT_LIST, 0, Counter(count));
}

void CDriveHealth::TakeFigure(_HEALTH_FIGURE figure, std::int64_t value, _FIGURE_SOURCE source,
                              std::uint32_t number) noexcept {
    if (FindKind(figure) != nullptr) {
        m_Facts->Put(figure, source, number, value);
    }
}

void CDriveHealth::TakeStatistic(std::uint32_t page, std::uint32_t offset, std::int64_t value) noexcept {
    NoteStatistic(page, offset, value, *m_Facts);
}

void CDriveHealth::TakeSelfTests(const _SELF_TEST_OUTCOME* outcomes, std::size_t count, _FIGURE_SOURCE source,
                                 std::uint32_t number) noexcept {
    using namespace SelfTestOutcome;
    SelfTestCounter counter;
    for (std::size_t i = 0; i < count; ++i) {
        const _SELF_TEST_OUTCOME outcome = outcomes[i];
        counter.Add(outcome == SHORT_PASSED || outcome == EXTENDED_PASSED   ? SelfTestResult::PASSED
                    : outcome == SHORT_FAILED || outcome == EXTENDED_FAILED ? SelfTestResult::FAILED
                                                                            : SelfTestResult::NEITHER,
                    outcome == EXTENDED_PASSED || outcome == EXTENDED_FAILED);
    }
    m_Facts->Put(HealthFigure::FAILED_SELF_TESTS, source, number, counter.Failed());
}

void CDriveHealth::ClearAttributes() noexcept {
    m_Facts->ForgetAttributes();
    m_Facts->m_ThresholdCount = 0;
}

bool CDriveHealth::TakeAttribute(std::uint8_t id, const char* name, std::uint16_t flags, int current,
                                 int worst, int threshold, std::uint64_t raw) noexcept {
    DriveFacts& facts = *m_Facts;
    if (id == 0 || facts.m_AttributeCount == DriveFacts::MAX_ATTRIBUTES) {
        return false;
    }
    const auto normalised = [](int value) {
        return static_cast<std::int16_t>(value >= 0 && value <= UINT8_MAX ? value : -1);
    };
    Attribute& attribute = facts.AddAttribute(id);
    attribute.m_Flags = flags;
    attribute.m_Current = normalised(current);
    attribute.m_Worst = normalised(worst);
    attribute.m_Raw = raw;
    if (name != nullptr) {
        CopyText(attribute.m_Name, name, std::strlen(name));
    }
    if (normalised(threshold) >= 0 && facts.m_ThresholdCount < DriveFacts::MAX_ATTRIBUTES) {
        facts.m_Thresholds[facts.m_ThresholdCount++] = {id, static_cast<std::uint8_t>(threshold)};
    }
    return true;
}

CHealthFigure CDriveHealth::GetFigure(_HEALTH_FIGURE figure) const noexcept {
    return FindKind(figure) != nullptr ? Decider(*m_Facts).Figure(figure) : CHealthFigure(figure);
}

std::vector<CHealthFigure> CDriveHealth::GetFigures() const {
    return Decider(*m_Facts).Figures();
}

_DRIVE_STATE CDriveHealth::GetState() const noexcept {
    Decider decider(*m_Facts);
    return Judge(decider).m_List[0].m_State;
}

std::vector<CHealthReason> CDriveHealth::GetReasons() const {
    Decider decider(*m_Facts);
    return ReasonsOf(decider);
}

}  // namespace PI

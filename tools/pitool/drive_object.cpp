// SPDX-License-Identifier: Apache-2.0

#include "drive_object.h"

#include <pi/vocabulary.h>

namespace pitool {
namespace {

namespace Operation = PI::OperationID;

bool Always(const DriveAssessment&) {
    return true;
}

bool IsSas(const DriveAssessment& drive) {
    const PI::CProperty& protocol = FindFigure(drive, PI::PropertyID::PROTOCOL).m_Property;
    return protocol.m_Type == PI::PropertyType::CHOICE &&
           protocol.m_Data.m_Choice.m_Value == PI::PropertyValue::SAS;
}

bool IsFailing(const DriveAssessment& drive) {
    return drive.m_Failing;
}

bool IsNotFailing(const DriveAssessment& drive) {
    return !drive.m_Failing;
}

/// An operation and the drives it is offered on: a drive that fails is no longer put to the test but taken
/// out.
struct OperationRule {
    PI::_OPERATION_ID m_Operation;
    bool (*m_IsOffered)(const DriveAssessment& drive);
};

constexpr OperationRule OPERATION_RULES[] = {
    {Operation::LOCATE_DEVICE, Always},   {Operation::DISK_INFORMATION, Always},
    {Operation::SENSE_LOG, IsSas},        {Operation::START_VERIFY, IsNotFailing},
    {Operation::MAKE_OFFLINE, IsFailing},
};

std::vector<PI::_OPERATION_ID> OfferedOperations(const DriveAssessment& drive) {
    std::vector<PI::_OPERATION_ID> operations;
    for (const OperationRule& rule : OPERATION_RULES) {
        if (rule.m_IsOffered(drive)) {
            operations.push_back(rule.m_Operation);
        }
    }
    return operations;
}

}  // namespace

PI::CObject MakeDriveObject(std::uint64_t id, const DriveAssessment& drive) {
    PI::CObject object(id, PHYSICAL_DRIVE);
    object.m_Properties.reserve(drive.m_Figures.size());
    for (const Figure& figure : drive.m_Figures) {
        if (figure.IsKnown()) {
            object.m_Properties.push_back(figure.m_Property);
        }
    }
    for (const PI::_OPERATION_ID operation : OfferedOperations(drive)) {
        object.m_Operations.emplace_back().m_Header1 = static_cast<std::uint32_t>(operation);
    }
    return object;
}

std::vector<std::string> OperationNames(const DriveAssessment& drive) {
    std::vector<std::string> names;
    for (const PI::_OPERATION_ID operation : OfferedOperations(drive)) {
        names.push_back(PI::OperationIDToString(operation));
    }
    return names;
}

}  // namespace pitool

// SPDX-License-Identifier: Apache-2.0
// A plug-in whose one drive can be verified in three steps: the operations of the host are tried with it.
#include <pi/object_builder.h>
#include <unistd.h>

#include <stdexcept>

#include "plugin_interface.h"

namespace {

namespace Builder = PI::ObjectBuilder;
namespace ID = PI::PropertyID;
namespace Type = PI::PropertyType;
namespace Value = PI::PropertyValue;

constexpr std::uint64_t DRIVE = 7;
constexpr std::uint64_t TWIN = 8;

PI::CObject MakeDrive(std::uint64_t id) {
    PI::CObject drive(id, PHYSICAL_DRIVE);
    Builder::AddText(drive, Builder::Describe(ID::NAME, 1, Type::STRING), "disk");
    Builder::AddText(drive, Builder::Describe(ID::OS_DEVICE, 1, Type::STRING), "/dev/disk");
    return drive;
}

}  // namespace

int PluginInterfaceVersion() {
    return PLUGIN_INTERFACE_VERSION;
}

const char* PluginName() {
    return "task";
}

int PluginConfigure(const char*, const char*) {
    return PI::ErrorCode::INVALID_PARAMETER;
}

int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>&) {
    PI::CObject& drive = objects.emplace_back(MakeDrive(DRIVE));
    Builder::AddOperation(drive, PI::OperationID::START_VERIFY, 1);
    Builder::AddOperation(drive, PI::OperationID::LOCATE_DEVICE, 1);
    std::vector<PI::CProperty>& parameters = drive.m_Operations.front().m_Properties;
    parameters.emplace_back(ID::TYPE, false).SetValue("quick");
    parameters.emplace_back(ID::MEDIA_TYPE, false).SetValue(Value::HDD, {Value::HDD, Value::SSD});
    parameters.emplace_back(ID::CHECK_RATE, false).SetValue(30UL);
    parameters.emplace_back(ID::CONFIGURATION, false).SetValue(VELK::XML::xml_document());
    parameters.emplace_back(ID::ALARM_CONTROL, false).SetValue(1.0F);
    Builder::AddOperation(objects.emplace_back(MakeDrive(TWIN)), PI::OperationID::LOCATE_DEVICE, 1);
    return PI::ErrorCode::SUCCESS;
}

int PluginGetEvents(std::vector<PI::CEvent>&, std::vector<std::string>&) {
    return PI::ErrorCode::SUCCESS;
}

#ifndef WITHOUT_EXECUTE
int PluginExecute(std::uint64_t objectID, const PI::COperation& operation,
                  const std::function<bool(const PI::CTask&)>& report, PI::CTask& task,
                  std::vector<std::string>& errors) {
    const auto& type = operation.m_Properties.at(0).m_Data.m_String.m_Value;
    const auto& document = operation.m_Properties.at(3).m_Data.m_XML.m_Document;
    if (type == "throw") {
        throw std::runtime_error("thrown by the plug-in");
    }
    if (type == "silent") {
        return PI::ErrorCode::PHYSICALDRIVE_BUSY;
    }
    if (type == "fail") {
        errors = {"no luck", "nor hope"};
        return PI::ErrorCode::GENERAL;
    }
    task.m_TaskText1 = type + " verification of " + std::to_string(objectID) + " as " +
                       PI::PropertyValueToString(operation.m_Properties.at(1).m_Data.m_Choice.m_Value) +
                       " at " + std::to_string(operation.m_Properties.at(2).m_Data.m_Long.m_Value) +
                       " with <" + document.first_child().name() + ">";
    report(task);
    for (unsigned percent = 0; percent < 100; percent += 50) {
        task.m_TaskFlag = true;
        task.m_TaskValue2 = percent;
        task.m_TaskValue4 = (100 - percent) * 1000;
        bool goOn = report(task);
        while (type == "slow" && goOn && percent == 50) {
            usleep(1000);
            --task.m_TaskValue4;  // the host prints no line for this
            goOn = report(task);
        }
        if (!goOn) {
            task.m_TaskStatus = Value::ABORTED;
            task.m_TaskText2 = "the drive is as it was";
            return PI::ErrorCode::SUCCESS;
        }
    }
    task.m_TaskText2 = "no errors";
    return PI::ErrorCode::SUCCESS;
}
#endif

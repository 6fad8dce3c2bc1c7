// SPDX-License-Identifier: Apache-2.0

#include "execution.h"

#include <pi/etr.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace service {
namespace {

namespace Value = PI::PropertyValue;

constexpr std::uint64_t NOT_KNOWN = ~std::uint64_t{0};

[[noreturn]] void Refuse(const std::string& reason) {
    throw std::runtime_error(reason);
}

/// Those texts that are not empty in one, for people.
std::string Joined(const Texts& texts, const char* otherwise = "nothing") {
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() || text.empty() ? "" : ", ") + text;
    }
    return joined.empty() ? otherwise : joined;
}

bool IsCalled(const PI::CObject& object, const std::string& text) {
    for (const PI::_PROPERTY_ID id : {PI::PropertyID::NAME, PI::PropertyID::OS_DEVICE}) {
        const PI::CProperty* const property = PI::CPluginHelper::FindProperty(object, id);
        const std::string value = property == nullptr ? "" : property->m_Data.m_String.m_Value;
        if (value == text || (id == PI::PropertyID::OS_DEVICE && value == "/dev/" + text)) {
            return true;
        }
    }
    return std::to_string(object.m_ObjectID) == text;
}

/// The object and its operation. Things of one name, such as a drive in two arrays, are told apart by what
/// they offer.
std::pair<std::uint64_t, PI::COperation> Find(const std::vector<PI::CObject>& objects,
                                              const Request& request) {
    std::vector<std::pair<std::uint64_t, PI::COperation>> found;
    Texts ids;
    Texts offers;
    bool isThere = false;
    for (const PI::CObject& object : objects) {
        if (!IsCalled(object, request.m_Object)) {
            continue;
        }
        isThere = true;
        for (const PI::COperation& operation : object.m_Operations) {
            offers.push_back(PI::OperationIDToString(static_cast<int>(operation.m_Header1)));
            if (offers.back() == request.m_Operation) {
                found.emplace_back(object.m_ObjectID, operation);
                ids.push_back(std::to_string(object.m_ObjectID));
            }
        }
    }
    if (!isThere) {
        Refuse("there is no object " + request.m_Object);
    }
    if (found.empty()) {
        Refuse(request.m_Object + " does not offer " + request.m_Operation + " as it is; it offers " +
               Joined(offers));
    }
    if (found.size() > 1) {
        Refuse(request.m_Object + " is more than one object: " + Joined(ids));
    }
    return found.front();
}

/// Reads a parameter as its kind of data needs it.
/// @return false when the text does not fit
bool SetParameter(PI::CProperty& parameter, const std::string& text) {
    switch (parameter.m_Type) {
        case PI::PropertyType::STRING: parameter.SetValue(text); return true;
        case PI::PropertyType::CHOICE: {
            int value = 0;
            std::vector<int> choices;
            parameter.GetValue(value, choices);
            value = PI::StringToPropertyValue(text, Value::EMPTY);
            return std::find(choices.begin(), choices.end(), value) != choices.end() &&
                   parameter.SetValue(value, choices) == PI::ErrorCode::SUCCESS;
        }
        case PI::PropertyType::LONG: {
            unsigned long number = 0;
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
            return error == std::errc() && end == text.data() + text.size() &&
                   parameter.SetValue(number) == PI::ErrorCode::SUCCESS;
        }
        case PI::PropertyType::XML: {
            if (!std::filesystem::is_regular_file(text)) {  // a pipe would be waited for
                Refuse(text + ": there is no such file");
            }
            VELK::XML::xml_document document;
            if (const auto parsed = document.load_file(text.c_str()); !parsed) {
                Refuse(text + ": " + parsed.description());
            }
            parameter.SetValue(document);
            return true;
        }
        default: Refuse("parameters of this kind cannot be given here");
    }
}

void SetParameters(PI::COperation& operation, const Request& request) {
    for (const auto& [name, text] : request.m_Parameters) {
        PI::CProperty* parameter = nullptr;
        Texts names;
        for (PI::CProperty& each : operation.m_Properties) {
            names.push_back(PI::PropertyIDToString(each.m_ID));
            parameter = parameter == nullptr && names.back() == name ? &each : parameter;
        }
        if (parameter == nullptr) {
            Refuse(request.m_Operation + " does not take " + name + "; it takes " + Joined(names));
        }
        if (!SetParameter(*parameter, text)) {
            Refuse(name + " cannot be \"" + text + "\"");
        }
    }
}

}  // namespace

bool Execute(Plugin& plugin, const Request& request, const TaskReport& report) {
    Texts errors;
    const std::vector<PI::CObject> objects = plugin.GetObjects(errors);
    if (objects.empty() && !errors.empty()) {
        Refuse(Joined(errors));
    }
    auto [objectID, operation] = Find(objects, request);
    errors.clear();  // what else is wrong with the hardware is told with the inventory
    SetParameters(operation, request);

    PI::CTask task;
    task.m_RelatedIDs1 = {objectID};
    task.m_TaskValue1 = operation.m_Header1;
    task.m_TaskText1 = request.m_Operation + " of " + request.m_Object;
    const bool isDone =
        plugin.Execute(objectID, operation, report, task, errors) == PI::ErrorCode::SUCCESS && errors.empty();
    if (!isDone) {
        task.m_TaskStatus = Value::FAILED;
    } else if (task.m_TaskStatus != Value::ABORTED) {
        task.m_TaskStatus = Value::COMPLETE;
    }
    report(task);
    if (!isDone) {
        Refuse(Joined(errors));
    }
    return task.m_TaskStatus == Value::COMPLETE;
}

std::string TaskText(const PI::CTask& task) {
    const auto status = static_cast<int>(task.m_TaskStatus);
    const std::string time = task.m_TaskValue4 == NOT_KNOWN || status != Value::OK
                                 ? ""
                                 : PI::CETR::RemainingTimeToString(task.m_TaskValue4);
    const bool hasProgress = task.m_TaskFlag && status != Value::COMPLETE;
    return task.m_TaskText1 + ": " +
           Joined({status == Value::OK ? "" : PI::PropertyValueToString(status),
                   hasProgress ? std::to_string(task.m_TaskValue2) + " percent" : "",
                   time.empty() ? "" : time + " remaining", task.m_TaskText2},
                  "begun");
}

}  // namespace service

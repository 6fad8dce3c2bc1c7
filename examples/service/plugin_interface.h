// SPDX-License-Identifier: Apache-2.0
// clang-format off
/// @file
/// What a plug-in exports, and how the host of this example interprets it.
///
/// The library leaves several fields of its objects to the service and its plug-ins. Their meaning in this
/// service:
///
/// | Field | Meaning |
/// |---|---|
/// | CObject::m_ObjectID | unique within the plug-in, the same for the same thing in every call |
/// | CObject::m_ObjectType | an adapter type, LOGICAL_DRIVE, PHYSICAL_DRIVE, or TASK for what goes on in hardware |
/// | CObject::m_RelatedIDs1 | what it is part of, of several the first reported; empty for an adapter |
/// | CObject::m_ObjectValue | icon identifier, 0 for none |
/// | CProperty::m_Attribute1 | help topic, 1 for none |
/// | CProperty::m_Attribute2 | PI::_UNITS of a FLOAT that is a capacity, otherwise 1 |
/// | COperation::m_Header1 | operation identifier |
/// | COperation::m_Header2 | help topic, 1 for none |
/// | COperation::m_Properties | parameters: offered with defaults, requested with the user's values |
/// | CTask::m_RelatedIDs1 | m_ObjectID of the object that the operation is carried out on; by the host |
/// | CTask::m_TaskValue1 | operation identifier; by the host |
/// | CTask::m_TaskText1 | what is done, such as "check of md0"; the operation's name until the plug-in says it |
/// | CTask::m_TaskFlag | whether the progress is known |
/// | CTask::m_TaskValue2 | progress in percent, 0 to 100 |
/// | CTask::m_TaskValue4 | time remaining in milliseconds, all ones while it is not known |
/// | CTask::m_TaskText2 | result, one line, when it has ended |
/// | CTask::m_TaskStatus | OK while it runs, PENDING while it waits; in the end COMPLETE, ABORTED or FAILED |
/// | CEvent::m_Handle | m_ObjectID of the object that the event is about |
// clang-format on
#pragma once

#include <pi/pi.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

/// Increased with every change with which older plug-ins no longer work.
constexpr int PLUGIN_INTERFACE_VERSION = 1;

/// Object types of this service besides the adapter types of the library.
constexpr auto LOGICAL_DRIVE = static_cast<PI::_OBJECT_TYPE>(19901);
constexpr auto PHYSICAL_DRIVE = static_cast<PI::_OBJECT_TYPE>(19902);

/// Receives the current state of a task; false requests an early end.
using TaskReport = std::function<bool(const PI::CTask&)>;

// The host calls from one thread, in its own process or in one for this plug-in. What is returned must not
// point into the plug-in: the host keeps it after unloading. No exception may leave these functions. Adapters
// are registered (CGlobalAdapterID) within the calls, so that the host can number them across processes.
extern "C" {

/// How the plug-in was built; called first, and the other functions only if it was built like the host's
/// library. Defined here, so that a plug-in needs no code for it. A plug-in without it, built with an older
/// header, is accepted without a check.
PI_API __attribute__((used)) inline const PI::_BUILD_FIGURE* PluginBuild(std::size_t* count) {
    *count = std::size(PI::BUILD_FIGURES);
    return PI::BUILD_FIGURES;
}

/// PLUGIN_INTERFACE_VERSION with which the plug-in was compiled; called before the following functions.
PI_API int PluginInterfaceVersion();

/// Name of the plug-in, by which settings are addressed.
PI_API const char* PluginName();

/// Changes a setting; may be called before everything but the version and the name.
/// @return ErrorCode::INVALID_PARAMETER if there is no such setting, another error code if the value cannot
///         be used
PI_API int PluginConfigure(const char* key, const char* value);

/// Scans the hardware again and reports all objects, an adapter before its parts.
///
/// @param errors out: one line for each thing that could not be read; everything else is still reported
/// @return ErrorCode::SUCCESS, or an error code when there are errors
PI_API int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>& errors);

/// Reports the events that calls of PluginGetObjects have found since the last call, each once.
PI_API int PluginGetEvents(std::vector<PI::CEvent>& events, std::vector<std::string>& errors);

/// Optional: carries out an operation and returns when it has ended. Without this function the host ignores
/// the operations that the plug-in's objects offer.
///
/// The host calls it only if changes are allowed.
/// @param objectID  of an object of the latest PluginGetObjects
/// @param operation one that the object offered, with its parameters filled in
/// @param report    called from the calling thread whenever the task has changed, and at least about once a
///                  second; false requests an early end. The plug-in then undoes what can be undone, such as
///                  a check that has begun, and sets the status ABORTED
/// @param task      what is shown to others: progress, time remaining, result (see the table). The host has
///                  filled in its fields, and changes a status that the plug-in leaves to COMPLETE or FAILED
/// @param errors    out: a line for each reason why it failed
/// @return ErrorCode::SUCCESS, also when it was ended early; or an error code
PI_API int PluginExecute(std::uint64_t objectID, const PI::COperation& operation, const TaskReport& report,
                         PI::CTask& task, std::vector<std::string>& errors);
}

// SPDX-License-Identifier: Apache-2.0
// clang-format off
/// @file
/// What a plug-in exports and how the host of this example reads it.
///
/// The library leaves several fields of its objects to the service and its plug-ins. This service uses them
/// so:
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
/// | COperation::m_Properties | parameters: offered with their defaults, asked for with what the user wants |
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

/// Raised with every change that keeps older plug-ins from working.
constexpr int PLUGIN_INTERFACE_VERSION = 1;

/// Object types of this service beside the adapter types of the library.
constexpr auto LOGICAL_DRIVE = static_cast<PI::_OBJECT_TYPE>(19901);
constexpr auto PHYSICAL_DRIVE = static_cast<PI::_OBJECT_TYPE>(19902);

/// Takes how a task is now; false asks to end it early.
using TaskReport = std::function<bool(const PI::CTask&)>;

// The host calls from one thread, in its own process or in one for this plug-in. What is returned must not
// point into the plug-in: the host keeps it after unloading. No exception may leave these functions. Adapters
// are registered (CGlobalAdapterID) within the calls, so that the host can number them across processes.
extern "C" {

/// How the plug-in was built; called first, and what follows only when it was built as the host's library
/// was. Defined here, so that a plug-in needs no code for it. A plug-in without it, made with an older
/// header, is accepted unchecked.
PI_API __attribute__((used)) inline const PI::_BUILD_FIGURE* PluginBuild(std::size_t* count) {
    *count = std::size(PI::BUILD_FIGURES);
    return PI::BUILD_FIGURES;
}

/// PLUGIN_INTERFACE_VERSION as the plug-in was compiled with; called before what follows.
PI_API int PluginInterfaceVersion();

/// Name of the plug-in, by which settings are addressed.
PI_API const char* PluginName();

/// Changes a setting; may be called before everything but the version and the name.
/// @return ErrorCode::INVALID_PARAMETER when there is no such setting, another error code when it cannot be
///         used
PI_API int PluginConfigure(const char* key, const char* value);

/// Looks at the hardware anew and reports all objects, an adapter before what is part of it.
///
/// @param errors takes one line for each thing that could not be read; what could be is reported all the same
/// @return ErrorCode::SUCCESS, or an error code when there are errors
PI_API int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>& errors);

/// Reports what the calls of PluginGetObjects have found changed since the last call, each event once.
PI_API int PluginGetEvents(std::vector<PI::CEvent>& events, std::vector<std::string>& errors);

/// Optional: carries out an operation and returns when it has ended. Without this function the host drops
/// what the plug-in's objects offer.
///
/// The host calls it only where changes are allowed.
/// @param objectID  of an object of the latest PluginGetObjects
/// @param operation one that the object offered, with its parameters filled in
/// @param report    called from the calling thread whenever the task has changed, and every second or so
///                  while it has not; false asks to end early. The plug-in then takes back what can be taken
///                  back, such as a check that has begun, and sets the status ABORTED
/// @param task      what others watch: progress, time remaining, result (see the table). The host has filled
///                  in its fields, and turns a status that the plug-in leaves into COMPLETE or FAILED
/// @param errors    takes a line for each reason why it failed
/// @return ErrorCode::SUCCESS, also when it was ended early; or an error code
PI_API int PluginExecute(std::uint64_t objectID, const PI::COperation& operation, const TaskReport& report,
                         PI::CTask& task, std::vector<std::string>& errors);
}

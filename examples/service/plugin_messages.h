// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the host and the process of a plug-in say to each other: records of the model as JSON, one a line.
///
/// A request is a message, and so is its outcome; records that were asked for come before the outcome. Each
/// message carries the lists of CGlobalAdapterID, so that adapters have the numbers that they would have in
/// one process, and keep them when the process of a plug-in is started again. For that the host has one
/// request under way at a time.
#pragma once

#include <pi/adapters.h>
#include <pi/exchange/model_json.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace service {

/// Where the process of a plug-in finds its end of the socket.
constexpr int PLUGIN_SOCKET = 3;

/// Exit status of a process that has used up its memory (judgement: a number that programs do not use).
constexpr int OUT_OF_MEMORY = 112;

/// Numbers of requests.
namespace Ask {
constexpr int LOAD = 1;       ///< brings the name, or why it cannot be loaded
constexpr int CONFIGURE = 2;  ///< with key and value
constexpr int OBJECTS = 3;    ///< brings objects, and errors
constexpr int EVENTS = 4;     ///< brings events, and errors
constexpr int EXECUTE = 5;    ///< with an identifier, operation and task; brings the task, and errors
}  // namespace Ask

/// An empty line within the outcome of EXECUTE asks whether to go on with the task as it was sent last. This
/// line is the answer yes, any other is no.
constexpr const char* GO_ON = "go on";

struct Message {
    int m_Number = 0;  ///< a request, or the error code of an outcome
    std::vector<std::string> m_Texts;
};

/// A message as a line, and the adapters of this process.
std::string WriteMessage(const Message& message);

/// Whether a line is a message, and not a record that comes before one.
bool IsMessage(const std::string& line);

/// Reads a message, and registers adapters that this process does not have yet.
/// @throws std::runtime_error when it is none
Message ReadMessage(const std::string& line);

/// @throws std::runtime_error when the line is no such record
template <class Record>
void ReadRecord(const std::string& line, Record& record) {
    std::string reason;
    if (!PI::FromJson(line, record, reason)) {
        throw std::runtime_error("what cannot be read: " + reason);
    }
}

}  // namespace service

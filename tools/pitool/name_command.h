// SPDX-License-Identifier: Apache-2.0
/// @file
/// The command "name".
#pragma once

#include "exit_status.h"

#include <string>
#include <vector>

namespace pitool {

struct NameOptions {
    std::vector<std::string> m_Queries;  ///< numbers and words; empty: a vocabulary is listed
    std::string m_List;                  ///< the vocabulary to list
    bool m_Json = false;
};

/// Names numbers and finds names on standard output.
ExitStatus RunName(const NameOptions& options);

}  // namespace pitool

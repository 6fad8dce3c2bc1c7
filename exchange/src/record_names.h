// SPDX-License-Identifier: Apache-2.0
// Names beside the numbers of records; empty for a number that has none.
#pragma once

#include <cstdint>

namespace PI {

const char* PropertyIDName(std::int64_t number);
const char* PropertyValueName(std::int64_t number);
const char* OperationIDName(std::int64_t number);
const char* EventIDName(std::int64_t number);
const char* SeverityName(std::int64_t number);
const char* PropertyTypeName(std::int64_t number);
const char* ObjectTypeName(std::int64_t number);
const char* UnitsName(std::int64_t number);
const char* DriveStateName(std::int64_t number);
const char* HealthFigureName(std::int64_t number);
const char* FigureStateName(std::int64_t number);
const char* FigureUnitName(std::int64_t number);
const char* FigureDirectionName(std::int64_t number);
const char* FigureSourceName(std::int64_t number);

}  // namespace PI

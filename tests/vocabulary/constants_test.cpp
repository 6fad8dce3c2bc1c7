// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/vocabulary.h>

#include <cstdint>
#include <type_traits>

// Every constant against its number.
#include "constants.inc"

namespace {

template <class Enumeration>
constexpr bool IsPlainInt32 =
    std::is_enum_v<Enumeration>&& std::is_same_v<std::underlying_type_t<Enumeration>, std::int32_t>&&
        std::is_convertible_v<Enumeration, int>;

static_assert(IsPlainInt32<PI::_ERROR_CODE>);
static_assert(IsPlainInt32<PI::_PROPERTY_ID>);
static_assert(IsPlainInt32<PI::_PROPERTY_VALUE>);
static_assert(IsPlainInt32<PI::_OPERATION_ID>);
static_assert(IsPlainInt32<PI::_EVENT_ID>);
static_assert(IsPlainInt32<PI::_SEVERITY>);
static_assert(IsPlainInt32<PI::_UNITS>);
static_assert(IsPlainInt32<PI::_OBJECT_TYPE>);
static_assert(IsPlainInt32<PI::_PROPERTY_TYPE>);

// A type is the same by its name in PI and by that of its constants' namespace.
static_assert(std::is_same_v<PI::_ERROR_CODE, decltype(PI::ErrorCode::SUCCESS)>);
static_assert(std::is_same_v<PI::_PROPERTY_ID, decltype(PI::PropertyID::MAJOR_VERSION)>);
static_assert(std::is_same_v<PI::_PROPERTY_VALUE, decltype(PI::PropertyValue::ENABLED)>);
static_assert(std::is_same_v<PI::_OPERATION_ID, decltype(PI::OperationID::CREATE_LOGICAL_DRIVE)>);
static_assert(std::is_same_v<PI::_EVENT_ID, decltype(PI::EventID::UNKNOWN)>);
static_assert(std::is_same_v<PI::_SEVERITY, decltype(PI::Severity::INFORMATION)>);
static_assert(std::is_same_v<PI::_UNITS, decltype(PI::Units::BYTES)>);
static_assert(std::is_same_v<PI::_OBJECT_TYPE, decltype(PI::ObjectType::TASK)>);
static_assert(std::is_same_v<PI::_PROPERTY_TYPE, decltype(PI::PropertyType::CHOICE)>);
static_assert(std::is_same_v<PI::_ERROR_CODE, PI::ErrorCode::_ERROR_CODE>);
static_assert(std::is_same_v<PI::_PROPERTY_TYPE, PI::PropertyType::_PROPERTY_TYPE>);

// Equal names of two vocabularies are different constants, and none of them reaches PI itself: these here
// would be ambiguous.
namespace Own {
constexpr int SUCCESS = -1;
constexpr int UNDEFINED = -2;
constexpr int RAID_LEVEL = -3;
constexpr int UNKNOWN = -4;
namespace User {
using namespace PI;
using namespace Own;
static_assert(SUCCESS == -1 && UNDEFINED == -2 && RAID_LEVEL == -3 && UNKNOWN == -4);
}  // namespace User
}  // namespace Own
static_assert(static_cast<int>(PI::PropertyValue::UNKNOWN) != static_cast<int>(PI::EventID::UNKNOWN));

// Aliases and second constants, which have no row of their own in the lists of names.
static_assert(PI::PropertyID::FRAME_END == 1 && PI::PropertyID::UNDEFINED == 1);
static_assert(PI::PropertyID::OBJECT_NAME == 29900 && PI::PropertyID::RUI_PROPERTIES == 29900);
static_assert(PI::PropertyID::RAID_LEVEL == 29904 && PI::PropertyID::RAID_LEVEL_2 == 30045);
static_assert(PI::PropertyID::CACHE_SETTINGS == 29905 && PI::PropertyID::CACHE_SETTINGS_2 == 30334);
static_assert(PI::PropertyID::TYPE == 30056 && PI::PropertyID::TYPE_2 == 35044);
static_assert(PI::PropertyID::PRODUCT == 30063 && PI::PropertyID::PRODUCT_2 == 35031);
static_assert(PI::PropertyID::SLOT == 30224 && PI::PropertyID::SLOT_2 == 35040);
static_assert(PI::PropertyID::STARTTIME == 30295 && PI::PropertyID::STARTTIME_2 == 35042);
static_assert(PI::PropertyID::REMAINING_RESERVE_SPACE == 30486 &&
              PI::PropertyID::REMAINING_RESERVE_SPACE_2 == 35034);
static_assert(PI::PropertyID::UNSPECIFIED == 2147483647);
static_assert(PI::PropertyValue::EMPTY == 0);
static_assert(PI::PropertyValue::_512B == 40046 && PI::PropertyValue::_16M == 40061);
static_assert(PI::PropertyValue::CONTROLLER_BASED_ENCRYPTION == 40674 &&
              PI::PropertyValue::CONTROLLER_BASED_ENCRYPTION_2 == 40675);
static_assert(PI::OperationID::ADD_SERVER == 50108 && PI::OperationID::ADD_SERVER_2 == 50500);

// The short enumerations.
static_assert(PI::Severity::DEBUG == 1 && PI::Severity::INFORMATION == 2 && PI::Severity::WARNING == 3 &&
              PI::Severity::ERROR == 4);
static_assert(PI::Units::BYTES == 21025 && PI::Units::KILOBYTES == 21003 && PI::Units::MEGABYTES == 21002 &&
              PI::Units::GIGABYTES == 21022 && PI::Units::TERABYTES == 21026 &&
              PI::Units::PETABYTES == 21027 && PI::Units::UNSPECIFIED == 21006);
static_assert(PI::ObjectType::UNDEFINED == 1 && PI::ObjectType::TASK == 19005);
static_assert(PI::PropertyType::NONE == 0 && PI::PropertyType::UNDEFINED == 1 &&
              PI::PropertyType::STRING == 2 && PI::PropertyType::CHOICE == 3 && PI::PropertyType::BOOL == 4 &&
              PI::PropertyType::LONG == 5 && PI::PropertyType::SIGNED_LONG == 6 &&
              PI::PropertyType::RANGE == 7 && PI::PropertyType::MULTI_VALUE == 8 &&
              PI::PropertyType::FLOAT == 9 && PI::PropertyType::MULTI_LONG == 10 &&
              PI::PropertyType::XML == 11 && PI::PropertyType::MULTI_STRING == 12);

template <class Enumeration>
int NumberOf(Enumeration constant) {
    return constant;
}

TEST(Constants, ConvertToTheirNumbersAndSoToNames) {
    EXPECT_EQ(NumberOf(PI::ErrorCode::GENERAL), 20000);
    EXPECT_EQ(PI::ErrorCodeToString(PI::ErrorCode::GENERAL), "GENERAL");
    EXPECT_EQ(PI::PropertyIDToString(PI::PropertyID::RAID_LEVEL_2), "RAID_LEVEL");
    EXPECT_EQ(PI::PropertyIDToString(PI::PropertyID::FRAME_END), "UNDEFINED");
    EXPECT_EQ(PI::PropertyIDToString(PI::PropertyID::OBJECT_NAME), "RUI_PROPERTIES");
    EXPECT_EQ(PI::PropertyValueToString(PI::PropertyValue::_512B), "512B");
    EXPECT_EQ(PI::OperationIDToString(PI::OperationID::ADD_SERVER_2), "ADD_SERVER");
    EXPECT_EQ(PI::EventIDToString(PI::EventID::UNKNOWN), "UNKNOWN");
}

}  // namespace

// SPDX-License-Identifier: Apache-2.0
// Which arguments the setters take.

#include <gtest/gtest.h>
#include <pi/property.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace PI::Test {
namespace {

template <class Argument, class = void>
struct IsTaken : std::false_type {};
template <class Argument>
struct IsTaken<Argument, std::void_t<decltype(std::declval<CProperty&>().SetValue(std::declval<Argument>()))>>
    : std::true_type {};

struct Text : std::string {
    using std::string::string;
};

struct Number {
    int m_Member;
};

static_assert(IsTaken<const char*>::value && IsTaken<char*>::value && IsTaken<char (&)[5]>::value);
static_assert(IsTaken<const char (&)[5]>::value && IsTaken<char* const&>::value);
static_assert(IsTaken<std::string>::value && IsTaken<std::string&>::value && IsTaken<Text>::value);
static_assert(IsTaken<bool>::value && IsTaken<unsigned long>::value && IsTaken<long>::value);
static_assert(IsTaken<float>::value && IsTaken<std::true_type>::value);
static_assert(IsTaken<std::vector<unsigned long>&>::value && IsTaken<VELK::XML::xml_document&>::value);

TEST(PropertySetterArguments, NullIsNoText) {
    EXPECT_FALSE(IsTaken<std::nullptr_t>::value);
}

TEST(PropertySetterArguments, PointersOtherThanThoseToCharactersAreNoBool) {
    EXPECT_FALSE(IsTaken<int*>::value);
    EXPECT_FALSE(IsTaken<const int*>::value);
    EXPECT_FALSE(IsTaken<void*>::value);
    EXPECT_FALSE(IsTaken<const void*>::value);
    EXPECT_FALSE(IsTaken<unsigned char*>::value);
    EXPECT_FALSE(IsTaken<const signed char*>::value);
    EXPECT_FALSE(IsTaken<volatile char*>::value);
    EXPECT_FALSE(IsTaken<const wchar_t(&)[5]>::value);
    EXPECT_FALSE(IsTaken<std::string*>::value);
    EXPECT_FALSE(IsTaken<const CProperty*>::value);
    EXPECT_FALSE(IsTaken<char**>::value);
    EXPECT_FALSE(IsTaken<int (*)()>::value);
    EXPECT_FALSE(IsTaken<int (&)()>::value);
    EXPECT_FALSE(IsTaken<int Number::*>::value);
    EXPECT_FALSE(IsTaken<int (Number::*)() const>::value);
}

TEST(PropertySetterArguments, CharactersAreATextHoweverTheyArePassed) {
    char characters[] = " text ";
    char* pointer = characters;
    const char* constant = characters;
    for (const auto set : {+[](CProperty&p, char*text, const char*) { p.SetValue(text); },
                           +[](CProperty&p, char*, const char*text) { p.SetValue(text); }}) {
        CProperty property;
        set(property, pointer, constant);
        EXPECT_EQ(property.m_Type, PropertyType::STRING);
        EXPECT_EQ(property.m_Data.m_String.m_Value, "text");
    }
    CProperty property;
    property.SetValue(characters);
    EXPECT_EQ(property.m_Data.m_String.m_Value, "text");
}

}  // namespace
}  // namespace PI::Test

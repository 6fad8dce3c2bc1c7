// SPDX-License-Identifier: Apache-2.0
// Checks of the records' form: order, width and comparison of their fields.
#pragma once

#include <cxxabi.h>
#include <dlfcn.h>
#include <elf.h>
#include <gtest/gtest.h>
#include <link.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

namespace PI::Test {

/// Follows the fields of a record in the order named: each must stand right behind the one before, as far as
/// its alignment lets it, and behind the last there must be nothing but padding.
template <class Record>
class FieldChain {
public:
    /// @param begin where the first field may stand
    FieldChain(const Record& record, std::size_t begin) : m_Record(record), m_End(begin) {}

    /// The width is part of the call: a member of another type does not compile.
    template <class Type>
    FieldChain& Then(std::common_type_t<Type> Record::*member) {
        const auto* base = reinterpret_cast<const char*>(&m_Record);
        const auto* field = reinterpret_cast<const char*>(&(m_Record.*member));
        EXPECT_EQ(static_cast<std::size_t>(field - base), RoundUp(m_End, alignof(Type)))
            << "field " << m_Count;
        m_End = static_cast<std::size_t>(field - base) + sizeof(Type);
        ++m_Count;
        return *this;
    }

    void End() const { EXPECT_EQ(sizeof(Record), RoundUp(m_End, alignof(Record))); }

private:
    static std::size_t RoundUp(std::size_t value, std::size_t unit) {
        return (value + unit - 1) / unit * unit;
    }

    const Record& m_Record;
    std::size_t m_End;
    std::size_t m_Count = 0;
};

/// The fields behind the pointer to the virtual functions.
template <class Record>
FieldChain<Record> FieldsOf(const Record& record) {
    return FieldChain<Record>(record, sizeof(void*));
}

/// Whether a class has no base class at all, by its type information.
template <class Record>
bool HasNoBase() {
    return typeid(typeid(Record)) == typeid(abi::__class_type_info);
}

/// The number of virtual functions of a class, by its exported table; 0 when there is none.
template <class Record>
__attribute__((no_sanitize("address"))) std::size_t VirtualFunctionCount() {
    const std::string name = std::string("_ZTV") + typeid(Record).name();
    void* table = dlsym(RTLD_DEFAULT, name.c_str());
    Dl_info info = {};
    void* symbol = nullptr;
    if (table == nullptr || dladdr1(table, &info, &symbol, RTLD_DL_SYMENT) == 0 || symbol == nullptr) {
        return 0;
    }
    // Before the functions stand the offset to the top and the type information; behind them AddressSanitizer
    // leaves a zone of zeros, forbidden to others, that counts as part of the table.
    void* const* entry = static_cast<void**>(table) + 2;
    void* const* end =
        static_cast<void**>(table) + static_cast<const ElfW(Sym)*>(symbol)->st_size / sizeof(void*);
    std::size_t count = 0;
    for (; entry < end && *entry != nullptr; ++entry) {
        ++count;
    }
    return count;
}

/// A destructor takes two entries: with and without freeing the memory.
constexpr std::size_t ONLY_A_DESTRUCTOR = 2;

/// A change of one field.
template <class Record>
struct Change {
    const char* m_Field;
    void (*m_Apply)(Record&);
};

/// Each change by itself must make a copy different, whichever side it stands on.
template <class Record>
void ExpectCompared(const Record& record, const std::vector<Change<Record>>& changes) {
    for (const Change<Record>& change : changes) {
        Record changed(record);
        EXPECT_TRUE(record == changed) << change.m_Field;
        change.m_Apply(changed);
        EXPECT_FALSE(record == changed) << change.m_Field;
        EXPECT_FALSE(changed == record) << change.m_Field;
    }
}

/// No change may make a copy different.
template <class Record>
void ExpectNotCompared(const Record& record, const std::vector<Change<Record>>& changes) {
    for (const Change<Record>& change : changes) {
        Record changed(record);
        change.m_Apply(changed);
        EXPECT_TRUE(record == changed) << change.m_Field;
        EXPECT_TRUE(changed == record) << change.m_Field;
    }
}

}  // namespace PI::Test

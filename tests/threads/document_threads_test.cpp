// SPDX-License-Identifier: Apache-2.0
// Threads that read configuration documents, their own and a shared one, and copy documents of properties.

#include <gtest/gtest.h>
#include <pi/layout.h>

#include <string>

#include "threads/concurrently.h"

using namespace PI;
using namespace PI::Test;

namespace {

// Numbers behind a blank are read by a stream.
std::string ArrayText(int size) {
    return "<ArrayConfiguration Size=' " + std::to_string(size) +
           "' Units='21025'><Containers><Container><Drive ObjectID='1' StartAddress=' 2'/>"
           "<Drive ObjectID='3'/></Container></Containers>"
           "<LogicalDrives><LogicalDrive ObjectID='4'/></LogicalDrives></ArrayConfiguration>";
}

bool IsArray(const CArray& array, std::uint64_t size) {
    return array.m_Size == size && array.m_Units == Units::BYTES && array.m_Containers.size() == 1 &&
           array.m_Containers[0].m_Drives.size() == 2 && array.m_Containers[0].m_Drives[0].m_ObjectID == 1 &&
           array.m_Containers[0].m_Drives[0].m_StartAddress == 2 && array.m_LogicalDrives.size() == 1;
}

}  // namespace

TEST(DocumentThreads, EachReadsItsOwnDocument) {
    EXPECT_EQ(WrongResultsOf([](int thread) {
                  int wrong = 0;
                  for (int i = 0; i < 100; ++i) {
                      const int size = 1000 * thread + i;
                      VELK::XML::xml_document document;
                      document.load_string(ArrayText(size).c_str());
                      wrong += !IsArray(CArray(document), static_cast<std::uint64_t>(size));
                  }
                  return wrong;
              }),
              0);
}

// The document is only read.
TEST(DocumentThreads, AllReadOneDocument) {
    VELK::XML::xml_document document;
    document.load_string(ArrayText(5).c_str());
    EXPECT_EQ(WrongResultsOf([&](int) {
                  int wrong = 0;
                  for (int i = 0; i < 100; ++i) {
                      wrong += !IsArray(CArray(document), 5);
                      wrong += CLogicalDrive(document).m_Size != 0;
                  }
                  return wrong;
              }),
              0);
}

TEST(DocumentThreads, AllCopyAndCompareOneProperty) {
    CProperty property;
    VELK::XML::xml_document document;
    document.load_string(ArrayText(5).c_str());
    property.SetValue(document);
    EXPECT_EQ(WrongResultsOf([&](int) {
                  int wrong = 0;
                  for (int i = 0; i < 100; ++i) {
                      wrong += !(CProperty(property) == property);
                  }
                  return wrong;
              }),
              0);
}

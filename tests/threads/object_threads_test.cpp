// SPDX-License-Identifier: Apache-2.0
// Threads that make and copy objects, and number adapters.

#include <gtest/gtest.h>
#include <pi/adapters.h>
#include <pi/object.h>
#include <pi/task.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "model/property_samples.h"
#include "threads/concurrently.h"

using namespace PI;
using namespace PI::Test;

TEST(ObjectThreads, NewObjectsHaveIdentifiersOfTheirOwn) {
    constexpr int OBJECTS = 400'000;
    const std::uint64_t first = CObject::m_UniqueIDCounter;
    std::array<std::vector<std::uint64_t>, THREADS> identifiers;
    EXPECT_EQ(WrongResultsOf([&](int thread) {
                  std::vector<std::uint64_t>& own = identifiers[static_cast<std::size_t>(thread)];
                  while (own.size() < OBJECTS / THREADS) {
                      switch (own.size() % 3) {
                          case 0: own.push_back(CObject().m_UniqueID); break;
                          case 1: own.push_back(CObject(1, ObjectType::ADAPTER_1).m_UniqueID); break;
                          default: own.push_back(CTask().m_UniqueID); break;
                      }
                  }
                  return static_cast<int>(!std::is_sorted(own.begin(), own.end()));
              }),
              0);

    std::vector<std::uint64_t> all;
    for (const std::vector<std::uint64_t>& own : identifiers) {
        all.insert(all.end(), own.begin(), own.end());
    }
    std::sort(all.begin(), all.end());
    ASSERT_EQ(all.size(), OBJECTS);
    EXPECT_EQ(std::adjacent_find(all.begin(), all.end()), all.end());
    EXPECT_EQ(all.front(), first);
    EXPECT_EQ(all.back(), first + OBJECTS - 1);
    EXPECT_EQ(CObject::m_UniqueIDCounter, first + OBJECTS);
}

TEST(ObjectThreads, OneObjectIsCopiedByAll) {
    COperation operation;
    operation.m_Properties = {FilledProperty(PropertyType::MULTI_STRING)};
    operation.m_EventList.resize(2);
    operation.m_ObjectList.resize(2);
    CObject source(7, ObjectType::ADAPTER_2);
    source.m_Properties = {FilledProperty(PropertyType::STRING), FilledProperty(PropertyType::XML)};
    source.m_Operations = {operation, operation};
    CTask task;
    task.m_TaskText1 = "another text that does not fit into the string itself";

    EXPECT_EQ(WrongResultsOf([&](int) {
                  int wrong = 0;
                  for (int i = 0; i < 50; ++i) {
                      const CObject copy = source;
                      wrong += !(copy == source);
                      CObject assigned;
                      assigned = copy;
                      wrong += assigned.m_UniqueID != source.m_UniqueID || !(assigned == source);
                      wrong += !(CTask(task) == task);
                  }
                  return wrong;
              }),
              0);
}

TEST(AdapterThreads, EveryAdapterOfAHostIsRegisteredOnce) {
    constexpr int ADAPTERS = 100;
    const std::string own = "host of thread ";
    EXPECT_EQ(WrongResultsOf([&](int thread) {
                  int wrong = 0;
                  for (int i = 0; i < ADAPTERS; ++i) {
                      CGlobalAdapterID adapter;
                      adapter.m_HostName = own + std::to_string(thread);
                      adapter.SetAdapterUniqueID(
                          CGlobalAdapterID::GenerateUniqueAdapterNumber(i, 0, 0, 0, "shared"));
                      wrong += adapter.GetGlobalAdapterNumber() != static_cast<unsigned>(i);
                  }
                  return wrong;
              }),
              0);
    EXPECT_EQ(CGlobalAdapterID::AllHostsAdaptersUniqueIDs.at("shared").size(), ADAPTERS);
    EXPECT_EQ(CGlobalAdapterID::AllHostsAdaptersUniqueIDs.size(), THREADS + 1);
}

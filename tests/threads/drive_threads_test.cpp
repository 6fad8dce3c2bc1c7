// SPDX-License-Identifier: Apache-2.0
// Threads that identify drives, evaluate SMART pages, look endurance up and translate sense data.

#include <gtest/gtest.h>
#include <pi/drives.h>
#include <pi/plugin_helper.h>
#include <pi/ssd_endurance.h>

#include <string>

#include "threads/concurrently.h"

using namespace PI;
using namespace PI::Test;

namespace {

constexpr char INTEL_MODEL[] = "SSDSC2BB480G4";

/// A page of an Intel drive with figures of the thread.
_IDE_SMART_DATA PageOf(int thread) {
    _IDE_SMART_DATA page = {};
    page.m_Attributes[0].m_ID = 9;
    page.m_Attributes[0].m_Raw[0] = static_cast<std::uint8_t>(thread + 1);
    page.m_Attributes[1].m_ID = 225;
    page.m_Attributes[1].m_Raw[0] = static_cast<std::uint8_t>(thread);
    page.m_Attributes[2].m_ID = 233;
    page.m_Attributes[2].m_Current = static_cast<std::uint8_t>(100 - thread);
    return page;
}

}  // namespace

TEST(DriveThreads, PagesOfDifferentDrivesAreEvaluatedAtOnce) {
    ASSERT_NE(CPluginHelper::findLifeTimeProp(INTEL_MODEL), nullptr);
    EXPECT_EQ(WrongResultsOf([](int thread) {
                  int wrong = 0;
                  for (int i = 0; i < 100; ++i) {
                      CSmartValues values("", INTEL_MODEL);
                      _IDE_SMART_DATA page = PageOf(thread);
                      wrong += !values.Evaluate(page);
                      wrong += values.m_PowerOnHours != static_cast<std::uint64_t>(thread + 1);
                      wrong += values.m_BytesWritten != static_cast<std::uint64_t>(thread) << 25;
                      wrong += values.m_PercentUsed != thread;
                      unsigned long hours = 0;
                      wrong += !CPluginHelper::ComputeRemainingLifeTime(1000, 0, 50, 0, hours);
                      wrong += hours != 43829 / 2 - 1000;
                  }
                  return wrong;
              }),
              0);
}

TEST(DriveThreads, EveryRowOfTheListIsFound) {
    EXPECT_EQ(WrongResultsOf([](int) {
                  int wrong = 0;
                  for (const _SSD_ENDURANCE& row : SATASSDEndurance) {
                      const _SSD_ENDURANCE* found = CPluginHelper::findLifeTimeProp(row.m_Model);
                      // An earlier row may match as well.
                      wrong += found == nullptr || found > &row;
                  }
                  wrong += CPluginHelper::findLifeTimeProp("no such model") != nullptr;
                  return wrong;
              }),
              0);
}

TEST(DriveThreads, DrivesAreIdentifiedAndSenseDataTranslated) {
    EXPECT_EQ(WrongResultsOf([](int) {
                  int wrong = 0;
                  for (int i = 0; i < 100; ++i) {
                      std::string vendor;
                      std::string model;
                      CPluginHelper::SplitSATAModelName("WDC WD1600ADFS-75SLR2", vendor, model);
                      wrong += vendor != "WDC" || model != "WD1600ADFS-75SLR2";
                      unsigned long rpm = 0;
                      CPluginHelper::GetSATARPM(vendor, model, rpm);
                      wrong += rpm != 10000;
                      std::string text;
                      CPluginHelper::TranslateSenseASC(0x04, 0x01, text);
                      wrong += text != "logical unit is in process of becoming ready";
                      _SEVERITY severity = Severity::INFORMATION;
                      CPluginHelper::TranslateSenseKey(0x03, text, severity);
                      wrong += text != "medium error" || severity != Severity::WARNING;
                  }
                  return wrong;
              }),
              0);
}

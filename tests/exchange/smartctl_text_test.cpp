// SPDX-License-Identifier: Apache-2.0
// Reports as text: the same figures as from JSON.

#include <pi/vocabulary.h>

#include <utility>

#include "exchange/read_report.h"

using namespace PI;
using namespace PI::Test;

namespace {

const std::string HEADER =
    "smartctl 7.4 2023-08-01 r5530 [x86_64-linux-6.1.0] (local build)\n\n"
    "=== START OF INFORMATION SECTION ===\n";

const std::string ATA_IDENTITY =
    HEADER +
    "Device Model:     ST1000NM0008-2F2100\nSerial Number:    ZA12345678\nFirmware Version: SN02\n"
    "User Capacity:    1,000,204,886,016 bytes [1.00 TB]\nSector Sizes:     512 bytes logical, 4096 bytes "
    "physical\n"
    "Rotation Rate:    7200 rpm\nSATA Version is:  SATA 3.1, 6.0 Gb/s (current: 6.0 Gb/s)\n"
    "Local Time is:    Fri Feb 13 23:31:30 2009 UTC\n\n";

std::int64_t TimeOf(const std::string& time) {
    return ReadDrive(HEADER + "Device Model:     X\nLocal Time is:    " + time + "\n").GetTime();
}

std::string Hours(const std::string& name, const std::string& raw) {
    const std::string table =
        "ID# ATTRIBUTE_NAME          FLAGS    VALUE WORST THRESH FAIL RAW_VALUE\n"
        "  9 " +
        name + "          -O--CK   100   100   000    -    " + raw + "\n";
    return Figure(ReadDrive(ATA_IDENTITY + table), HealthFigure::POWER_ON_HOURS);
}

// Of a drive with pending sectors, a failed self-test and statistics.
const std::string HEADING =
    "ID# ATTRIBUTE_NAME          FLAG     VALUE WORST THRESH TYPE      UPDATED  WHEN_FAILED RAW_VALUE\n";
const std::string WHOLE =
    ATA_IDENTITY +
    "=== START OF READ SMART DATA SECTION ===\nSMART overall-health self-assessment test result: PASSED\n\n"
    "SMART Attributes Data Structure revision number: 10\nVendor Specific SMART Attributes with "
    "Thresholds:\n" +
    HEADING +
    "  5 Reallocated_Sector_Ct   0x0033   100   100   010    Pre-fail  Always       -       0\n"
    "  9 Power_On_Hours          0x0032   074   074   000    Old_age   Always       -       23456 (12 0 0)\n"
    "194 Temperature_Celsius     0x0022   035   050   000    Old_age   Always       -       35\n"
    "197 Current_Pending_Sector  0x0012   100   100   000    Old_age   Always       -       16\n\n"
    "SMART Error Log Version: 1\nNo Errors Logged\n\nSMART Self-test log structure revision number 1\n"
    "Num  Test_Description    Status                  Remaining  LifeTime(hours)  LBA_of_first_error\n"
    "# 1  Short offline       Completed: read failure       90%     23400         -\n"
    "# 2  Extended offline    Completed: read failure       90%     23300         1234567\n\n"
    "Device Statistics (GP Log 0x04)\nPage  Offset Size        Value Flags Description\n"
    "0x01  =====  =               =  ===  == General Statistics (rev 1) ==\n"
    "0x01  0x008  4             120  ---  Lifetime Power-On Resets\n"
    "0x05  0x058  1              60  ---  Specified Maximum Operating Temperature\n\n"
    "0x06  0x018  4               7  ---  Number of Interface CRC Errors\n"
    "                                |||_ C monitored condition met\n\n";

std::string Replaced(std::string text, const std::string& part, const std::string& with) {
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += with.size()) {
        text.replace(at, part.size(), with);
    }
    return text;
}

/// As mail breaks lines: after the last blank that fits.
std::string Wrapped(const std::string& text, std::size_t width) {
    std::string wrapped;
    std::size_t begin = 0;  // of the line
    for (const char character : text) {
        wrapped += character;
        const std::size_t blank = wrapped.find_last_of(" \t");
        if (character == '\n') {
            begin = wrapped.size();
        } else if (wrapped.size() - begin > width && blank != std::string::npos && blank >= begin) {
            wrapped.insert(blank + 1, "\n");
            begin = blank + 2;
        }
    }
    return wrapped;
}

/// Identity, state, notes and figures.
std::string Everything(const CDriveReport& drive) {
    std::string all = drive.GetModel() + "|" + drive.GetSerialNumber() + "|" +
                      std::to_string(drive.GetCapacity()) + "|" +
                      DriveStateToString(drive.GetHealth().GetState());
    for (const std::string& note : drive.GetNotes()) {
        all += "\n" + note;
    }
    for (const CHealthFigure& figure : drive.GetHealth().GetFigures()) {
        all += std::string("\n") + HealthFigureToString(figure.GetFigure()) + " " +
               Figure(drive, figure.GetFigure());
    }
    return all;
}

}  // namespace

TEST(SmartctlText, BlanksOfOtherKindsAreBlanks) {
    const std::string plain = Everything(ReadDrive(WHOLE));
    EXPECT_NE(plain.find("PENDING_SECTORS 16 [3/197]"), std::string::npos) << plain;
    EXPECT_NE(plain.find("FAILED_SELF_TESTS 2 [2/6]"), std::string::npos) << plain;
    for (const char* blank : {"\xC2\xA0", "\xE3\x80\x80", "\xA0", "\xA0\xA0", "\t"}) {
        EXPECT_EQ(Everything(ReadDrive(Replaced(WHOLE, "   ", std::string(" ") + blank + " "))), plain)
            << blank;
    }
    const std::string tabs = Replaced(Replaced(WHOLE, "    ", "  "), "  ", "\t");
    EXPECT_EQ(Everything(ReadDrive(Replaced(tabs, "\n\t", "\n"))), plain);
    EXPECT_EQ(ReadDrive(HEADER + "Device Model: Caf\xC3\xA0 \xE0\xA0\n").GetModel(), "Caf\xC3\xA0 \xE0\xA0")
        << "a byte A0h within a letter is none";
}

TEST(SmartctlText, RowsWithoutTheirColumnsAreNotedAndNotUsed) {
    const auto notes = [](const std::string& heading, const std::string& row) {
        const CDriveReport drive = ReadDrive(ATA_IDENTITY + heading + row + "\n");
        EXPECT_EQ(Figure(drive, HealthFigure::REALLOCATED_SECTORS), "unknown") << row;
        return drive.GetNotes();
    };
    const auto isNoted = testing::ElementsAre("attribute 5 is passed over: its columns cannot be read");
    for (const char* row :
         {"5 A 0x0033 &nbsp; 100 010 Pre-fail Always - 0", "5 A 0x0033 100 1OO 010 Pre-fail Always - 0",
          "5 A 0x0033 100 100 256 Pre-fail Always - 0", "5 A 0x0033 100 100 -1 Pre-fail Always - 0",
          "5 A 0x0033 100 100 -- Pre-fail Always - 0", "5 A B 0x0033 100 100 010 Pre-fail Always - 0",
          "5 A - 100 100 010 Pre-fail Always - 0", "5 A 0x0033 100 100 010 Always - 0 1",
          "5 A 0x0033 100 100 010 Pre-fail - 0 1", "5 A 0x0033 100 100 010 Pre-fail Always 0 1"}) {
        EXPECT_THAT(notes(HEADING, row), isNoted) << row;
    }
    const std::string brief = "ID# ATTRIBUTE_NAME          FLAGS    VALUE WORST THRESH FAIL RAW_VALUE\n";
    for (const char* row :
         {"5 A PO--C 100 100 010 - 0", "5 A POxxCK 100 100 010 - 0", "5 A PO--CK 100 100 010 0 1"}) {
        EXPECT_THAT(notes(brief, row), isNoted) << row;
    }
    for (const char* row :
         {"5 A PO--CK 255 0xff --- - 7", "5 A PO--CK+ 000 0x0 0x0a NOW 7", "5 A 0x0033 1 1 1 Past 7"}) {
        EXPECT_EQ(Figure(ReadDrive(ATA_IDENTITY + brief + row + "\n"), HealthFigure::REALLOCATED_SECTORS),
                  "7 [3/5]")
            << row;
    }
}

TEST(SmartctlText, LineEndsOfOtherKindsAreLineEnds) {
    const std::string plain = Everything(ReadDrive(WHOLE));
    EXPECT_EQ(Everything(ReadDrive(Replaced(WHOLE, "\n", "\r"))), plain);
    EXPECT_EQ(Everything(ReadDrive(Replaced(WHOLE, "\n", "\r\r\n"))), plain);
    EXPECT_EQ(Everything(ReadDrive(Replaced(WHOLE, "\n", "\n\n"))), plain);
    EXPECT_EQ(Everything(ReadDrive("\n\n" + Replaced(WHOLE, "\n", "\r\n\r\n"))), plain);
}

TEST(SmartctlText, AnEmptyLineDoesNotEndATableOfWhichRowsFollow) {
    const std::string plain = Everything(ReadDrive(WHOLE));
    for (const char* line : {"197 ", "  5 ", "No Errors", "# 1", "# 2", "0x05", "Num"}) {
        EXPECT_EQ(
            Everything(ReadDrive(Replaced(WHOLE, std::string("\n") + line, std::string("\n\n") + line))),
            plain)
            << line;
    }
}

TEST(SmartctlText, RowsThatMailWrappedAreRead) {
    const std::string plain = Everything(ReadDrive(WHOLE));
    for (std::size_t width = 64; width < HEADING.size() - 1; ++width) {
        EXPECT_EQ(Everything(ReadDrive(Wrapped(WHOLE, width))), plain) << Wrapped(WHOLE, width);
    }
}

TEST(SmartctlText, RowsThatMailWrappedBelowAShorterHeadingAreRead) {
    const CDriveReport drive =
        ReadDrive(ATA_IDENTITY +
                  "ID# ATTRIBUTE_NAME          FLAGS    VALUE WORST THRESH FAIL RAW_VALUE\n"
                  "194 Temperature_Celsius     -O---K   ---   ---   ---    -    25\n"
                  "(Min/Max 17/39)\n"
                  "197 Current_Pending_Sector  -O--CK   100   100   000    -    16\n");
    EXPECT_EQ(Figure(drive, HealthFigure::HIGHEST_TEMPERATURE), "39 [3/194]");
    EXPECT_EQ(Figure(drive, HealthFigure::PENDING_SECTORS), "16 [3/197]");
}

TEST(SmartctlText, CountersOfErrorsThatMailWrappedAreRead) {
    const std::string rows =
        "Error counter log:\n"
        "read:   1410362924        0         0  1410362924          0        386.568           1\n"
        "write:         0        0         0         0          0       2124,590           2\n";
    for (std::size_t width = 70; width < 90; ++width) {
        const CDriveReport drive = ReadDrive(HEADER + "Product: X\n" + Wrapped(rows, width));
        EXPECT_EQ(Figure(drive, HealthFigure::MEDIA_ERRORS), "3 [6/2]") << width;
        EXPECT_EQ(Figure(drive, HealthFigure::BYTES_READ), "386568000000 [6/3]") << width;
    }
}

TEST(SmartctlText, RowsThatATerminalBrokeWithinWordsAreRead) {
    const auto read = [](std::size_t width) {
        std::string text =
            HEADING +
            "  5 Reallocated_Sector_Ct   0x0033   140   140   140    Pre-fail  Always   FAILING_NOW 1800\n"
            "  9 Power_On_Hours          0x0032   074   074   000    Old_age   Always   -           23456\n"
            "196 Reallocated_Event_Ct    0x0032   010   001   005    Old_age   Always   In_the_past 3 4\n";
        for (std::size_t at = 0, end = 0; (end = text.find('\n', at)) != std::string::npos; at = end + 2) {
            text.insert(at + width, "\n");
        }
        return Everything(ReadDrive(ATA_IDENTITY + text));
    };
    const std::string plain = read(0);
    EXPECT_NE(plain.find("REALLOCATED_SECTORS 1800 [3/5]"), std::string::npos) << plain;
    for (std::size_t width = 75; width <= 87; ++width) {
        EXPECT_EQ(read(width), plain) << width;
    }
}

TEST(SmartctlText, SectionsOfWhichNothingCanBeReadAreNoted) {
    const auto notes = [](const std::string& cut) { return ReadDrive(Replaced(WHOLE, cut, "")).GetNotes(); };
    EXPECT_TRUE(ReadDrive(WHOLE).GetNotes().empty());
    EXPECT_THAT(notes(HEADING), testing::ElementsAre("the table of attributes cannot be read"));
    EXPECT_THAT(notes("Num  Test_Description"), testing::ElementsAre("the self-test log cannot be read"));
    EXPECT_THAT(ReadDrive(Replaced(WHOLE, "\n0x", "\n ?")).GetNotes(),
                testing::ElementsAre("the device statistics cannot be read"));
    EXPECT_TRUE(
        ReadDrive(ATA_IDENTITY + "Device Statistics (GP/SMART Log 0x04) not supported\n").GetNotes().empty());
}

TEST(SmartctlText, IdentityOfAnATADriveIsRead) {
    const CDriveReport drive = ReadDrive(ATA_IDENTITY);
    EXPECT_EQ(drive.GetProtocol(), DriveProtocol::ATA);
    EXPECT_EQ(drive.GetModel(), "ST1000NM0008-2F2100");
    EXPECT_EQ(drive.GetVendor(), "SEAGATE");
    EXPECT_EQ(drive.GetSerialNumber(), "ZA12345678");
    EXPECT_EQ(drive.GetCorrectedSerialNumber(), "ZA123456");
    EXPECT_EQ(drive.GetFirmware(), "SN02");
    EXPECT_EQ(drive.GetCapacity(), 1000204886016U);
    EXPECT_EQ(drive.GetBlockSize(), 512U);
    EXPECT_EQ(drive.GetRPM(), 7200U);
    EXPECT_EQ(drive.GetMedium(), PropertyValue::HDD);
    EXPECT_EQ(drive.GetTransport(), PropertyValue::SATA);
    EXPECT_EQ(drive.GetTime(), 1234567890);
    EXPECT_EQ(drive.GetHealth().GetState(), DriveState::UNKNOWN);
}

TEST(SmartctlText, LinesMayEndInTheOtherWay) {
    std::string text = ATA_IDENTITY;
    for (std::size_t place = 0; (place = text.find('\n', place)) != std::string::npos; place += 2) {
        text.insert(place, "\r");
    }
    EXPECT_EQ(ReadDrive(text).GetModel(), "ST1000NM0008-2F2100");
    EXPECT_EQ(ReadDrive(text).GetFirmware(), "SN02");
    EXPECT_EQ(Figure(ReadDrive(text + "SMART Extended Self-test Log Version: 1 (1 sectors)\r\n"
                                      "Num  Test_Description    Status\r\n"
                                      "# 1  Short offline       Completed without error\r\n\r\n"
                                      "Current Temperature:                    39 Celsius\r\n"),
                     HealthFigure::TEMPERATURE),
              "39 [2/224]")
        << "a blank line ends the table";
}

TEST(SmartctlText, OfALineThatOccursTwiceTheLastCounts) {
    const CDriveReport drive = ReadDrive(ATA_IDENTITY + "Rotation Rate:    Solid State Device\n");
    EXPECT_EQ(drive.GetMedium(), PropertyValue::SSD);
    EXPECT_EQ(drive.GetRPM(), 0U);
    EXPECT_FALSE(drive.IsRPMReported());
}

TEST(SmartctlText, SeveralReportsAreRead) {
    const ReadResult result =
        ReadAll("---\n### sda ###\n" + ATA_IDENTITY + "### sdb ###\n" + HEADER + "Model Number: B\n");
    ASSERT_EQ(result.m_Drives.size(), 2U);
    EXPECT_EQ(result.m_Drives[1].GetModel(), "B");
    EXPECT_TRUE(result.m_Refusals.empty());
}

TEST(SmartctlText, ReportsWithoutTheirFirstLinesAreToldApart) {
    const std::string section = "=== START OF INFORMATION SECTION ===\n";
    const ReadResult result = ReadAll(section + "Device Model: A\n" + section + "Model Number: B\n");
    ASSERT_EQ(result.m_Drives.size(), 2U);
    EXPECT_EQ(result.m_Drives[0].GetModel(), "A");
    EXPECT_EQ(result.m_Drives[1].GetModel(), "B");
}

TEST(SmartctlText, IndentedReportsAreRead) {
    const CDriveReport drive = ReadDrive("  Device Model:     A\n    User Capacity:    512000000 bytes\n");
    EXPECT_EQ(drive.GetModel(), "A");
    EXPECT_EQ(drive.GetCapacity(), 512000000U);
}

TEST(SmartctlText, TheVendorsLogBehindTabsIsPassedOver) {
    const CDriveReport drive =
        ReadDrive(ATA_IDENTITY +
                  "Current Temperature:                    39 Celsius\n"
                  "\t\tSerial Number: ZZ\n\t\tSpecified Max Operating Temperature: 90\n");
    EXPECT_EQ(drive.GetSerialNumber(), "ZA12345678");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE_LIMIT), "unknown");
}

TEST(SmartctlText, SeparatorsOfAnyLanguageAreRead) {
    for (const char* capacity :
         {"1000204886016", "1,000,204,886,016", "1.000.204.886.016", "1 000 204 886 016", "1'000'204'886'016",
          "1\xC2\xA0"
          "000\xC2\xA0"
          "204\xC2\xA0"
          "886\xC2\xA0"
          "016",
          "1\xE2\x80\xAF"
          "000\xE2\x80\xAF"
          "204\xE2\x80\xAF"
          "886\xE2\x80\xAF"
          "016",
          "1\xFF"
          "000\xFF"
          "204\xFF"
          "886\xFF"
          "016"}) {
        EXPECT_EQ(ReadDrive(HEADER + "Device Model: X\nUser Capacity:    " + capacity + " bytes [1.00 TB]\n")
                      .GetCapacity(),
                  1000204886016U)
            << capacity;
    }
}

TEST(SmartctlText, TimeIsThatOfItsZone) {
    EXPECT_EQ(TimeOf("Fri Feb 13 23:31:30 2009 UTC"), 1234567890);
    EXPECT_EQ(TimeOf("Sat Feb 14 00:31:30 2009 CET"), 1234567890);
    EXPECT_EQ(TimeOf("Fri Feb 13 18:31:30 2009 EST"), 1234567890);
    EXPECT_EQ(TimeOf("Sat Feb 14 02:31:30 2009 +03"), 1234567890);
    EXPECT_EQ(TimeOf("Fri Feb 13 20:01:30 2009 -0330"), 1234567890);
    EXPECT_EQ(TimeOf("Fri Feb 13 23:31:30 2009 CST"), 0) << "stands for several offsets";
    EXPECT_EQ(TimeOf("Fri Feb 13 23:31:30 2009 12345"), 0) << "no sign";
    EXPECT_EQ(TimeOf("Mon Feb ... 2022 MSK"), 0);
    EXPECT_EQ(TimeOf("Fri ebM 13 23:31:30 2009 UTC"), 0);
}

TEST(SmartctlText, ZonesAreThoseOfOneOffset) {
    const std::pair<const char*, int> MINUTES[] = {
        {"UTC", 0},     {"GMT", 0},     {"WET", 0},     {"WEST", 60},   {"CET", 60},   {"CEST", 120},
        {"EET", 120},   {"EEST", 180},  {"MSK", 180},   {"EST", -300},  {"EDT", -240}, {"CDT", -300},
        {"MST", -420},  {"MDT", -360},  {"PST", -480},  {"PDT", -420},  {"JST", 540},  {"KST", 540},
        {"AEST", 600},  {"AEDT", 660},  {"NZST", 720},  {"NZDT", 780},  {"SAST", 120}, {"HST", -600},
        {"AKST", -540}, {"AKDT", -480}, {"+1245", 765}, {"-1000", -600}};
    for (const auto& [zone, minutes] : MINUTES) {
        EXPECT_EQ(TimeOf(std::string("Fri Feb 13 23:31:30 2009 ") + zone), 1234567890 - 60 * minutes) << zone;
    }
}

TEST(SmartctlText, RawValuesComeBackFromTheirTexts) {
    EXPECT_EQ(Hours("Power_On_Hours", "8811"), "8811 [3/9]");
    EXPECT_EQ(Hours("Power_On_Hours", "8811 (237 33 0)"), "8811 [3/9]");
    EXPECT_EQ(Hours("Power_On_Hours_and_Msec", "8811h+23m+10.123s"), "8811 [3/9]");
    EXPECT_EQ(Hours("Power_On_Minutes", "8811h+23m"), "8811 [3/9]");
    EXPECT_EQ(Hours("Power_On_Half_Minutes", "8811h+23m"), "8811 [3/9]");
    EXPECT_EQ(Hours("Power_On_Seconds", "8811h+23m+10s"), "8811 [3/9]");
    EXPECT_EQ(Hours("Power_On_Hours", "-"), "unknown");
}

TEST(SmartctlText, OnlyTemperaturesAreNegative) {
    const auto read = [](const std::string& raw) {
        return ReadDrive(ATA_IDENTITY +
                         "ID# ATTRIBUTE_NAME          FLAGS    VALUE WORST THRESH FAIL RAW_VALUE\n194 "
                         "Temperature_Celsius     -O---K   100   100   000    -    " +
                         raw + "\n");
    };
    const auto highest = [&](const std::string& raw) {
        return Figure(read(raw), HealthFigure::HIGHEST_TEMPERATURE);
    };
    EXPECT_EQ(Figure(read("-5 (Min/Max -10/40)"), HealthFigure::TEMPERATURE), "-5 [3/194]");
    EXPECT_EQ(Figure(read("-5"), HealthFigure::TEMPERATURE), "-5 [3/194]");
    EXPECT_EQ(Figure(read("-5 (3 4)"), HealthFigure::TEMPERATURE), "unknown");
    EXPECT_EQ(Hours("Power_On_Hours", "-5"), "unknown");
    EXPECT_EQ(highest("-5 (Min/Max -10/40)"), "40 [3/194]");
    EXPECT_EQ(highest("25 (Min/Max -5/39)"), "39 [3/194]");
    EXPECT_EQ(highest("25 (Min/Max -39/-5)"), "unknown") << "it is hotter now";
    EXPECT_EQ(highest("-25 (Min/Max -39/-5)"), "unknown");
}

TEST(SmartctlText, RawValuesAreMadeOfAllTheirParts) {
    // Of an amount in sectors all 48 bits count.
    const auto raw = [](const std::string& text, const std::string& name = "Total_LBAs_Written") {
        return ReadDrive(ATA_IDENTITY +
                         "ID# ATTRIBUTE_NAME          FLAGS    VALUE WORST THRESH FAIL RAW_VALUE\n241 " +
                         name + "      -O--CK   100   100   000    -    " + text + "\n")
                   .GetHealth()
                   .GetFigure(HealthFigure::BYTES_WRITTEN)
                   .GetValue() /
               512;
    };
    EXPECT_EQ(raw("1"), 1);
    EXPECT_EQ(raw("0x0102"), 0x102);
    EXPECT_EQ(raw("1 (0 0 2 3 4)"), 0x02030401);
    EXPECT_EQ(raw("16777215 (0 2 3)"), 0x0203FFFFFF);
    EXPECT_EQ(raw("65535 (2 3)"), 0x00020003FFFF);
    EXPECT_EQ(raw("5 (Average 7)"), 0x70005);
    EXPECT_EQ(raw("0 1 2 3 4 5"), 0x0102030405);
    EXPECT_EQ(raw("1 2 3"), 0x000100020003);
    EXPECT_EQ(raw("2/3"), 0x2000003);
    EXPECT_EQ(raw("2h+3m+4s"), 7384);
    EXPECT_EQ(raw("2h+3m"), 123);
    EXPECT_EQ(raw("2h+3m", "Half_Minutes_Total_LBAs_Written"), 246);
    EXPECT_EQ(raw("1h+0m+0.004s"), (std::int64_t{4} << 32) + 1);
    EXPECT_EQ(raw("1h+0m+2.004s"), (std::int64_t{2004} << 32) + 1);
    EXPECT_EQ(raw("1h+1m+2.004s"), (std::int64_t{62004} << 32) + 1);
}

TEST(SmartctlText, BothTablesOfAttributesAreRead) {
    const std::string brief =
        "ID# ATTRIBUTE_NAME          FLAGS    VALUE WORST THRESH FAIL RAW_VALUE\n"
        "  5 Reallocated_Sector_Ct   PO--CK   005   005   010    NOW  1975\n"
        "194 Temperature_Celsius     -O---K   ---   ---   ---    -    25 (Min/Max 17/39)\n"
        "                            ||||||_ K auto-keep\n";
    const std::string wide =
        "ID# ATTRIBUTE_NAME          FLAG     VALUE WORST THRESH TYPE      UPDATED  WHEN_FAILED RAW_VALUE\n"
        "  5 Reallocated_Sector_Ct   0x0033   005   005   010    Pre-fail  Always   FAILING_NOW 1975\n"
        "194 Temperature_Celsius     0x0022   ---   ---   ---    Old_age   Always       -       25 (Min/Max "
        "17/39)\n";
    for (const std::string& table : {brief, wide}) {
        const CDriveReport drive = ReadDrive(ATA_IDENTITY + table);
        EXPECT_EQ(Figure(drive, HealthFigure::REALLOCATED_SECTORS), "1975 [3/5]");
        EXPECT_EQ(Figure(drive, HealthFigure::ATTRIBUTES_BELOW_THRESHOLD), "1 [3/5]");
        EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE), "25 [3/194]");
        EXPECT_EQ(Figure(drive, HealthFigure::HIGHEST_TEMPERATURE), "39 [3/194]");
        EXPECT_EQ(ReadDrive(ATA_IDENTITY + table + "\nSMART Error Log not supported\n").GetNotes().size(), 0U)
            << "the table ends with a blank line";
    }
}

TEST(SmartctlText, FlagsOfAttributesAreReadFromLettersAndNumbers) {
    const auto state = [](const std::string& flags) {
        return ReadDrive(ATA_IDENTITY +
                         "ID# ATTRIBUTE_NAME          FLAGS    VALUE WORST THRESH FAIL RAW_VALUE\n"
                         "  8 Seek_Time_Performance   " +
                         flags + "   005   005   010    NOW  0\n")
            .GetHealth()
            .GetState();
    };
    EXPECT_EQ(state("P-----"), DriveState::REPLACE) << "of the pre-fail kind";
    EXPECT_EQ(state("POSRCK"), DriveState::REPLACE);
    EXPECT_EQ(state("-OSRCK"), DriveState::LOOK);
    EXPECT_EQ(state("0x0001"), DriveState::REPLACE);
    EXPECT_EQ(state("0x003e"), DriveState::LOOK);
}

TEST(SmartctlText, HexadecimalNumbersHaveNoSeparators) {
    EXPECT_EQ(Figure(ReadDrive(HEADER + "Model Number: A\nCritical Warning:   0x04 100\n"),
                     HealthFigure::CRITICAL_WARNING),
              "4 [4/2]");
}

TEST(SmartctlText, ATALogsAreRead) {
    const CDriveReport drive = ReadDrive(
        ATA_IDENTITY +
        "SMART overall-health self-assessment test result: FAILED!\nDrive failure expected in less than 24 "
        "hours. SAVE ALL DATA.\n\n"
        "SMART Extended Comprehensive Error Log Version: 1 (6 sectors)\n"
        "Device Error Count: 66 (device log contains only the most recent 4 errors)\n\n"
        "SMART Extended Self-test Log Version: 1 (1 sectors)\n"
        "Num  Test_Description    Status                  Remaining  LifeTime(hours)  LBA_of_first_error\n"
        "# 1  Short offline       Completed without error       00%     12346         -\n"
        "# 2  Extended offline    Completed: read failure       90%     12345         1234\n\n"
        "Current Temperature:                    39 Celsius\nLifetime    Min/Max Temperature:     -5/62 "
        "Celsius\n"
        "Min/Max recommended Temperature:      0/60 Celsius\n\n"
        "Device Statistics (GP Log 0x04)\nPage  Offset Size        Value Flags Description\n"
        "0x01  =====  =               =  ===  == General Statistics (rev 1) ==\n"
        "0x01  0x018  6     45678         ---  Logical Sectors Written\n"
        "0x07  0x008  1               -  N--  Percentage Used Endurance Indicator\n\n"
        "Pending Defects log (GP Log 0x0c)\nNo Defects Logged\n\n");
    EXPECT_EQ(Figure(drive, HealthFigure::VERDICT), "1 [8/0]");
    EXPECT_EQ(Figure(drive, HealthFigure::LOGGED_ERRORS), "66 [2/3]");
    EXPECT_EQ(Figure(drive, HealthFigure::FAILED_SELF_TESTS), "1 [2/7]");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE), "39 [2/224]");
    EXPECT_EQ(Figure(drive, HealthFigure::HIGHEST_TEMPERATURE), "62 [2/224]");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE_LIMIT), "60 [10/0]");
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_WRITTEN), "23387136 [1/1]");
    EXPECT_EQ(Figure(drive, HealthFigure::WEAR), "unknown");
    EXPECT_EQ(Figure(drive, HealthFigure::PENDING_SECTORS), "0 [2/12]");
    EXPECT_EQ(Figure(ReadDrive(ATA_IDENTITY + "Specified Max Operating Temperature:    70 Celsius\n"),
                     HealthFigure::TEMPERATURE_LIMIT),
              "70 [2/224]");
    EXPECT_EQ(Figure(ReadDrive(ATA_IDENTITY +
                               "Pending Defects log (GP Log 0x0c)\nIndex                LBA    Hours\n"
                               "    0                 123       45\n    1                 124        -\n"
                               "... (3 entries not shown)\n"),
                     HealthFigure::PENDING_SECTORS),
              "5 [2/12]");
    const CDriveReport other = ReadDrive(
        ATA_IDENTITY +
        "SMART overall-health self-assessment test result: UNKNOWN!\n"
        "SMART Error Log Version: 1\nNo Errors Logged\n\nSMART Self-test log structure revision number 1\n"
        "No self-tests have been logged.  [To run self-tests, use: smartctl -t]\n");
    EXPECT_EQ(Figure(other, HealthFigure::VERDICT), "unknown");
    EXPECT_EQ(Figure(other, HealthFigure::LOGGED_ERRORS), "0 [2/1]");
    EXPECT_EQ(Figure(other, HealthFigure::FAILED_SELF_TESTS), "0 [2/6]");
}

TEST(SmartctlText, AVerdictIsPassedOrFailedAndNothingElse) {
    const std::string line = "SMART overall-health self-assessment test result: ";
    EXPECT_EQ(Figure(ReadDrive(ATA_IDENTITY + line + "PASSED\n"), HealthFigure::VERDICT).substr(0, 1), "0");
    EXPECT_EQ(Figure(ReadDrive(ATA_IDENTITY + line + "FAILED!\n"), HealthFigure::VERDICT).substr(0, 1), "1");
    EXPECT_EQ(Figure(ReadDrive(ATA_IDENTITY + line + "PASS"), HealthFigure::VERDICT), "unknown");
}

TEST(SmartctlText, ALastLineWithoutItsEndIsNoted) {
    EXPECT_THAT(ReadDrive(ATA_IDENTITY + "Current Temperature:    3").GetNotes(),
                testing::ElementsAre("the last line has no end: it and what should follow may be cut off"));
    EXPECT_TRUE(ReadDrive(ATA_IDENTITY + "Current Temperature:    39 Celsius\n").GetNotes().empty());
}

TEST(SmartctlText, BlankLinesDoNotEndTheStatistics) {
    const CDriveReport drive =
        ReadDrive(ATA_IDENTITY +
                  "Page  Offset Size        Value Flags Description\n0x01  0x010  4            1139  ---  "
                  "Power-on Hours\n\n"
                  "0x04  =====  =               =  ===  == General Errors Statistics (rev 1) ==\n"
                  "0x04  0x008  4               3  ---  Number of Reported Uncorrectable Errors\n");
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_ON_HOURS), "1139 [1/1]");
    EXPECT_EQ(Figure(drive, HealthFigure::MEDIA_ERRORS), "3 [1/4]");
}

TEST(SmartctlText, SCSIReportIsRead) {
    const CDriveReport drive = ReadDrive(
        HEADER +
        "Vendor:               SEAGATE\nProduct:              ST1200MM0088\nRevision:             N004\n"
        "User Capacity:        1,200,243,695,616 bytes [1.20 TB]\nLogical block size:   512 bytes\n"
        "Rotation Rate:        Solid State Device\nSerial number:        Z4020VRY0000C000BZXB\n"
        "Transport protocol:   SAS (SPL-4)\n\n=== START OF READ SMART DATA SECTION ===\n"
        "SMART Health Status: HARDWARE IMPENDING FAILURE GENERAL HARD DRIVE FAILURE [asc=5d, ascq=10]\n\n"
        "Percentage used endurance indicator: 3%\nCurrent Drive Temperature:     31 C\nDrive Trip "
        "Temperature:        60 C\n\n"
        "  Accumulated power on time, hours:minutes 5675:39 [340539 minutes]\nElements in grown defect list: "
        "7\n\n"
        "Error counter log:\n"
        "read:   1410362924        0         0  1410362924          0        386.568           1\n"
        "write:         0        0         0         0          0       2124,590           2\n\n"
        "Pending defect count:2 Pending Defects\n\nSMART Self-test log\n"
        "Num  Test              Status                 segment  LifeTime  LBA_first_err [SK ASC ASQ]\n"
        "# 1  Background short  Completed                   -    5675                 - [-   -    -]\n"
        "# 2  Background long   Failed in segment -->       2    5600              1234 [0x3 0x11 0x0]\n\n");
    EXPECT_EQ(drive.GetProtocol(), DriveProtocol::SCSI);
    EXPECT_EQ(drive.GetModel(), "SEAGATE ST1200MM0088");
    EXPECT_EQ(drive.GetSerialNumber(), "Z4020VRY0000C000BZXB");
    EXPECT_EQ(drive.GetTransport(), PropertyValue::SAS);
    EXPECT_EQ(drive.GetFirmware(), "N004");
    EXPECT_EQ(Figure(drive, HealthFigure::VERDICT), "1 [6/47]");
    EXPECT_EQ(Figure(drive, HealthFigure::WEAR), "3 [6/17]");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE), "31 [6/13]");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE_LIMIT), "60 [6/13]");
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_ON_HOURS), "5675 [6/21]");
    EXPECT_EQ(Figure(drive, HealthFigure::REALLOCATED_SECTORS), "7 [7/0]");
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_READ), "386568000000 [6/3]");
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_WRITTEN), "2124590000000 [6/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::MEDIA_ERRORS), "3 [6/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::PENDING_SECTORS), "2 [6/277]");
    EXPECT_EQ(Figure(drive, HealthFigure::FAILED_SELF_TESTS), "1 [6/16]");
    EXPECT_EQ(Figure(ReadDrive(HEADER + "Product: X\nSMART Health Status: WARNING [asc=b, ascq=1]\n"),
                     HealthFigure::VERDICT),
              "2 [6/47]");
    EXPECT_EQ(
        Figure(ReadDrive(HEADER +
                         "Product: X\nSMART Health Status: FAILURE PREDICTION: ascq=0x5 [asc=5d, ascq=ff]\n"),
               HealthFigure::VERDICT),
        "0 [6/47]")
        << "a test of the warning";
    const CDriveReport environment = ReadDrive(HEADER +
                                               "Product: X\n  Current temperature = 34\n  Lifetime maximum "
                                               "temperature = 72\n  Current temperature = 50\n");
    EXPECT_EQ(Figure(environment, HealthFigure::TEMPERATURE), "34 [6/269]")
        << "the first place is the drive's";
    EXPECT_EQ(Figure(environment, HealthFigure::HIGHEST_TEMPERATURE), "72 [6/269]");
    EXPECT_EQ(Figure(ReadDrive(HEADER + "Product: X\nCurrent Drive Temperature:     0 C\n"),
                     HealthFigure::TEMPERATURE),
              "unknown");
    EXPECT_EQ(
        Figure(ReadDrive(HEADER + "Product: X\nSS Media used endurance indicator: 4%\n"), HealthFigure::WEAR),
        "4 [6/17]");
}

TEST(SmartctlText, NVMeReportIsRead) {
    const CDriveReport drive = ReadDrive(
        HEADER +
        "Model Number:                       INTEL SSDPEKNW010T8\nSerial Number:                      "
        "BTNH93710FS91P0B\n"
        "Firmware Version:                   002C\nTotal NVM Capacity:                 2,000,000,000,000 "
        "[2.00 TB]\n"
        "Namespace 1 Size/Capacity:          1,024,209,543,168 [1.02 TB]\nNamespace 1 Formatted LBA Size:    "
        " 512\n"
        "Warning  Comp. Temp. Threshold:     77 Celsius\nCritical Comp. Temp. Threshold:     80 Celsius\n\n"
        "SMART overall-health self-assessment test result: PASSED\n\n"
        "SMART/Health Information (NVMe Log 0x02)\nCritical Warning:                   0x00\n"
        "Temperature:                        36 Celsius\nAvailable Spare:                    100%\n"
        "Available Spare Threshold:          10%\nPercentage Used:                    2%\n"
        "Data Units Read:                    9,511,859 [4.87 TB]\nData Units Written:                 "
        "7,773,431 [3.97 TB]\n"
        "Power Cycles:                       266\nPower On Hours:                     2,401\n"
        "Unsafe Shutdowns:                   43\nMedia and Data Integrity Errors:    0\nError Information "
        "Log Entries:      1\n\n"
        "Self-test Log (NVMe Log 0x06, NSID 0xffffffff)\nSelf-test status: No self-test in progress\n"
        "Num  Test_Description  Status                       Power_on_Hours  Failing_LBA  NSID Seg SCT Code\n"
        " 0   Extended          Completed: failed segments             2400            -     -   -   -    "
        "-\n");
    EXPECT_EQ(drive.GetProtocol(), DriveProtocol::NVME);
    EXPECT_EQ(drive.GetTransport(), PropertyValue::NVME);
    EXPECT_EQ(drive.GetMedium(), PropertyValue::SSD);
    EXPECT_EQ(drive.GetCapacity(), 1024209543168U);
    EXPECT_EQ(drive.GetBlockSize(), 512U);
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE_LIMIT), "77 [5/0]");
    EXPECT_EQ(Figure(drive, HealthFigure::CRITICAL_TEMPERATURE), "80 [5/0]");
    EXPECT_EQ(Figure(drive, HealthFigure::VERDICT), "0 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE), "36 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::SPARE), "100 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::SPARE_THRESHOLD), "10 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::WEAR), "2 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_READ), "4870071808000 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_WRITTEN), "3979996672000 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_CYCLES), "266 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_ON_HOURS), "2401 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::UNSAFE_SHUTDOWNS), "43 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::MEDIA_ERRORS), "0 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::LOGGED_ERRORS), "1 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::FAILED_SELF_TESTS), "1 [4/6]");
}

TEST(SmartctlText, CapacityOfAnNVMeDriveIsThatOfItsNamespace) {
    const auto capacity = [](const std::string& lines) {
        return ReadDrive(HEADER + "Model Number: A\n" + lines).GetCapacity();
    };
    EXPECT_EQ(capacity("Total NVM Capacity: 2,000,000 [2.00 MB]\n"), 2000000U);
    EXPECT_EQ(
        capacity("Total NVM Capacity: 2,000,000 [2.00 MB]\nNamespace 1 Size/Capacity: 1,024,000 [1.02 MB]\n"),
        1024000U);
    EXPECT_EQ(capacity("Namespace 12 Size: 1,024,000 [1.02 MB]\nNamespace 12 Capacity: 1,000,000\n"),
              1024000U);
    EXPECT_EQ(capacity("Total NVM Capacity: 1,000 [1.00 KB]\n"), 0U) << "no drive is that small";
    EXPECT_EQ(capacity("Total NVM Capacity: 2,000,000\nNamespace 1 Size: 9223372036854775808\n"), 0U)
        << "beyond every number";
    EXPECT_EQ(ReadDrive(HEADER + "Model Number: A\nNamespace 2 Formatted LBA Size: 4096\n").GetBlockSize(),
              4096U);
}

TEST(SmartctlText, ASelfTestThatRunsIsReadWithItsProgress) {
    const auto progress = [](const std::string& lines) {
        const CDriveReport drive = ReadDrive(HEADER + lines);
        return drive.IsSelfTesting() ? drive.GetSelfTestProgress() : -2;
    };
    const std::string ata = "Device Model: A\nSelf-test execution status:      ";
    EXPECT_EQ(progress(ata + "( 249)\tSelf-test routine in progress...\n"), 10);
    EXPECT_EQ(progress(ata + "(   0)\tThe previous self-test routine completed\n"), -2);
    EXPECT_EQ(progress("Model Number: A\nSelf-test status: Short self-test in progress (23% completed)\n"),
              23);
    EXPECT_EQ(progress("Model Number: A\nSelf-test status: Short self-test in progress (0% completed)\n"), 0);
    EXPECT_EQ(progress("Model Number: A\nSelf-test status: Short self-test in progress (100% completed)\n"),
              100);
    EXPECT_EQ(progress("Model Number: A\nSelf-test status: Short self-test in progress (101% completed)\n"),
              -1);
    EXPECT_EQ(progress("Model Number: A\nSelf-test status: No self-test in progress\n"), -2);
    EXPECT_EQ(progress("Product: A\n# 1  Background short  Self test in progress ...   -     NOW\n"), -1);
}

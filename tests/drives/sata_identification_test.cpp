// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>

#include <cstring>
#include <ostream>
#include <string>
#include <vector>

#include "support/global_locale.h"

namespace PI::Test {
namespace {

struct Names {
    std::string m_Vendor;
    std::string m_Model;
};

bool operator==(const Names& left, const Names& right) {
    return left.m_Vendor == right.m_Vendor && left.m_Model == right.m_Model;
}

std::ostream& operator<<(std::ostream& stream, const Names& names) {
    return stream << '"' << names.m_Vendor << "\" / \"" << names.m_Model << '"';
}

Names Split(const std::string& text) {
    Names names = {"before", "before"};
    EXPECT_EQ(CPluginHelper::SplitSATAModelName(text, names.m_Vendor, names.m_Model), 0);
    return names;
}

struct SplitCase {
    std::string m_Text;
    Names m_Names;
};

void ExpectSplits(std::initializer_list<SplitCase> cases) {
    for (const SplitCase& split : cases) {
        EXPECT_EQ(Split(split.m_Text), split.m_Names) << '"' << split.m_Text << '"';
    }
}

// --- Splitting: white space and underscores

TEST(SplitSATAModelName, AnEmptyTextHasNoVendorAndNoModel) {
    ExpectSplits({{"", {"--", ""}}, {" ", {"--", ""}}, {" \t\n\v\f\r ", {"--", ""}}});
}

TEST(SplitSATAModelName, OuterWhiteSpaceIsStripped) {
    ExpectSplits({
        {"  ST9160314AS  ", {"SEAGATE", "ST9160314AS"}},
        {"\t\n\v\f\rST9160314AS\t\n\v\f\r", {"SEAGATE", "ST9160314AS"}},
        {" HGST  HTS541010 ", {"HGST", "HTS541010"}},
        {"HGST \tHTS541010", {"HGST", "HTS541010"}},
        {"HGST\t HTS541010", {"HGST", "HTS541010"}},
    });
}

TEST(SplitSATAModelName, UnderscoresAreBlanks) {
    ExpectSplits({
        {"A_B", {"A", "B"}},
        {"A_B_C", {"A", "B C"}},
        {"A__B", {"A", "B"}},
        {"_", {"", ""}},
        {"__", {"", ""}},
    });
}

TEST(SplitSATAModelName, AnOuterUnderscoreIsStrippedTooLateToBeIgnored) {
    ExpectSplits({
        {"_ST9160314AS", {"", "ST9160314AS"}},
        {" _ST9160314AS", {"", "ST9160314AS"}},
        {"ST9160314AS_", {"ST9160314AS", ""}},
        {"_A B", {"", "A B"}},
    });
}

TEST(SplitSATAModelName, OnlyABlankSeparates) {
    ExpectSplits({{"A\tB", {"--", "A\tB"}}, {"A\nB C", {"A\nB", "C"}}});
}

// --- Splitting: rule by rule

TEST(SplitSATAModelName, IntelBehindTheModel) {
    ExpectSplits({
        {"SSDSC2BB120G4C INTEL", {"INTEL", "SSDSC2BB120G4C"}},
        {"SSDSC2BB120G4C_INTEL", {"INTEL", "SSDSC2BB120G4C"}},
        {"SSDSC2BB120G4C  INTEL", {"INTEL", "SSDSC2BB120G4C"}},
        {"A B INTEL C", {"INTEL C", "A B"}},
        {"ABINTEL C", {"INTEL C", "A"}},  // the character before it is dropped, whatever it is
        {"AINTEL C", {"INTEL C", ""}},
        {"A INTELX", {"INTELX", "A"}},
        {"A INTEL INTEL", {"INTEL INTEL", "A"}},
        {"_INTEL", {"INTEL", ""}},
        {"_INTEL A", {"INTEL A", ""}},
    });
}

TEST(SplitSATAModelName, IntelInFrontOrWithoutBlankIsNoSpecialCase) {
    ExpectSplits({
        {"INTEL SSDSC2BB120G4C", {"INTEL", "SSDSC2BB120G4C"}},
        {"INTEL A INTEL", {"INTEL", "A INTEL"}},  // the first one counts
        {"INTELINTEL A", {"INTELINTEL", "A"}},
        {"INTEL", {"--", "INTEL"}},
        {"AINTEL", {"--", "AINTEL"}},
        {"A Intel", {"A", "Intel"}},
        {"A INTE L", {"A", "INTE L"}},
    });
}

TEST(SplitSATAModelName, IntelComesBeforeTheOtherRules) {
    ExpectSplits({
        {"SATADOM INTEL", {"INTEL", "SATADOM"}},
        {"Micron 5100 INTEL", {"INTEL", "Micron 5100"}},
        {"Optiarc INTEL", {"INTEL", "Optiarc"}},
        {"HL-DT-ST INTEL", {"INTEL", "HL-DT-ST"}},
    });
}

TEST(SplitSATAModelName, InnoDiskModulesKeepTheWholeText) {
    ExpectSplits({
        {"SATADOM-ML 3ME", {"INNODISK", "SATADOM-ML 3ME"}},
        {"SATADOM-ML_3ME3", {"INNODISK", "SATADOM-ML 3ME3"}},
        {"SATADOM", {"INNODISK", "SATADOM"}},
        {"SATADOMX", {"INNODISK", "SATADOMX"}},
        {"SATADO", {"--", "SATADO"}},
        {"SATADO M", {"SATADO", "M"}},
        {"satadom-ml 3me", {"satadom-ml", "3me"}},
        {"X SATADOM", {"X", "SATADOM"}},
    });
}

TEST(SplitSATAModelName, MicronLosesTwoWords) {
    ExpectSplits({
        {"Micron_5100_MTFDDAV240TCB", {"MICRON", "MTFDDAV240TCB"}},
        {"MICRON 5100 MTFDDAV240TCB", {"MICRON", "MTFDDAV240TCB"}},
        {"micron 5100 MTFDDAV240TCB", {"MICRON", "MTFDDAV240TCB"}},
        {"mIcRoN 5100 A B C", {"MICRON", "A B C"}},
        {"Micron 5100", {"MICRON", "5100"}},
        {"Micron", {"MICRON", "Micron"}},
        {"MicronX", {"MICRON", "MicronX"}},
        {"MicronX 1 2", {"MICRON", "2"}},
        {"Micron  5100 A", {"MICRON", "5100 A"}},  // the second word is empty
        {"Micron 5100  A", {"MICRON", "A"}},
        {"Micron_5100_", {"MICRON", ""}},
        {"Micro 5100 A", {"Micro", "5100 A"}},
        {"Micro", {"--", "Micro"}},
        {"XMicron 1 2", {"XMicron", "1 2"}},
    });
}

TEST(SplitSATAModelName, AFirstWordIsTheVendor) {
    ExpectSplits({
        {"WDC WD20EFRX-68EUZN0", {"WDC", "WD20EFRX-68EUZN0"}},
        {"TOSHIBA MG05 ACA800E", {"TOSHIBA", "MG05 ACA800E"}},
        {"STEC_MACH16", {"STEC", "MACH16"}},
        {"ST91 60314AS", {"ST91", "60314AS"}},
        {"HTE541 A", {"HTE541", "A"}},
    });
}

TEST(SplitSATAModelName, OpticalDrivesKeepTheWholeText) {
    ExpectSplits({
        {"Optiarc DVD RW AD-7710H", {"SONY", "Optiarc DVD RW AD-7710H"}},
        {"OPTIARC DVD", {"SONY", "OPTIARC DVD"}},
        {"optiarc_DVD", {"SONY", "optiarc DVD"}},
        {"Optiarcs DVD", {"Optiarcs", "DVD"}},
        {"Optiar DVD", {"Optiar", "DVD"}},
        {"Optiarc", {"--", "Optiarc"}},
        {"HL-DT-ST DVDRAM GH24NSC0", {"LG", "HL-DT-ST DVDRAM GH24NSC0"}},
        {"HL-DT- X", {"LG", "HL-DT- X"}},
        {"HL-DT X", {"HL-DT", "X"}},
        {"hl-dt-st X", {"hl-dt-st", "X"}},
        {"X HL-DT-ST", {"X", "HL-DT-ST"}},
    });
}

TEST(SplitSATAModelName, ASingleWordNamesItsVendorByItsBeginning) {
    ExpectSplits({
        {"STEC", {"STEC", "STEC"}},
        {"STECMACH16", {"STEC", "STECMACH16"}},
        {"STEC1", {"STEC", "STEC1"}},
        {"STE", {"--", "STE"}},
        {"stecmach16", {"--", "stecmach16"}},
        {"HTE541010A9E68", {"HGST", "HTE541010A9E68"}},
        {"HDS", {"HGST", "HDS"}},
        {"HCC1", {"HGST", "HCC1"}},
        {"HUA722020ALA330", {"HGST", "HUA722020ALA330"}},
        {"HTS1", {"HGST", "HTS1"}},
        {"HDE1", {"HGST", "HDE1"}},
        {"HUC1", {"HGST", "HUC1"}},
        {"HT", {"--", "HT"}},
        {"HTX541010", {"--", "HTX541010"}},
        {"HUS724040", {"--", "HUS724040"}},
        {"hte541010", {"--", "hte541010"}},
        {"XHTE", {"--", "XHTE"}},
        {"HL-DT-ST", {"LG", "HL-DT-ST"}},
        {"HL-DT-", {"LG", "HL-DT-"}},
        {"HL-DT", {"--", "HL-DT"}},
        {"WD20EFRX", {"--", "WD20EFRX"}},
    });
}

TEST(SplitSATAModelName, TheFourthCharacterMakesASeagate) {
    ExpectSplits({
        {"ST9160314AS", {"SEAGATE", "ST9160314AS"}},
        {"STX1", {"SEAGATE", "STX1"}},
        {"ST_1", {"ST", "1"}},
        {"ST9X", {"--", "ST9X"}},
        {"ST12", {"SEAGATE", "ST12"}},
        {"ST1", {"--", "ST1"}},
        {"ST", {"--", "ST"}},
        {"sT12", {"--", "sT12"}},
        {"XST12", {"--", "XST12"}},
    });
}

TEST(SplitSATAModelName, OnlyDecimalDigitsMakeASeagate) {
    for (int byte = 1; byte < 256; ++byte) {
        const char character = static_cast<char>(byte);
        if (std::strchr(" _", character) != nullptr) {
            continue;
        }
        const std::string text = std::string("STA") + character + "B";
        const bool isDigit = character >= '0' && character <= '9';
        EXPECT_EQ(Split(text), (Names{isDigit ? "SEAGATE" : "--", text})) << byte;
    }
}

// --- Splitting: surroundings

TEST(SplitSATAModelName, OutputsMayShareTheInput) {
    std::string text = "Micron 5100 MTFDDAV240TCB";
    std::string other;
    CPluginHelper::SplitSATAModelName(text, text, other);
    EXPECT_EQ(text, "MICRON");
    EXPECT_EQ(other, "MTFDDAV240TCB");
    text = "Optiarc DVD";
    CPluginHelper::SplitSATAModelName(text, other, text);
    EXPECT_EQ(other, "SONY");
    EXPECT_EQ(text, "Optiarc DVD");
}

TEST(SplitSATAModelName, TheGlobalLocaleDoesNotMatter) {
    const GlobalLocale odd(OddLocale());
    ExpectSplits({
        {" xx WD20x ", {"xx", "WD20x"}},
        {"micron 5100 A", {"MICRON", "A"}},
        {"abcdef 5100 A", {"abcdef", "5100 A"}},
        {"optiarc X", {"SONY", "optiarc X"}},
    });
}

// --- Serial numbers

std::string Corrected(const std::string& vendor, const std::string& model, std::string serial) {
    CPluginHelper::CorrectSerialNumber(vendor, model, serial);
    return serial;
}

TEST(CorrectSerialNumber, WesternDigitalLosesItsPrefix) {
    for (const char* vendor : {"WDC", "WD", "wdc", "wd", "Wdc", "wD"}) {
        EXPECT_EQ(Corrected(vendor, "any", "WD-WCC4E1234567"), "WCC4E1234567") << vendor;
        EXPECT_EQ(Corrected(vendor, "any", "wd-wcc4"), "wcc4") << vendor;
        EXPECT_EQ(Corrected(vendor, "any", "Wd-X"), "X") << vendor;
        EXPECT_EQ(Corrected(vendor, "", "WD-WD-X"), "WD-X") << vendor;
    }
}

TEST(CorrectSerialNumber, WesternDigitalSerialsOfThreeCharactersAreKept) {
    EXPECT_EQ(Corrected("WDC", "", "WD-"), "WD-");
    EXPECT_EQ(Corrected("WDC", "", "WD-1"), "1");
    EXPECT_EQ(Corrected("WDC", "", "WD"), "WD");
    EXPECT_EQ(Corrected("WDC", "", ""), "");
}

TEST(CorrectSerialNumber, WesternDigitalSerialsWithoutThePrefixAreKept) {
    for (const char* serial : {"WD1234567890", " WD-1234", "W-D1234", "XWD-1234", "WD_1234"}) {
        EXPECT_EQ(Corrected("WDC", "", serial), serial);
    }
}

TEST(CorrectSerialNumber, OneHGSTModelLosesItsPrefix) {
    EXPECT_EQ(Corrected("HGST", "HTE541010A9E68", "JA1000123456"), "123456");
    EXPECT_EQ(Corrected("hgst", "hte541010a9e68", "ja1000x"), "x");
    EXPECT_EQ(Corrected("Hgst", "Hte541010a9E68", "Ja1000X"), "X");
}

TEST(CorrectSerialNumber, HGSTSerialsOfSixCharactersAreKept) {
    EXPECT_EQ(Corrected("HGST", "HTE541010A9E68", "JA1000"), "JA1000");
    EXPECT_EQ(Corrected("HGST", "HTE541010A9E68", "JA10001"), "1");
    EXPECT_EQ(Corrected("HGST", "HTE541010A9E68", "JA100"), "JA100");
    EXPECT_EQ(Corrected("HGST", "HTE541010A9E68", ""), "");
}

TEST(CorrectSerialNumber, OtherHGSTModelsAndSerialsAreKept) {
    for (const char* model : {"", "HTE541010A9E6", "HTE541010A9E680", " HTE541010A9E68", "HTE541010A9E630"}) {
        EXPECT_EQ(Corrected("HGST", model, "JA1000123456"), "JA1000123456") << model;
    }
    EXPECT_EQ(Corrected("HGST", "HTE541010A9E68", "JA1001123456"), "JA1001123456");
    EXPECT_EQ(Corrected("HGST", "HTE541010A9E68", "XJA100012345"), "XJA100012345");
    EXPECT_EQ(Corrected("HGST", "HTE541010A9E68", "WD-123456789"), "WD-123456789");
}

TEST(CorrectSerialNumber, SeagateKeepsEightCharacters) {
    for (const char* vendor : {"SEAGATE", "seagate", "Seagate"}) {
        EXPECT_EQ(Corrected(vendor, "any", "123456789"), "12345678") << vendor;
        EXPECT_EQ(Corrected(vendor, "any", "1234567890123456"), "12345678") << vendor;
        EXPECT_EQ(Corrected(vendor, "any", "12345678"), "12345678") << vendor;
        EXPECT_EQ(Corrected(vendor, "any", "1234567"), "1234567") << vendor;
        EXPECT_EQ(Corrected(vendor, "any", ""), "") << vendor;
    }
}

TEST(CorrectSerialNumber, OtherVendorsAreKept) {
    for (const char* vendor :
         {"", "--", "WDCX", "WD C", " WDC", "W", "HITACHI", "HGST ", "SEAGAT", "SEAGATES"}) {
        for (const char* serial : {"WD-123456789", "JA1000123456", "1234567890"}) {
            EXPECT_EQ(Corrected(vendor, "HTE541010A9E68", serial), serial) << vendor;
        }
    }
}

TEST(CorrectSerialNumber, TheGlobalLocaleDoesNotMatter) {
    const GlobalLocale odd(OddLocale());
    EXPECT_EQ(Corrected("wdc", "", "wd-1"), "1");
    EXPECT_EQ(Corrected("abc", "", "wd-1"), "wd-1");
    EXPECT_EQ(Corrected("seagate", "", "123456789"), "12345678");
}

// --- Virtual disks

bool IsVirtual(std::string vendor) {
    const std::string before = vendor;
    const bool isVirtual = CPluginHelper::IsVirtualDisk(vendor);
    EXPECT_EQ(vendor, before);
    return isVirtual;
}

TEST(IsVirtualDisk, TwoVendorTextsAreVirtual) {
    EXPECT_TRUE(IsVirtual("VMware"));
    EXPECT_TRUE(IsVirtual("\xCE\xFA"));
}

TEST(IsVirtualDisk, NothingElseIs) {
    for (const char* vendor : {"", "VMware ", " VMware", "VMWARE", "vmware", "VMwar", "VMware,", "\xFA\xCE",
                               "\xCE", "\xFA", "\xCE\xFA ", "\xCE\xFA\xCE", "--"}) {
        EXPECT_FALSE(IsVirtual(vendor)) << vendor;
    }
    EXPECT_FALSE(IsVirtual(std::string("VMware\0", 7)));
    EXPECT_FALSE(IsVirtual(std::string("\xCE\xFA\0", 3)));
}

TEST(IsVirtualDisk, OnePairOfBytesIs) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string vendor = {static_cast<char>(first), static_cast<char>(second)};
            ASSERT_EQ(IsVirtual(vendor), first == 0xCE && second == 0xFA) << first << ' ' << second;
        }
    }
}

}  // namespace
}  // namespace PI::Test

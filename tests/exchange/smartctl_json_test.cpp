// SPDX-License-Identifier: Apache-2.0
// Reports as JSON: their forms, what they say of a drive, and that one odd figure costs no drive.

#include <pi/vocabulary.h>

#include <utility>

#include "exchange/read_report.h"

using namespace PI;
using namespace PI::Test;

namespace {

/// An ATA drive with members of a report.
std::string ATA(const std::string& members, const std::string& model = "ST1000NM0008-2F2100") {
    return R"({"smartctl": {"exit_status": 0}, "device": {"name": "/dev/sda", "type": "sat", "protocol": "ATA"},
              "model_name": ")" +
           model + R"(", "serial_number": "ZA12345678", )" + members + "}";
}

std::string SCSI(const std::string& members) {
    return R"({"device": {"name": "/dev/sdb", "type": "scsi", "protocol": "SCSI"}, "scsi_vendor": "SEAGATE",
              "scsi_product": "ST1200MM0088", "serial_number": "Z4020VRY0000C000BZXB", )" +
           members + "}";
}

std::string NVMe(const std::string& model, const std::string& log = "") {
    return R"({"device": {"name": "/dev/nvme0", "type": "nvme", "protocol": "NVMe"}, "model_name": ")" +
           model + R"(", "nvme_smart_health_information_log": {)" + log + "}}";
}

std::vector<std::string> Models(const std::string& text) {
    std::vector<std::string> models;
    for (const CDriveReport& drive : ReadAll(text).m_Drives) {
        models.push_back(drive.GetModel());
    }
    return models;
}

std::string Split(const std::string& model) {
    const CDriveReport drive = ReadDrive(NVMe(model));
    return drive.GetVendor() + "|" + drive.GetProduct();
}

TEST(SmartctlJson, ASelfTestThatRunsIsReadWithItsProgress) {
    struct Case {
        std::string m_Report;
        bool m_IsSelfTesting;
        int m_Progress;
    };
    const auto ata = [](const char* status) {
        return ATA(R"("ata_smart_data": {"self_test": {"status": {"value": )" + std::string(status) + "}}}");
    };
    const auto nvme = [](const char* log) {
        return R"({"device": {"protocol": "NVMe"}, "model_name": "N", "nvme_self_test_log": {)" +
               std::string(log) + "}}";
    };
    const Case CASES[] = {
        {ata("0"), false, -1},
        {ata("239"), false, -1},
        {ata("240"), true, 100},
        {ata("249"), true, 10},
        {ata("250"), true, 0},
        {ata("251"), true, -1},
        {ata("256"), false, -1},
        {ata("-1"), false, -1},
        {nvme(R"("current_self_test_operation": {"value": 0})"), false, -1},
        {nvme(R"("current_self_test_operation": {"value": 1}, "current_self_test_completion_percent": 0)"),
         true, 0},
        {nvme(R"("current_self_test_operation": {"value": 2}, "current_self_test_completion_percent": 100)"),
         true, 100},
        {nvme(R"("current_self_test_operation": {"value": 2}, "current_self_test_completion_percent": 101)"),
         true, -1},
        {nvme(R"("current_self_test_operation": {"value": 14})"), true, -1},
        {SCSI(R"("scsi_self_test_0": {"result": {"value": 15}})"), true, -1},
        {SCSI(R"("scsi_self_test_0": {"result": {"value": 0}})"), false, -1},
        {SCSI(R"("scsi_self_test_1": {"result": {"value": 15}})"), false, -1},
    };
    for (const Case& row : CASES) {
        const CDriveReport drive = ReadDrive(row.m_Report);
        EXPECT_EQ(drive.IsSelfTesting(), row.m_IsSelfTesting) << row.m_Report;
        EXPECT_EQ(drive.GetSelfTestProgress(), row.m_Progress) << row.m_Report;
    }
}

}  // namespace

TEST(SmartctlJson, OneOrManyReportsAreRead) {
    const std::string one = R"({"model_name": "A"})";
    const std::string two = R"({"model_name": "B"})";
    const std::vector<std::string> both = {"A", "B"};
    EXPECT_EQ(Models(one), std::vector<std::string>{"A"});
    EXPECT_EQ(Models("[" + one + "," + two + "]"), both);
    EXPECT_EQ(Models(R"({"/dev/sda": )" + one + R"(, "/dev/sdb": )" + two + "}"), both);
    EXPECT_EQ(Models(R"({"disks": [)" + one + "," + two + "]}"), both);
    EXPECT_EQ(Models(one + "\n" + two + "\n"), both);
    EXPECT_EQ(Models(one + two), both);
    EXPECT_EQ(Models(one + "\r\nscanning the next one: [sdb]\r\n" + two), both);
}

TEST(SmartctlJson, WhatSurroundsAReportIsPassedOver) {
    const std::string one = R"({"model_name": "A"})";
    EXPECT_EQ(Models("\xEF\xBB\xBF" + one), std::vector<std::string>{"A"});
    EXPECT_EQ(Models("[sudo] password for root: {secret}\n" + one), std::vector<std::string>{"A"});
    EXPECT_EQ(Models("{\r\n\"model_name\": \"A\"\r\n}\r\n"), std::vector<std::string>{"A"});
    EXPECT_EQ(Models(one + " and more"), std::vector<std::string>{"A"});
    EXPECT_EQ(Models(one + "\njson = {};\n"), std::vector<std::string>{"A"});
}

TEST(SmartctlJson, ReportsInWhatOtherProgramsWriteAreRead) {
    const std::string report = R"({"json_format_version": [1, 0], "model_name": "A"})";
    EXPECT_EQ(Models(R"({"host": "h", "smartctl": )" + report + "}"), std::vector<std::string>{"A"});
    EXPECT_EQ(Models(R"({"device": "/dev/sda", "smart": )" + report + "}"), std::vector<std::string>{"A"});
    EXPECT_EQ(Models(R"({"serial_number": "1", "smart": )" + report + "}"), std::vector<std::string>{"A"})
        << "the report outweighs what stands beside it";
    EXPECT_EQ(ReasonOf(R"({"vendor": "A", "product": "B", "class": "disk"})"), "no report of smartctl");
    EXPECT_EQ(Models(R"([{"model_name": "A",}, {"model_name": "B"},])"),
              (std::vector<std::string>{"A", "B"}));
}

TEST(SmartctlJson, OfAListThatBreaksOffWholeReportsAreRead) {
    const ReadResult result = ReadAll(R"([{"model_name": "A"}, {"model_name": "B"}, {"model_name": "C)");
    EXPECT_EQ(result.m_Drives.size(), 2U);
    ASSERT_EQ(result.m_Refusals.size(), 1U);
    EXPECT_EQ(result.m_Refusals[0].GetReason(), "the report breaks off");
}

TEST(SmartctlJson, OriginalOutputInTheReportDoesNotDisturb) {
    EXPECT_EQ(Models(R"({"smartctl": {"output": ["=== START OF INFORMATION SECTION ===", "Device Model: Z"]},
                        "model_name": "A"})"),
              std::vector<std::string>{"A"});
}

TEST(SmartctlJson, DeepNestingCostsNothing) {
    const std::string deep(200000, '[');
    EXPECT_EQ(Models(R"({"model_name": "A", "x": )" + deep + std::string(deep.size(), ']') + "}"),
              std::vector<std::string>{"A"});
}

TEST(SmartctlJson, IdentityIsReadAsReported) {
    const CDriveReport drive =
        ReadDrive(ATA(R"("firmware_version": "SN02", "user_capacity": {"blocks": 1, "bytes": 1000204886016},
                        "logical_block_size": 512, "rotation_rate": 7200, "sata_version": {"string": "SATA 3.1"},
                        "local_time": {"time_t": 1637039918})"));
    EXPECT_EQ(drive.GetProtocol(), DriveProtocol::ATA);
    EXPECT_EQ(drive.GetDevice(), "/dev/sda");
    EXPECT_EQ(drive.GetModel(), "ST1000NM0008-2F2100");
    EXPECT_EQ(drive.GetVendor(), "SEAGATE");
    EXPECT_EQ(drive.GetProduct(), "ST1000NM0008-2F2100");
    EXPECT_EQ(drive.GetSerialNumber(), "ZA12345678");
    EXPECT_EQ(drive.GetCorrectedSerialNumber(), "ZA123456") << "as the rule for this vendor has it";
    EXPECT_EQ(drive.GetFirmware(), "SN02");
    EXPECT_EQ(drive.GetCapacity(), 1000204886016U);
    EXPECT_EQ(drive.GetBlockSize(), 512U);
    EXPECT_EQ(drive.GetTransport(), PropertyValue::SATA);
    EXPECT_EQ(drive.GetMedium(), PropertyValue::HDD);
    EXPECT_EQ(drive.GetRPM(), 7200U);
    EXPECT_TRUE(drive.IsRPMReported());
    EXPECT_EQ(drive.GetTime(), 1637039918);
    EXPECT_FALSE(drive.IsVolume());
    EXPECT_TRUE(drive.GetNotes().empty());
}

TEST(SmartctlJson, TimesAreOfYearsOfFourDigits) {
    const auto time = [](const char* seconds) {
        return ReadDrive(R"({"serial_number":"1","local_time":{"time_t":)" + std::string(seconds) + "}}")
            .GetTime();
    };
    EXPECT_EQ(time("0"), 0);
    EXPECT_EQ(time("1"), 1);
    EXPECT_EQ(time("253402300799"), 253402300799);
    EXPECT_EQ(time("253402300800"), 0);
    EXPECT_EQ(time("-1"), 0);
}

TEST(SmartctlJson, WhatIsNotReportedIsUnknown) {
    const CDriveReport drive = ReadDrive(R"({"serial_number": "1"})");
    EXPECT_EQ(drive.GetProtocol(), DriveProtocol::UNKNOWN);
    EXPECT_EQ(drive.GetCapacity(), 0U);
    EXPECT_EQ(drive.GetBlockSize(), 0U);
    EXPECT_EQ(drive.GetTransport(), 0);
    EXPECT_EQ(drive.GetMedium(), 0) << "identity alone tells no medium";
    EXPECT_EQ(drive.GetRPM(), 0U);
    EXPECT_FALSE(drive.IsRPMReported());
    EXPECT_EQ(drive.GetTime(), 0);
    EXPECT_EQ(drive.GetHealth().GetState(), DriveState::UNKNOWN);
    for (const CHealthFigure& figure : drive.GetHealth().GetFigures()) {
        EXPECT_FALSE(figure.HasValue()) << HealthFigureToString(figure.GetFigure());
    }
}

namespace {

bool IsIdentified(const std::string& serial) {
    return ReadDrive(R"({"model_name": "A", "serial_number": ")" + serial + "\"}").IsIdentified();
}

}  // namespace

TEST(SmartctlJson, ADriveIsIdentifiedByItsSerialNumber) {
    for (const char* serial :
         {"S3Z8NB0K", "WD-WXPIT0000008", "Z4020VRY0000C000BZXB", "PHYH0000000D000J", "123000000000", "01",
          "00 01", "XXX1", "NONE1", "S 12", "ZR5DQ4N30000W317UKPL", "5000cca01abc", "WD-WXXX123"}) {
        EXPECT_TRUE(IsIdentified(serial)) << serial;
    }
}

TEST(SmartctlJson, ADriveIsNotIdentifiedByWhatIsEmptyRedactedHiddenInPartOrOfOneCharacter) {
    EXPECT_FALSE(ReadDrive(R"({"model_name": "A"})").IsIdentified());
    for (const char* serial : {"",
                               " ",
                               "-",
                               "--",
                               "----",
                               "0000000000",
                               "00 00",
                               "7",
                               "XXXXXXXX",
                               "xxxx",
                               "........",
                               "********",
                               "REDACTED",
                               "redacted",
                               "[REDACTED]",
                               "<removed>",
                               "(hidden)",
                               "Unknown",
                               "N/A",
                               "none",
                               "Serial",
                               "serial number",
                               "[No Information Found]",
                               "not available",
                               "S3Z8****",
                               "Z1Z5DWJK0000XXXXXXXX",
                               "S3Z8...",
                               "WD-WXXXX123",
                               "S3Z8####",
                               "S3Z8????"}) {
        EXPECT_FALSE(IsIdentified(serial)) << serial;
    }
}

TEST(SmartctlJson, RotationTellsTheMedium) {
    const auto medium = [](const std::string& rate) {
        return ReadDrive(ATA(R"("rotation_rate": )" + rate)).GetMedium();
    };
    EXPECT_EQ(medium("0"), PropertyValue::SSD);
    EXPECT_EQ(medium("1"), PropertyValue::SSD);
    EXPECT_EQ(medium("2"), 0);
    EXPECT_EQ(medium("1024"), 0);
    EXPECT_EQ(medium("1025"), PropertyValue::HDD);
    EXPECT_EQ(medium("65534"), PropertyValue::HDD);
    EXPECT_EQ(medium("65535"), 0);
    EXPECT_EQ(medium("null"), 0);
    EXPECT_EQ(ReadDrive(ATA(R"("trim": {"supported": true})")).GetMedium(), PropertyValue::SSD);
    EXPECT_EQ(ReadDrive(ATA(R"("trim": {"supported": false})")).GetMedium(), 0);
    EXPECT_EQ(ReadDrive(NVMe("A")).GetMedium(), PropertyValue::SSD);
    EXPECT_EQ(ReadDrive(SCSI(R"("rotation_rate": 0)")).GetMedium(), PropertyValue::SSD);
    EXPECT_EQ(
        ReadDrive(R"({"device": {"type": "scsi"}, "scsi_vendor": "QEMU", "scsi_product": "QEMU HARDDISK",
                            "rotation_rate": 0})")
            .GetMedium(),
        0)
        << "of a volume, 0 is no rate";
}

TEST(SmartctlJson, DisksThatReportNoRateAreKnownByWhatOnlyDisksCount) {
    const auto drive = [](int id, int raw, const std::string& members = "") {
        return ReadDrive(ATA(members + R"("ata_smart_attributes": {"table": [{"id": )" + std::to_string(id) +
                             R"(, "raw": {"value": )" + std::to_string(raw) + "}}]}"));
    };
    EXPECT_EQ(drive(7, 1).GetMedium(), PropertyValue::HDD);
    EXPECT_EQ(drive(7, 1).GetRPM(), 7200U) << "by the rule for the model";
    EXPECT_FALSE(drive(7, 1).IsRPMReported());
    EXPECT_EQ(drive(3, 4000).GetMedium(), PropertyValue::HDD);
    EXPECT_EQ(drive(7, 0).GetMedium(), 0) << "solid-state drives have it as 0";
    EXPECT_EQ(drive(9, 1).GetMedium(), 0);
    EXPECT_EQ(drive(7, 1, R"("rotation_rate": 0, )").GetMedium(), PropertyValue::SSD);
    const CDriveReport brief = ReadDrive(
        R"({"device": {"protocol": "ATA"}, "model_name": "HGST HU", "ata_smart_attributes": {"table": [{"id": 7,
            "raw": {"value": 1}}]}})");
    EXPECT_EQ(brief.GetMedium(), PropertyValue::HDD);
    EXPECT_EQ(brief.GetRPM(), 0U) << "the name is too short for the rule";
}

TEST(SmartctlJson, BlocksAreOfTheSizesThatDrivesHave) {
    const auto size = [](const std::string& bytes) {
        return ReadDrive(ATA(R"("logical_block_size": )" + bytes)).GetBlockSize();
    };
    EXPECT_EQ(size("520"), 520U);
    EXPECT_EQ(size("65536"), 65536U);
    EXPECT_EQ(size("65537"), 0U);
    EXPECT_EQ(size("-1"), 0U);
}

TEST(SmartctlJson, VendorsThatTheSplitDoesNotKnowAreFound) {
    EXPECT_EQ(Split("KXG60ZNV512G TOSHIBA"), "TOSHIBA|KXG60ZNV512G");
    EXPECT_EQ(Split("KXG80ZNV512G KIOXIA"), "KIOXIA|KXG80ZNV512G");
    EXPECT_EQ(Split("  KXG80ZNV512G KIOXIA  "), "KIOXIA|KXG80ZNV512G");
    EXPECT_EQ(Split("MZVLB512HAJQ SAMSUNG"), "SAMSUNG|MZVLB512HAJQ");
    EXPECT_EQ(Split("SN520 NVMe WDC 256GB"), "WDC|SN520 NVMe WDC 256GB");
    EXPECT_EQ(Split("SSDPEKKF256G8 NVMe Intel 256GB"), "Intel|SSDPEKKF256G8 NVMe Intel 256GB");
    EXPECT_EQ(Split("2200S NVMe Micron 256GB"), "Micron|2200S NVMe Micron 256GB");
    EXPECT_EQ(Split("PC401 NVMe SK hynix 512GB"), "SK hynix|PC401 NVMe SK hynix 512GB");
    EXPECT_EQ(Split("THNSN5512GPUK NVMe TOSHIBA 512GB"), "TOSHIBA|THNSN5512GPUK NVMe TOSHIBA 512GB");
    EXPECT_EQ(Split("Force MP510"), "CORSAIR|Force MP510");
    EXPECT_EQ(Split("CT250P2SSD8"), "CRUCIAL|CT250P2SSD8");
    EXPECT_EQ(Split("KCD61LUL3T84"), "KIOXIA|KCD61LUL3T84");
    EXPECT_EQ(Split("HUSMR7676BHP301"), "HGST|HUSMR7676BHP301");
    EXPECT_EQ(Split("MTFDHAX3T2TCU"), "MICRON|MTFDHAX3T2TCU");
    EXPECT_EQ(Split("INTEL SSDPE2KX080T8"), "INTEL|SSDPE2KX080T8") << "the split as it is";
    EXPECT_EQ(Split("TOSHIBA MG05ACA800E"), "TOSHIBA|MG05ACA800E");
    EXPECT_EQ(Split("MB0500EBNCR"), "|MB0500EBNCR") << "unknown to both";
    EXPECT_EQ(Split("CTX"), "|CTX");
    EXPECT_EQ(Split("WUS9"), "WDC|WUS9");
    EXPECT_EQ(Split("WUS0"), "WDC|WUS0");
    EXPECT_EQ(Split("WUS:"), "|WUS:");
}

TEST(SmartctlJson, MakersAreKnownByTheModelsThatTheySell) {
    struct Row {
        const char* m_Vendor;
        std::vector<const char*> m_Models;
    };
    const Row ROWS[] = {
        {"INNODISK", {"2.5\\\" SATA SSD 3ME3"}},
        {"SK HYNIX", {"HFS480G3H2X069N"}},
        {"HGST",
         {"HUSMM1640ASS200", "HUS726T4TALA6L4", "HUH721212ALE604", "HUC101818CS4204", "HMS5C4040BLE640",
          "HTS721010A9E630"}},
        {"KIOXIA",
         {"KCM61VUL3T20", "KPM61RUG960G", "KRM61VUG1T60", "KXG80ZNV512G", "KXD51LN11T92", "KBG40ZNS512G"}},
        {"TOSHIBA", {"KXG50ZNV512G", "KXG60ZNV512G", "THNSNJ256GCSU"}},
        {"SAMSUNG",
         {"MZ7LH480HAHQ", "MZ7KM480HMHQ", "MZ1WV480HCGL", "MZQL2960HCJR", "MZPLJ3T2HBJR", "MZWLL1T6HAJQ",
          "MZVLB512HAJQ"}},
        {"INTEL", {"SSDSC2BB480G7", "SSDPE2KX010T8", "SSDPF2KX038TZ"}},
        {"WDC", {"WUH721414ALE6L4", "WUS4BB076D7P3E3", "WD40EFRX", "WDS500G2B0A", "PC SN720 SDAPNTW-256G"}},
    };
    for (const Row& row : ROWS) {
        for (const std::string model : row.m_Models) {
            EXPECT_EQ(ReadDrive(NVMe(model)).GetVendor(), row.m_Vendor) << model;
        }
    }
}

TEST(SmartctlJson, ProtocolAndTransportAreKnownByWhatIsReported) {
    struct Case {
        const char* m_Members;
        _DRIVE_PROTOCOL m_Protocol;
        int m_Transport;
    };
    constexpr Case CASES[] = {
        {R"("device": {"protocol": "NVMe"})", DriveProtocol::NVME, PropertyValue::NVME},
        {R"("device": {"type": "nvme"})", DriveProtocol::NVME, PropertyValue::NVME},
        {R"("nvme_smart_health_information_log": {})", DriveProtocol::NVME, PropertyValue::NVME},
        {R"("device": {"protocol": "SCSI"})", DriveProtocol::SCSI, 0},
        {R"("device": {"type": "scsi"})", DriveProtocol::SCSI, 0},
        {R"("device": {"protocol": "ATA"})", DriveProtocol::ATA, 0},
        {R"("device": {"type": "ata"})", DriveProtocol::ATA, 0},
        {R"("device": {"type": "sat"})", DriveProtocol::ATA, PropertyValue::SATA},
        {R"("device": {"type": "sat+megaraid,1"})", DriveProtocol::ATA, PropertyValue::SATA},
        {R"("device": {"type": "ata"}, "interface_speed": {})", DriveProtocol::ATA, PropertyValue::SATA},
        {R"("ata_smart_attributes": {})", DriveProtocol::ATA, 0},
    };
    for (const Case& row : CASES) {
        const CDriveReport drive = ReadDrive(std::string(R"({"model_name": "A", )") + row.m_Members + "}");
        EXPECT_EQ(drive.GetProtocol(), row.m_Protocol) << row.m_Members;
        EXPECT_EQ(drive.GetTransport(), row.m_Transport) << row.m_Members;
    }
}

TEST(SmartctlJson, ASCSIDriveThatWearsIsASolidStateDrive) {
    const std::string wear = R"("scsi_percentage_used_endurance_indicator": 3)";
    EXPECT_EQ(ReadDrive(SCSI(wear)).GetMedium(), PropertyValue::SSD);
    EXPECT_EQ(ReadDrive(SCSI(wear + R"(, "rotation_rate": 7200)")).GetMedium(), PropertyValue::HDD);
    EXPECT_EQ(ReadDrive(SCSI(R"("scsi_grown_defect_list": 3)")).GetMedium(), 0);
    EXPECT_EQ(ReadDrive(ATA(R"("endurance_used": {"current_percent": 3})")).GetMedium(), 0);
}

TEST(SmartctlJson, SCSINamesVendorAndProductApart) {
    const CDriveReport drive =
        ReadDrive(SCSI(R"("scsi_revision": "N004", "scsi_transport_protocol": {"value": 6})"));
    EXPECT_EQ(drive.GetModel(), "SEAGATE ST1200MM0088");
    EXPECT_EQ(drive.GetVendor(), "SEAGATE");
    EXPECT_EQ(drive.GetProduct(), "ST1200MM0088");
    EXPECT_EQ(drive.GetFirmware(), "N004");
    EXPECT_EQ(drive.GetTransport(), PropertyValue::SAS);
    EXPECT_EQ(drive.GetCorrectedSerialNumber(), "Z4020VRY0000C000BZXB") << "only ATA drives need it";
    EXPECT_EQ(ReadDrive(SCSI(R"("scsi_transport_protocol": {"value": 0})")).GetTransport(), 0);
    EXPECT_EQ(ReadDrive(SCSI(R"x("scsi_transport_protocol": {"name": "SAS (SPL-4)"})x")).GetTransport(),
              PropertyValue::SAS);
}

TEST(SmartctlJson, VolumesSayWhatTheyAre) {
    const auto kind = [](const std::string& vendor, const std::string& product) {
        return std::string(
            ReadDrive(R"({"scsi_vendor": ")" + vendor + R"(", "scsi_product": ")" + product + "\"}")
                .GetVolumeKind());
    };
    const std::pair<const char*, const char*> RAID[] = {{"HP", "LOGICAL VOLUME"},
                                                        {"HPE", "LOGICAL VOLUME"},
                                                        {"COMPAQ", "LOGICAL VOLUME"},
                                                        {"DELL", "PERC H730P Mini"},
                                                        {"DELLBOSS", "VD"},
                                                        {"DELL BOSS", "VD"},
                                                        {"LSI", "MR9271-8i"},
                                                        {"LSI", "MegaRAID SAS"},
                                                        {"LSI", "Logical Volume"},
                                                        {"LSILOGIC", "Logical Volume"},
                                                        {"AVAGO", "MR9361-8i"},
                                                        {"BROADCOM", "MR9560-8i"},
                                                        {"INTEL", "RS3DC080"},
                                                        {"IBM", "ServeRAID M5210"},
                                                        {"Lenovo", "RAID 930-8i"},
                                                        {"ADAPTEC", "Array"},
                                                        {"ASR", "7805"},
                                                        {"AMCC", "9650SE"},
                                                        {"3ware", "Logical Disk"},
                                                        {"Areca", "ARC-1880"}};
    for (const auto& [vendor, product] : RAID) {
        EXPECT_EQ(kind(vendor, product), "logical volume of a RAID controller") << vendor << " " << product;
    }
    EXPECT_EQ(kind("Virtual", "Disk"), "virtual disk");
    EXPECT_EQ(kind("Virtual", "HD"), "virtual disk of a hypervisor");
    for (const std::string vendor : {"VMware", "Msft", "QEMU", "VBOX"}) {
        EXPECT_EQ(kind(vendor, "disk"), "virtual disk of a hypervisor") << vendor;
    }
    EXPECT_EQ(kind("HP", "EG0600FBDSR"), "") << "a drive that the controller's vendor sells";
    EXPECT_EQ(kind("SEAGATE", "ST1200MM0088"), "");
    const CDriveReport volume = ReadDrive(
        R"({"device": {"type": "scsi"}, "scsi_vendor": "HP", "scsi_product": "LOGICAL VOLUME", "rotation_rate": 7200})");
    EXPECT_TRUE(volume.IsVolume());
    EXPECT_EQ(volume.GetNotes(),
              std::vector<std::string>{"this is no drive but a logical volume of a RAID controller"});
    EXPECT_EQ(volume.GetMedium(), PropertyValue::HDD) << "it reports a rate";
}

TEST(SmartctlJson, RawValuesOfFiftySixBitsAreRead) {
    const CDriveReport drive = ReadDrive(ATA(
        R"("ata_smart_attributes": {"table": [
            {"id": 9, "name": "Power_On_Hours", "value": 90, "worst": 90, "thresh": 0, "flags": {"value": 50}, "raw": {"value": 8811}},
            {"id": 240, "name": "Head_Flying_Hours", "value": 100, "worst": 253, "thresh": 0, "flags": {"value": 0},
             "raw": {"value": 66743901486457345, "string": "122817h+23m+10.123s"}}]})"));
    EXPECT_TRUE(drive.GetNotes().empty());
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_ON_HOURS), "8811 [3/9]");
}

TEST(SmartctlJson, RawValuesBeyondTheirBitsArePassedOver) {
    const auto hours = [](const std::string& raw) {
        return Figure(
            ReadDrive(ATA(R"("ata_smart_attributes": {"table": [{"id": 194, "name": "Temperature_Celsius",
                                       "raw": {"value": )" +
                          raw + "}}]}")),
            HealthFigure::TEMPERATURE);
    };
    EXPECT_EQ(hours("72057594037927711"), "31 [3/194]") << "56 bits";
    EXPECT_EQ(hours("72057594037927967"), "unknown");
    EXPECT_EQ(hours("9223372036854775807"), "unknown");
    EXPECT_EQ(hours("-1"), "unknown");
}

TEST(SmartctlJson, TextsThatHoldAllOfARawValueOutweighACutNumber) {
    const auto wear = [](const std::string& model, const std::string& raw) {
        return Figure(
            ReadDrive(
                R"({"device": {"protocol": "ATA"}, "rotation_rate": 0, "model_name": ")" + model +
                R"(", "ata_smart_attributes": {"table": [{"id": 230, "name": "Media_Wearout_Indicator",)"
                R"("value": 100, "worst": 100, "raw": )" +
                raw + "}]}}"),
            HealthFigure::WEAR);
    };
    EXPECT_EQ(wear("WDC WDS500G2B0A", R"({"value": 0, "string": "0x07000007"})"), "7 [3/230]");
    EXPECT_EQ(wear("WDC WDS500G2B0A", R"({"value": 117440519, "string": "0x07000007"})"), "7 [3/230]");
    EXPECT_EQ(wear("SanDisk SDSSDXPS480G", R"({"value": 5, "string": "5 1280 5"})"), "5 [3/230]");
    EXPECT_EQ(wear("SanDisk SDSSDXPS480G", R"({"value": 83886085, "string": "83886085"})"), "5 [3/230]");
}

TEST(SmartctlJson, TheNumberOfARawValueCountsWhereItsTextIsAPart) {
    const auto cycles = [](const std::string& raw) {
        return Figure(
            ReadDrive(ATA(R"("ata_smart_attributes": {"table": [{"id": 12, "raw": )" + raw + "}]}")),
            HealthFigure::POWER_CYCLES);
    };
    EXPECT_EQ(cycles(R"({"value": 7, "string": "5"})"), "7 [3/12]");
    EXPECT_EQ(cycles(R"({"value": 0, "string": "5"})"), "0 [3/12]");
    EXPECT_EQ(cycles(R"({"string": "5"})"), "5 [3/12]");
}

TEST(SmartctlJson, AttributesThatCannotBeReadAreNoted) {
    const auto notes = [](const std::string& rows) {
        return ReadDrive(ATA(R"("ata_smart_attributes": {"table": [)" + rows + "]}")).GetNotes();
    };
    EXPECT_EQ(notes(R"({"id": 9, "raw": {"value": 1}})").size(), 0U);
    EXPECT_EQ(notes(R"({"id": 9})"),
              std::vector<std::string>{"attribute 9 has no raw value and is passed over"});
    for (const std::string id : {"0", "256"}) {
        EXPECT_EQ(notes(R"({"id": )" + id + R"(, "raw": {"value": 1}})"),
                  std::vector<std::string>{"attribute " + id +
                                           " is not read: its number is none, or 30 are read already"});
    }
    EXPECT_EQ(
        notes(R"({"raw": {"value": 1}})"),
        std::vector<std::string>{"attribute -1 is not read: its number is none, or 30 are read already"});
    std::string rows;
    for (int id = 1; id <= 31; ++id) {
        rows += (id == 1 ? "" : ",") + (R"({"id": )" + std::to_string(id)) + R"(, "raw": {"value": 1}})";
    }
    EXPECT_EQ(notes(rows), std::vector<std::string>{
                               "attribute 31 is not read: its number is none, or 30 are read already"});
}

TEST(SmartctlJson, OneOddFigureCostsNoDrive) {
    const auto hours = [](const std::string& value) {
        return Figure(ReadDrive(ATA(R"("power_on_time": {"hours": )" + value + "}")),
                      HealthFigure::POWER_ON_HOURS);
    };
    EXPECT_EQ(hours("12"), "12 [10/0]");
    EXPECT_EQ(hours("12.0"), "12 [10/0]");
    EXPECT_EQ(hours("\"12\""), "12 [10/0]");
    for (const char* odd :
         {"12.5", "-1", "null", "true", "\"x\"", "[]", "{}", "NaN", "Inf", "1e300", "99999999999999999999"}) {
        EXPECT_EQ(hours(odd), "unknown") << odd;
    }
    EXPECT_EQ(hours(std::string(400, '9')), "unknown");
    const CDriveReport drive = ReadDrive(ATA(R"("power_on_time": {"hours": "x"}, "power_cycle_count": 5)"));
    EXPECT_EQ(drive.GetNotes(),
              std::vector<std::string>{"power_on_time.hours is no whole number and passed over"});
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_CYCLES), "5 [10/0]");
}

TEST(SmartctlJson, WhatNoJsonCanHoldCostsNoDrive) {
    const auto hours = [](const std::string& value) {
        return Figure(ReadDrive(ATA(R"("power_cycle_count": 5, "power_on_time": {"hours": )" + value + "}")),
                      HealthFigure::POWER_ON_HOURS);
    };
    for (const char* odd : {"012", "1.", "1e400", "-1e999", "+5", ".5", "1.2.3"}) {
        EXPECT_EQ(hours(odd), "unknown") << odd;
    }
    const auto serial = [](const std::string& text) {
        return ReadDrive(R"({"serial_number": ")" + text + R"(", "model_name": "A"})").GetSerialNumber();
    };
    EXPECT_EQ(serial(R"(x\ud83d\ude00)"), "x\xF0\x9F\x98\x80");
    EXPECT_EQ(serial(R"(x\ud800y)"), "x/ud800y") << "half of a pair";
    EXPECT_EQ(serial(R"(x\ud800)"), "x/ud800");
    EXPECT_EQ(serial(R"(\u00e9\u12g4\q)"), "\xC3\xA9/u12g4/q");
    EXPECT_EQ(serial(R"(\t\\\q)"), "\t\\/q") << "short escapes stay";
    EXPECT_EQ(serial("x\ty\x01"), "x y ");
    EXPECT_EQ(serial(std::string("x\0y", 3)), "x y");
    const CDriveReport drive =
        ReadDrive(ATA(R"("power_cycle_count": 5, "x": 1e999, "serial_number": "0.1.2")"));
    EXPECT_EQ(drive.GetSerialNumber(), "0.1.2") << "texts stay";
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_CYCLES), "5 [10/0]");
    EXPECT_EQ(drive.GetNotes()[0], "numbers or texts that no JSON can hold are passed over");
}

TEST(SmartctlJson, NumbersThatMayBeRoundedAreReadFromTheirTexts) {
    const auto capacity = [](const std::string& members) {
        return ReadDrive(ATA(R"("user_capacity": {)" + members + "}")).GetCapacity();
    };
    EXPECT_EQ(capacity(R"("bytes": 9007199254740992, "bytes_s": "9007199254740993")"), 9007199254740993U);
    EXPECT_EQ(capacity(R"("bytes": 9.007199254740992e15, "bytes_s": "9007199254740993")"), 9007199254740993U);
    EXPECT_EQ(capacity(R"("bytes_s": "512000000")"), 512000000U);
    EXPECT_EQ(capacity(R"("bytes": 512000000, "bytes_s": "513000000")"), 512000000U) << "exact as a number";
    EXPECT_EQ(capacity(R"("bytes": 9007199254740992, "bytes_s": "x")"), 9007199254740992U);
    EXPECT_EQ(
        Figure(ReadDrive(NVMe("A", R"("power_cycles": 5, "power_cycles_s": "5", "power_cycles_le": [5])")),
               HealthFigure::POWER_CYCLES),
        "5 [4/2]");
}

TEST(SmartctlJson, BytesThatAreNoUTF8Stay) {
    EXPECT_EQ(ReadDrive("{\"model_name\": \"A\xFF\xC3\", \"serial_number\": \"1\"}").GetModel(), "A\xFF\xC3");
}

TEST(SmartctlJson, LongMessagesAreRead) {
    const std::string message(1000, 'm');
    const CDriveReport drive =
        ReadDrive(R"({"model_name": "A", "smartctl": {"messages": [{"string": ")" + message + R"("}]}})");
    EXPECT_EQ(drive.GetNotes(), std::vector<std::string>{"smartctl says: " + message});
}

TEST(SmartctlJson, OfAKeyThatOccursTwiceTheLastCounts) {
    const CDriveReport drive = ReadDrive(
        R"({"model_name": "A", "serial_number": "1", "serial_number": "2", "device": {"name": "a", "name": "b"}})");
    EXPECT_EQ(drive.GetSerialNumber(), "2");
    EXPECT_EQ(drive.GetDevice(), "b");
    EXPECT_EQ(drive.GetNotes(),
              (std::vector<std::string>{"\"serial_number\" occurs more than once; the last one counts",
                                        "\"name\" occurs more than once in device; the last one counts"}));
}

TEST(SmartctlJson, NamesThatOccurTwiceAreNotedAsDeepAsReportsMayNest) {
    const auto notes = [](std::size_t depth) {
        std::string open;
        for (std::size_t i = 0; i < depth; ++i) {
            open += R"({"a": )";
        }
        return ReadDrive(R"({"model_name": "A", "x": )" + open + R"({"b": 1, "b": 2})" +
                         std::string(depth + 1, '}'))
            .GetNotes()
            .size();
    };
    EXPECT_EQ(notes(0), 1U);
    EXPECT_EQ(notes(31), 1U);
    EXPECT_EQ(notes(32), 0U);
}

TEST(SmartctlJson, KeysThatOccurTwiceAreFoundAmongManyToo) {
    for (const int others : {0, 1, 62, 63, 64, 65, 200}) {
        std::string members = R"("model_name": "A", "k": 1)";
        for (int i = 0; i < others; ++i) {
            members += ", \"key" + std::to_string(i) + "\": 0";
        }
        EXPECT_TRUE(ReadDrive("{" + members + "}").GetNotes().empty()) << others;
        EXPECT_EQ(ReadDrive("{" + members + R"(, "k": 2})").GetNotes(),
                  std::vector<std::string>{"\"k\" occurs more than once; the last one counts"})
            << others;
    }
}

TEST(SmartctlJson, CapacityThatNoDriveHasIsUnknown) {
    const auto capacity = [](const std::string& bytes) {
        return ReadDrive(R"({"model_name": "A", "user_capacity": {"bytes": )" + bytes + "}}").GetCapacity();
    };
    EXPECT_EQ(capacity("1152921504606846976"), 1152921504606846976U);
    EXPECT_EQ(capacity("1152921504606846977"), 0U);
    EXPECT_EQ(capacity("18446744073709551615"), 0U);
    EXPECT_EQ(capacity("1000000"), 1000000U);
    EXPECT_EQ(capacity("999999"), 0U);
    EXPECT_EQ(ReadDrive(R"({"model_name": "A", "nvme_total_capacity": "1000"})").GetCapacity(), 0U);
    EXPECT_EQ(
        ReadDrive(R"({"model_name": "A", "nvme_total_capacity": 1000, "user_capacity": {"bytes": 5000000}})")
            .GetCapacity(),
        5000000U);
}

TEST(SmartctlJson, ExitStatusOfAFailingDriveIsAVerdictWhereThereIsNone) {
    const auto state = [](const char* members) {
        return ReadDrive(
                   std::string(
                       R"({"model_name": "A", "device": {"protocol": "ATA"}, "smartctl": {"exit_status": )") +
                   members + "}")
            .GetHealth()
            .GetState();
    };
    EXPECT_EQ(state("8}"), DriveState::FAILED);
    EXPECT_EQ(state("4}"), DriveState::UNKNOWN);
    EXPECT_EQ(state(R"(8}, "smart_status": {"passed": true})"), DriveState::GOOD);
}

TEST(SmartctlJson, ExitStatusOfFailedSelfTestsCountsWhereThereIsNoLog) {
    const std::string status = R"("smartctl": {"exit_status": 128}, "smart_status": {"passed": true})";
    const CDriveReport drive =
        ReadDrive(R"({"model_name": "A", "device": {"protocol": "ATA"}, )" + status + "}");
    EXPECT_EQ(Figure(drive, HealthFigure::FAILED_SELF_TESTS), "1 [10/0]");
    EXPECT_EQ(drive.GetHealth().GetState(), DriveState::LOOK);
    EXPECT_EQ(Figure(ReadDrive(R"({"model_name": "A", "device": {"protocol": "ATA"}, )" + status +
                               R"(, "ata_smart_self_test_log": {"standard": {"count": 0}}})"),
                     HealthFigure::FAILED_SELF_TESTS),
              "0 [2/6]");
}

TEST(SmartctlJson, ExitStatusIsNotedBitByBit) {
    for (unsigned bit = 0; bit < 8; ++bit) {
        const CDriveReport drive = ReadDrive(R"({"model_name": "A", "smartctl": {"exit_status": )" +
                                             std::to_string(1U << bit) + "}}");
        ASSERT_EQ(drive.GetNotes().size(), 1U);
        EXPECT_EQ(drive.GetNotes()[0].find("exit status of smartctl: "), 0U);
    }
    EXPECT_EQ(ReadDrive(R"({"model_name": "A", "smartctl": {"exit_status": 216}})").GetNotes().size(), 4U);
}

TEST(SmartctlJson, VerdictIsThatOfTheProtocol) {
    EXPECT_EQ(Figure(ReadDrive(ATA(R"("smart_status": {"passed": true})")), HealthFigure::VERDICT),
              "0 [8/0]");
    EXPECT_EQ(Figure(ReadDrive(ATA(R"("smart_status": {"passed": false})")), HealthFigure::VERDICT),
              "1 [8/0]");
    EXPECT_EQ(Figure(ReadDrive(ATA(R"("rotation_rate": 0)")), HealthFigure::VERDICT), "unknown")
        << "not told is not no";
    EXPECT_EQ(Figure(ReadDrive(SCSI(R"("smart_status": {"passed": true})")), HealthFigure::VERDICT),
              "0 [6/47]");
    const auto scsi = [](const std::string& sense) {
        return Figure(ReadDrive(SCSI(R"("smart_status": {"passed": false, "scsi": )" + sense + "}")),
                      HealthFigure::VERDICT);
    };
    EXPECT_EQ(scsi(R"({"asc": 93, "ascq": 16})"), "1 [6/47]");
    EXPECT_EQ(scsi(R"({"asc": 93, "ascq": 255})"), "0 [6/47]") << "a test of the warning";
    EXPECT_EQ(scsi(R"({"asc": 11, "ascq": 1})"), "2 [6/47]") << "a warning";
}

TEST(SmartctlJson, NVMeFiguresAreThoseOfTheLog) {
    const CDriveReport drive =
        ReadDrive(NVMe("INTEL SSDPE2KX080T8", R"("critical_warning": 1, "temperature": 36,
        "available_spare": 9, "available_spare_threshold": 10, "percentage_used": 101, "data_units_read": 2,
        "data_units_written": 7773431, "power_cycles": 266, "power_on_hours": 2401, "unsafe_shutdowns": 43,
        "media_errors": 3, "num_err_log_entries": 4)"));
    EXPECT_EQ(Figure(drive, HealthFigure::CRITICAL_WARNING), "1 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE), "36 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::SPARE), "9 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::SPARE_THRESHOLD), "10 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::WEAR), "101 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_READ), "1024000 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_WRITTEN), "3979996672000 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_CYCLES), "266 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_ON_HOURS), "2401 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::UNSAFE_SHUTDOWNS), "43 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::MEDIA_ERRORS), "3 [4/2]");
    EXPECT_EQ(Figure(drive, HealthFigure::LOGGED_ERRORS), "4 [4/2]");
}

TEST(SmartctlJson, NoWearOfADriveThatWasWrittenAHundredTimesIsDoubtful) {
    const auto wear = [](int unitsWritten) {
        return Figure(ReadDrive(R"({"device": {"protocol": "NVMe"}, "model_name": "A",
                          "user_capacity": {"bytes": 5120000}, "nvme_smart_health_information_log":
                          {"percentage_used": 0, "data_units_written": )" +
                                std::to_string(unitsWritten) + "}}"),
                      HealthFigure::WEAR);
    };
    EXPECT_EQ(wear(999), "0 [4/2]");
    EXPECT_EQ(wear(1000), "0? [4/2]");
}

TEST(SmartctlJson, AnNVMeAmountOfNoneIsUnknown) {
    EXPECT_EQ(Figure(ReadDrive(NVMe("A", R"("data_units_written": 0)")), HealthFigure::BYTES_WRITTEN),
              "unknown");
    EXPECT_EQ(Figure(ReadDrive(NVMe("A", R"("data_units_written": 36893488147419103232,
        "data_units_written_s": "36893488147419103232")")),
                     HealthFigure::BYTES_WRITTEN),
              "unknown");
}

TEST(SmartctlJson, SCSIFiguresAreThoseOfThePages) {
    const CDriveReport drive = ReadDrive(SCSI(R"("temperature": {"current": 31, "drive_trip": 60},
        "scsi_grown_defect_list": 7, "power_on_time": {"hours": 5675, "minutes": 39}, "scsi_percentage_used_endurance_indicator": 3,
        "scsi_pending_defects": {"count": 2}, "scsi_error_counter_log": {
        "read": {"gigabytes_processed": "386.568", "total_uncorrected_errors": 1},
        "write": {"gigabytes_processed": "2124,590", "total_uncorrected_errors": 2},
        "verify": {"gigabytes_processed": "0.000", "total_uncorrected_errors": 4}})"));
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE), "31 [6/13]");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE_LIMIT), "60 [6/13]");
    EXPECT_EQ(Figure(drive, HealthFigure::REALLOCATED_SECTORS), "7 [7/0]");
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_ON_HOURS), "5675 [6/21]");
    EXPECT_EQ(Figure(drive, HealthFigure::WEAR), "3 [6/17]");
    EXPECT_EQ(Figure(drive, HealthFigure::PENDING_SECTORS), "2 [6/277]");
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_READ), "386568000000 [6/3]");
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_WRITTEN), "2124590000000 [6/2]")
        << "a comma of the caller's language";
    EXPECT_EQ(Figure(drive, HealthFigure::MEDIA_ERRORS), "7 [6/2]");
}

TEST(SmartctlJson, TemperatureOfTheEnvironmentPageIsRead) {
    EXPECT_EQ(Figure(ReadDrive(SCSI(R"("scsi_environmental_reports": {"temperature_1": {"current": 34}})")),
                     HealthFigure::TEMPERATURE),
              "34 [6/269]");
    EXPECT_EQ(
        Figure(ReadDrive(SCSI(R"("scsi_environmental_reports": {"temperature_1": {"current": "unknown"}})")),
               HealthFigure::TEMPERATURE),
        "unknown");
    const CDriveReport drive = ReadDrive(SCSI(
        R"("scsi_environmental_reports": {"temperature_1": {"parameter_code": 0, "current": -1, "lifetime_maximum": 72}})"));
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE), "-1 [6/269]");
    EXPECT_EQ(Figure(drive, HealthFigure::HIGHEST_TEMPERATURE), "72 [6/269]");
}

TEST(SmartctlJson, WhatStandsForNoTemperatureIsUnknown) {
    const CDriveReport scsi =
        ReadDrive(SCSI(R"("temperature": {"current": 0}, "scsi_temperature": {"drive_trip": 0})"));
    EXPECT_EQ(Figure(scsi, HealthFigure::TEMPERATURE), "unknown") << "printed for drives without the page";
    EXPECT_EQ(Figure(scsi, HealthFigure::TEMPERATURE_LIMIT), "unknown");
    EXPECT_EQ(Figure(ReadDrive(ATA(R"("temperature": {"current": 20, "op_limit_max": 127})")),
                     HealthFigure::TEMPERATURE_LIMIT),
              "unknown")
        << "the highest number is no limit";
    EXPECT_EQ(
        Figure(ReadDrive(ATA(R"("temperature": {"op_limit_max": 126})")), HealthFigure::TEMPERATURE_LIMIT),
        "126 [10/0]");
}

TEST(SmartctlJson, LimitsOfNVMeDrivesAreRead) {
    const CDriveReport drive = ReadDrive(R"({"device": {"protocol": "NVMe"}, "model_name": "A",
                      "nvme_composite_temperature_threshold": {"warning": 77, "critical": 80}})");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE_LIMIT), "77 [5/0]");
    EXPECT_EQ(Figure(drive, HealthFigure::CRITICAL_TEMPERATURE), "80 [5/0]");
}

TEST(SmartctlJson, StatisticsAndLogsOfDisksAreRead) {
    const CDriveReport drive = ReadDrive(ATA(R"("rotation_rate": 7200, "logical_block_size": 4096,
        "ata_device_statistics": {"pages": [
            {"number": 1, "table": [{"offset": 24, "name": "Logical Sectors Written", "value": 1000, "flags": {"valid": true}},
                                    {"offset": 16, "name": "Power-on Hours", "value": 5, "flags": {"valid": false}}]},
            {"number": 5, "table": [{"name": "Current Temperature", "value": -3, "flags": {"valid": true}}]}]},
        "ata_smart_error_log": {"extended": {"count": 9}}, "ata_pending_defects_log": {"count": 4},
        "ata_sct_status": {"temperature": {"lifetime_max": 55}}, "temperature": {"op_limit_max": 60})"));
    EXPECT_EQ(Figure(drive, HealthFigure::BYTES_WRITTEN), "4096000 [1/1]");
    EXPECT_EQ(Figure(drive, HealthFigure::POWER_ON_HOURS), "unknown");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE), "-3 [1/5]");
    EXPECT_EQ(Figure(drive, HealthFigure::LOGGED_ERRORS), "9 [2/3]");
    EXPECT_EQ(Figure(drive, HealthFigure::PENDING_SECTORS), "4 [2/12]");
    EXPECT_EQ(Figure(drive, HealthFigure::HIGHEST_TEMPERATURE), "55 [2/224]");
    EXPECT_EQ(Figure(drive, HealthFigure::TEMPERATURE_LIMIT), "60 [10/0]");
}

TEST(SmartctlJson, StatisticsAreKnownByTheirNamesToo) {
    struct Case {
        int m_Page;
        const char* m_Name;
        _HEALTH_FIGURE m_Figure;
    };
    constexpr Case CASES[] = {
        {1, "Lifetime Power-On Resets", HealthFigure::POWER_CYCLES},
        {1, "Power-on Hours", HealthFigure::POWER_ON_HOURS},
        {1, "Logical Sectors Written", HealthFigure::BYTES_WRITTEN},
        {1, "Logical Sectors Read", HealthFigure::BYTES_READ},
        {1, "Pending Error Count", HealthFigure::PENDING_SECTORS},
        {3, "Number of Reallocated Logical Sectors", HealthFigure::REALLOCATED_SECTORS},
        {4, "Number of Reported Uncorrectable Errors", HealthFigure::MEDIA_ERRORS},
        {5, "Current Temperature", HealthFigure::TEMPERATURE},
        {5, "Highest Temperature", HealthFigure::HIGHEST_TEMPERATURE},
        {5, "Specified Maximum Operating Temperature", HealthFigure::TEMPERATURE_LIMIT},
        {6, "Number of Interface CRC Errors", HealthFigure::INTERFACE_ERRORS},
        {7, "Percentage Used Endurance Indicator", HealthFigure::WEAR},
    };
    for (const Case& row : CASES) {
        const auto figure = [&row](int page) {
            return Figure(
                ReadDrive(ATA(R"("logical_block_size": 1, "ata_device_statistics": {"pages": [{"number": )" +
                              std::to_string(page) + R"(, "table": [{"name": ")" + row.m_Name +
                              R"(", "value": 7}]}]})")),
                row.m_Figure);
        };
        EXPECT_EQ(figure(row.m_Page), "7 [1/" + std::to_string(row.m_Page) + "]") << row.m_Name;
        EXPECT_EQ(figure(row.m_Page + 1), "unknown") << row.m_Name;
    }
}

TEST(SmartctlJson, FailedSelfTestsCountUntilOnePasses) {
    const auto failed = [](const std::string& rows) {
        return Figure(ReadDrive(ATA(R"("ata_smart_self_test_log": {"standard": {"table": [)" + rows + "]}}")),
                      HealthFigure::FAILED_SELF_TESTS);
    };
    const auto row = [](const std::string& type, const std::string& status) {
        return R"({"type": {"string": ")" + type + R"("}, "status": {"string": ")" + status + "\"}}";
    };
    EXPECT_EQ(failed(""), "0 [2/6]");
    EXPECT_EQ(failed(row("Short offline", "Completed: read failure")), "1 [2/6]");
    EXPECT_EQ(failed(row("Short offline", "Completed without error") + "," +
                     row("Short offline", "Completed: read failure")),
              "0 [2/6]");
    EXPECT_EQ(failed(row("Short offline", "Completed without error") + "," +
                     row("Extended offline", "Completed: read failure")),
              "1 [2/6]");
    EXPECT_EQ(failed(row("Extended captive", "Completed without error") + "," +
                     row("Short offline", "Fatal or unknown error")),
              "0 [2/6]");
    EXPECT_EQ(failed(row("Extended offline", "Aborted by host") + "," +
                     row("Extended offline", "Interrupted (host reset)")),
              "0 [2/6]");
    EXPECT_EQ(
        Figure(
            ReadDrive(SCSI(
                R"("scsi_self_test_0": {"code": {"string": "Background long"}, "result": {"string": "Failed in segment -->"}},
        "scsi_self_test_1": {"code": {"string": "Background short"}, "result": {"string": "Completed"}})")),
            HealthFigure::FAILED_SELF_TESTS),
        "1 [6/16]");
    EXPECT_EQ(
        Figure(
            ReadDrive(R"({"model_name": "A", "device": {"protocol": "NVMe"}, "nvme_self_test_log": {"table": [
        {"self_test_code": {"string": "Extended"}, "self_test_result": {"string": "Completed: failed segments"}}]}})"),
            HealthFigure::FAILED_SELF_TESTS),
        "1 [4/6]");
}

TEST(SmartctlJson, SelfTestsEndInTheWordsOfSmartctl) {
    struct Words {
        const char* m_Protocol;
        const char* m_Words;
        std::int64_t m_Failed;
    };
    // RELEASE_7_5.
    constexpr Words WORDS[] = {
        {"ATA", "Completed without error", 0},       {"ATA", "Aborted by host", 0},
        {"ATA", "Interrupted (host reset)", 0},      {"ATA", "Fatal or unknown error", 1},
        {"ATA", "Completed: unknown failure", 1},    {"ATA", "Completed: electrical failure", 1},
        {"ATA", "Completed: servo/seek failure", 1}, {"ATA", "Completed: read failure", 1},
        {"ATA", "Completed: handling damage??", 1},  {"ATA", "Self-test routine in progress", 0},
        {"ATA", "Unknown status (0x9)", 0},          {"NVMe", "Completed without error", 0},
        {"NVMe", "Aborted: Self-test command", 0},   {"NVMe", "Aborted: Controller Reset", 0},
        {"NVMe", "Aborted: Namespace removed", 0},   {"NVMe", "Aborted: Format NVM command", 0},
        {"NVMe", "Fatal or unknown test error", 1},  {"NVMe", "Completed: unknown failed segment", 1},
        {"NVMe", "Completed: failed segments", 1},   {"NVMe", "Aborted: unknown reason", 0},
        {"NVMe", "Aborted: sanitize operation", 0},  {"NVMe", "Unknown result (0xa)", 0},
        {"SCSI", "Completed                ", 0},    {"SCSI", "Aborted (by user command)", 0},
        {"SCSI", "Aborted (device reset ?) ", 0},    {"SCSI", "Unknown error, incomplete", 1},
        {"SCSI", "Completed, segment failed", 1},    {"SCSI", "Failed in first segment  ", 1},
        {"SCSI", "Failed in second segment ", 1},    {"SCSI", "Failed in segment -->    ", 1},
        {"SCSI", "Reserved(8)              ", 0},    {"SCSI", "Self test in progress ...", 0},
    };
    for (const Words& row : WORDS) {
        const std::string protocol = row.m_Protocol;
        const std::string result = R"({"string": ")" + std::string(row.m_Words) + "\"}";
        const std::string log =
            protocol == "ATA"
                ? R"("ata_smart_self_test_log": {"standard": {"table": [{"status": )" + result + "}]}}"
            : protocol == "NVMe"
                ? R"("nvme_self_test_log": {"table": [{"self_test_result": )" + result + "}]}"
                : R"("scsi_self_test_0": {"result": )" + result + "}";
        const CDriveReport drive =
            ReadDrive(R"({"model_name": "A", "device": {"protocol": ")" + protocol + "\"}, " + log + "}");
        EXPECT_EQ(drive.GetHealth().GetFigure(HealthFigure::FAILED_SELF_TESTS).GetValue(), row.m_Failed)
            << row.m_Words;
    }
}

TEST(SmartctlJson, CopiesHoldEverything) {
    const CDriveReport drive = ReadDrive(ATA(R"("power_cycle_count": 5)"));
    CDriveReport copy = ReadDrive(R"({"model_name": "B"})");
    copy = drive;
    EXPECT_EQ(copy.GetModel(), drive.GetModel());
    EXPECT_EQ(Figure(copy, HealthFigure::POWER_CYCLES), "5 [10/0]");
    EXPECT_NE(&copy.GetHealth(), &drive.GetHealth());
}

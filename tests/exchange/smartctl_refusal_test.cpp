// SPDX-License-Identifier: Apache-2.0
// What holds no drive is refused by its right name.

#include <sys/mman.h>
#include <zlib.h>

#include <limits>

#include "exchange/read_report.h"

using namespace PI;
using namespace PI::Test;

namespace {

const std::string NO_IDENTITY =
    "a report without identity: neither model nor serial number, as with -H or -A alone";

std::string WithMessage(const std::string& message) {
    return R"({"smartctl": {"messages": [{"string": ")" + message +
           R"(", "severity": "error"}], "exit_status": 2}, "device": {"name": "/dev/sda"}})";
}

/// Each refusal of a text as "line:column reason".
std::vector<std::string> Refusals(const std::string& text) {
    std::vector<std::string> refusals;
    for (const CReportRefusal& refusal : ReadAll(text).m_Refusals) {
        refusals.push_back(std::to_string(refusal.GetLine()) + ":" + std::to_string(refusal.GetColumn()) +
                           " " + refusal.GetReason());
    }
    return refusals;
}

using Texts = std::vector<std::string>;

std::string Packed(const std::string& text) {
    std::string packed(compressBound(text.size()) + 64, '\0');
    z_stream stream = {};
    deflateInit2(&stream, 1, Z_DEFLATED, 15 + 16, 9, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

}  // namespace

TEST(SmartctlRefusal, NamesWhatIsNoReportAtAll) {
    EXPECT_EQ(ReasonOf(""), "the text is empty");
    EXPECT_EQ(ReasonOf(" \r\n\t"), "the text is empty");
    EXPECT_EQ(ReasonOf("hello"), "no report of smartctl");
    EXPECT_EQ(ReasonOf("{}"), "no report of smartctl");
    EXPECT_EQ(ReasonOf("[]"), "no report of smartctl");
    EXPECT_EQ(ReasonOf("\xFF\xFE{\0"), "a text in UTF-16; reports are read in UTF-8");
    EXPECT_EQ(ReasonOf(std::string("{\0\"\0", 4)), "a text in UTF-16; reports are read in UTF-8");
    EXPECT_EQ(ReasonOf("---\njson_format_version:\n- 1\n- 0\n"),
              "a report as YAML; read are JSON (--json) and text");
    EXPECT_EQ(ReasonOf("json = {};\njson.smartctl = {};\n"),
              "a report as assignments (--json=g); read are JSON (--json) and text");
}

TEST(SmartctlRefusal, NullTextOfNoLengthIsEmpty) {
    ReadResult result;
    ReadSmartctl(nullptr, 0, result.m_Drives, result.m_Refusals);
    ASSERT_EQ(result.m_Refusals.size(), 1U);
    EXPECT_EQ(result.m_Refusals[0].GetReason(), "the text is empty");
}

TEST(SmartctlRefusal, NamesReportsWithoutADrive) {
    EXPECT_EQ(ReasonOf(R"({"smartctl": {}, "devices": [{"name": "/dev/sda", "type": "scsi"}]})"),
              "a list of devices from --scan, which says nothing of them");
    EXPECT_EQ(
        ReasonOf(R"({"smartctl": {}, "device": {"name": "/dev/sda"}, "smart_status": {"passed": true}})"),
        NO_IDENTITY);
    EXPECT_EQ(ReasonOf(WithMessage("Device is in STANDBY mode, exit(2)")),
              "a drive in standby, which was not woken");
    EXPECT_EQ(ReasonOf(WithMessage("Device is in SLEEP mode, exit(2)")),
              "a drive in standby, which was not woken");
    EXPECT_EQ(ReasonOf(WithMessage("Smartctl open device: /dev/sda failed: Permission denied")),
              "permission denied: smartctl needs the rights of root");
    EXPECT_EQ(ReasonOf(WithMessage("/dev/sda: Unknown device type 'x'")),
              "an unknown device type was asked for");
    EXPECT_EQ(ReasonOf(WithMessage("/dev/sda: Unable to detect device type")),
              "smartctl does not know the type of the device");
    EXPECT_EQ(
        ReasonOf(WithMessage("Smartctl open device: /dev/sda failed: DELL or MegaRaid controller, please try "
                             "adding '-d megaraid,N'")),
        "a volume of a RAID controller, which smartctl asks for its drives with -d");
    EXPECT_EQ(ReasonOf(WithMessage("something else")), "smartctl says: something else");
}

TEST(SmartctlRefusal, OneReportIsRefusedOnceWhateverItStandsIn) {
    const std::string report = R"({"json_format_version": [1, 0], "smart_status": {"passed": true}})";
    EXPECT_EQ(ReasonOf(R"({"serial_number": "1", "smart": )" + report + "}"), NO_IDENTITY);
    EXPECT_EQ(ReadDrive(R"({"device": {}, "reports": [{"model_name": "A"}]})").GetModel(), "A");
}

TEST(SmartctlRefusal, NamesTextsWithoutADrive) {
    const std::string header = "smartctl 7.4 2023-08-01 r5530 [x86_64-linux] (local build)\n\n";
    EXPECT_EQ(ReasonOf(header + "=== START OF READ SMART DATA SECTION ===\n"
                                "SMART overall-health self-assessment test result: PASSED\n"),
              NO_IDENTITY);
    EXPECT_EQ(ReasonOf(header + "Device is in STANDBY mode, exit(2)\n"),
              "a drive in standby, which was not woken");
    EXPECT_EQ(ReasonOf(header + "Smartctl open device: /dev/sda failed: Permission denied\n"),
              "permission denied: smartctl needs the rights of root");
    EXPECT_EQ(ReasonOf(header + "Smartctl open device: /dev/sda failed: INQUIRY failed\n"),
              "smartctl says: Smartctl open device: /dev/sda failed: INQUIRY failed");
    EXPECT_EQ(ReasonOf("/dev/sda -d sat # /dev/sda [SAT], ATA device\n"),
              "a list of devices from --scan, which says nothing of them");
}

TEST(SmartctlRefusal, SaysWhereATextBreaksOff) {
    const ReadResult result = ReadAll("{\n  \"model_name\": \"X\",\n  \"device\": {");
    ASSERT_EQ(result.m_Refusals.size(), 1U);
    EXPECT_EQ(result.m_Drives.size(), 0U);
    EXPECT_EQ(result.m_Refusals[0].GetReason(), "the report breaks off");
    EXPECT_EQ(result.m_Refusals[0].GetLine(), 3U);
    EXPECT_EQ(result.m_Refusals[0].GetColumn(), 14U);
}

TEST(SmartctlRefusal, EveryTruncationOfAReportIsRefusedAsOne) {
    const std::string text =
        R"({"model_name": "X\u00e9", "rotation_rate": -1.5e3, "trim": {"supported": true}, "a": [null]})";
    for (std::size_t length = 2; length < text.size(); ++length) {
        EXPECT_EQ(ReasonOf(text.substr(0, length)).find("the report breaks off"), 0U)
            << text.substr(0, length);
    }
}

TEST(SmartctlRefusal, SaysWhereATextIsNoJson) {
    const ReadResult result =
        ReadAll("{\"model_name\": \"X\",\n \"device\": nothing}\n{\"model_name\": \"Y\"}");
    ASSERT_EQ(result.m_Refusals.size(), 1U);
    EXPECT_EQ(result.m_Refusals[0].GetReason().find("no JSON: "), 0U) << result.m_Refusals[0].GetReason();
    EXPECT_EQ(result.m_Refusals[0].GetLine(), 2U);
    ASSERT_EQ(result.m_Drives.size(), 1U) << "the next report is read";
    EXPECT_EQ(result.m_Drives[0].GetModel(), "Y");
    EXPECT_EQ(ReadAll("{\"model_name\": nothing}\n{{\"model_name\": \"Y\"}").m_Drives.size(), 0U)
        << "only a list is looked into";
}

TEST(SmartctlRefusal, WhatFollowsADocumentAndBreaksOffIsRefused) {
    const std::string report = R"({"model_name": "X"})";
    EXPECT_EQ(Refusals(report + "{"), Texts{"1:21 the report breaks off"});
    EXPECT_EQ(Refusals(report + "["), Texts{"1:21 the report breaks off"});
    EXPECT_EQ(Refusals(report + R"({"a":)"), Texts{"1:25 the report breaks off"});
    EXPECT_EQ(Refusals(report + "\n[{"), Texts{"2:3 the report breaks off"});
    EXPECT_EQ(Refusals(report + R"([{"a": 1})"), Texts{"1:29 the report breaks off"});
    EXPECT_EQ(ReadAll(report + "{").m_Drives.size(), 1U);
    EXPECT_EQ(Refusals(report + "{a: 1}"), Texts{"1:21 no JSON: Missing a name for object member."});
    EXPECT_EQ(Refusals(report + "\n[12:00] done {or not}\n"), Texts{}) << "words of other programs";
}

TEST(SmartctlRefusal, EveryTruncationOfAListIsRefusedBesideItsReports) {
    const std::string text = R"([{"model_name": "X"}, {"model_name": "Y"}])";
    for (std::size_t length = 1; length < text.size(); ++length) {
        const ReadResult result = ReadAll(text.substr(0, length));
        EXPECT_EQ(result.m_Drives.size(), length < 20 ? 0U : length < 41 ? 1U : 2U) << text.substr(0, length);
        ASSERT_EQ(result.m_Refusals.size(), 1U) << text.substr(0, length);
        EXPECT_EQ(result.m_Refusals[0].GetReason(), "the report breaks off");
        EXPECT_EQ(result.m_Refusals[0].GetColumn(), length + 1);
    }
}

TEST(SmartctlRefusal, ElementsOfAListOfReportsThatAreNoneAreRefusedWhereTheyStand) {
    EXPECT_EQ(Refusals("[{\"model_name\": \"X\"},\n 5, {\"a\": 1}, null,\n\"x\", {\"smart_status\": {}}]"),
              (Texts{"2:2 no report of smartctl", "2:5 no report of smartctl", "2:15 no report of smartctl",
                     "3:1 no report of smartctl", "3:6 " + NO_IDENTITY}));
    EXPECT_EQ(Refusals("[[], {\"model_name\": \"X\"}]"), Texts{"1:2 no report of smartctl"});
    EXPECT_EQ(
        Refusals("\n{\"disks\": [{\"model_name\": \"X\"}, {}, {\"model_name\": \"Y\"}], \"tags\": [1]}"),
        Texts{"2:1 no report of smartctl"});
    EXPECT_EQ(Refusals("[[1], {}]"), Texts{"0:0 no report of smartctl"});
    EXPECT_EQ(Refusals("[[1], {}]{\"model_name\": \"X\"}"), Texts{}) << "of another program";
}

TEST(SmartctlRefusal, AListThatIsBrokenIsRefusedBesideWhatWasRead) {
    const ReadResult result =
        ReadAll("[{\"model_name\": \"X\"} {\"model_name\": \"Y\"}]\n{\"model_name\": \"Z\"}");
    ASSERT_EQ(result.m_Refusals.size(), 1U);
    EXPECT_EQ(result.m_Refusals[0].GetReason(), "no JSON: Missing a comma or ']' after an array element.");
    EXPECT_EQ(result.m_Refusals[0].GetColumn(), 22U);
    ASSERT_EQ(result.m_Drives.size(), 2U);
    EXPECT_EQ(result.m_Drives[1].GetModel(), "Z");
}

TEST(SmartctlRefusal, WhatHasASerialNumberAndIsNoReportIsRefused) {
    EXPECT_EQ(ReasonOf("\n"
                       R"({"format": "pitool drive", "version": 1, "drives": [{"file": "a.json",
                             "model": "X", "serial_number": "S1", "state": "good"}], "errors": []})"),
              "output of pitool, no report of smartctl");
    EXPECT_EQ(ReasonOf(R"({"model": "X", "serial_number": "S1"})"), "no report of smartctl");
    EXPECT_EQ(ReasonOf(R"({"device": "/dev/sda", "serial_number": "S1"})"), "no report of smartctl");
    EXPECT_EQ(ReadDrive(R"({"serial_number": "S1", "power_on_time": {"hours": 1}})").GetSerialNumber(), "S1");
}

TEST(SmartctlRefusal, CopiesAreEqualAndOnTheirOwn) {
    const CReportRefusal refusal("reason", 3, 7);
    CReportRefusal copy("other");
    copy = refusal;
    EXPECT_EQ(copy.GetReason(), "reason");
    EXPECT_EQ(copy.GetLine(), 3U);
    EXPECT_EQ(copy.GetColumn(), 7U);
    EXPECT_EQ(CReportRefusal("reason").GetLine(), 0U);
}

TEST(SmartctlGzip, IsUnpackedUpToTheLimit) {
    const std::string report = R"({"model_name": "X"})";
    EXPECT_EQ(ReadDrive(Packed(report)).GetModel(), "X");
    EXPECT_EQ(ReadAll(Packed(report) + Packed("\n" + report)).m_Drives.size(), 2U)
        << "members one after another";
    constexpr std::size_t LIMIT = std::size_t{64} << 20;
    const std::string most = report + std::string(LIMIT - report.size(), ' ');
    EXPECT_EQ(ReadDrive(Packed(most)).GetModel(), "X");
    EXPECT_EQ(ReasonOf(Packed(most + " ")), "the compressed text unpacks to more than 64 MiB");
    EXPECT_EQ(ReasonOf(Packed(most + most)), "the compressed text unpacks to more than 64 MiB");
}

TEST(SmartctlGzip, IsReadUpToTheLengthThatZlibCanCount) {
    constexpr std::size_t MOST = std::numeric_limits<uInt>::max();
    void* const pages =
        mmap(nullptr, MOST + 1, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(pages, MAP_FAILED);
    char* const text = static_cast<char*>(pages);
    text[0] = '\x1F';
    text[1] = '\x8B';
    ReadResult result;
    ReadSmartctl(text, MOST, result.m_Drives, result.m_Refusals);
    ReadSmartctl(text, MOST + 1, result.m_Drives, result.m_Refusals);
    munmap(pages, MOST + 1);
    ASSERT_EQ(result.m_Refusals.size(), 2U);
    EXPECT_EQ(result.m_Refusals[0].GetReason(), "the compressed text is damaged");
    EXPECT_EQ(result.m_Refusals[1].GetReason(), "the compressed text is too long");
}

TEST(SmartctlGzip, IsRefusedWhenDamaged) {
    std::string packed = Packed(R"({"model_name": "a model that takes some bytes"})");
    EXPECT_EQ(ReasonOf(packed.substr(0, packed.size() - 3)), "the compressed text breaks off");
    EXPECT_EQ(ReasonOf(packed.substr(0, 2)), "the compressed text breaks off");
    packed[packed.size() - 5] = static_cast<char>(~packed[packed.size() - 5]);
    EXPECT_EQ(ReasonOf(packed), "the compressed text is damaged");
}

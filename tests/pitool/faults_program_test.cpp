// SPDX-License-Identifier: Apache-2.0
// The built program, given inputs and outputs that fail: every command that reads or writes them.

#include "program_runner.h"
#include "support/hostile_xml.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace pitool::test;
namespace fs = std::filesystem;

constexpr uid_t NOBODY = 65534;
constexpr const char* SET_USER = "/usr/bin/setpriv";

/// A directory of its own for each test, that every user may read.
class ProgramFaults : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "pitool_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        m_Directory = pattern;
        fs::permissions(m_Directory, fs::perms(0755));
    }
    void TearDown() override { fs::remove_all(m_Directory); }

    std::string Path(const std::string& name) const { return m_Directory + "/" + name; }

    void Create(const std::string& name, const std::string& content) const {
        std::ofstream(Path(name), std::ios::binary) << content;
    }

    /// Runs a shell's command line in the directory, in which $PITOOL is the program and $EXAMPLES the
    /// samples; blanks in either divide nothing.
    Outcome Shell(const std::string& command, int output = -1) const {
        return RunProgram(
            "/bin/sh", m_Directory,
            {"-c", "IFS= PITOOL='" PITOOL_PROGRAM "' EXAMPLES='" PITOOL_ALL_EXAMPLES "'\n" + command}, "",
            output);
    }

    /// A command that is refused: nothing printed but one line of error.
    void ExpectRefusal(const std::string& command, const std::string& error) const {
        const Outcome run = Shell(command);
        EXPECT_EQ(run.m_Output, "") << command;
        EXPECT_EQ(run.m_Errors, "pitool: " + error + "\n") << command;
        EXPECT_EQ(run.m_ExitStatus, 1) << command;
    }

    std::string m_Directory;
};

/// The largest size that any process begun here has had, in bytes.
std::size_t PeakMemoryOfPrograms() {
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

}  // namespace

TEST_F(ProgramFaults, AGigabyteIsRefusedInLittleMemory) {
    Create("big", "");
    fs::resize_file(Path("big"), 1024U * 1024U * 1024U);
    ExpectRefusal("$PITOOL drive big", "big: larger than 64 mebibytes");
    ExpectRefusal("$PITOOL drive - < big", "-: larger than 64 mebibytes");
    ExpectRefusal("$PITOOL drive --events --strings big $EXAMPLES/drives/wd-disk.json",
                  "big: larger than 64 mebibytes");
    ExpectRefusal("$PITOOL layout big", "big: larger than 64 mebibytes");
    ExpectRefusal("$PITOOL layout - < big", "-: larger than 64 mebibytes");
    ExpectRefusal("$PITOOL event < big", "standard input: larger than 64 mebibytes");
    ExpectRefusal("$PITOOL event --id 10055 --strings big", "big: larger than 64 mebibytes");
    ExpectRefusal("$PITOOL eta < big", "standard input: line 1: longer than 4096 bytes");
    EXPECT_LT(PeakMemoryOfPrograms(), 768U * 1024U * 1024U);
}

TEST_F(ProgramFaults, AnEndlessDeviceIsRefused) {
    ExpectRefusal("$PITOOL drive /dev/zero", "/dev/zero: a device, no file");
    ExpectRefusal("$PITOOL drive - < /dev/zero", "-: larger than 64 mebibytes");
    ExpectRefusal("$PITOOL layout /dev/zero", "/dev/zero: a device, no file");
    ExpectRefusal("$PITOOL event < /dev/zero", "standard input: larger than 64 mebibytes");
    ExpectRefusal("$PITOOL event --id 10055 --strings /dev/zero", "/dev/zero: larger than 64 mebibytes");
}

TEST_F(ProgramFaults, AFileOfZerosIsRefused) {
    Create("zeros", std::string(10'000, '\0'));
    ExpectRefusal("$PITOOL drive zeros", "zeros: no report of smartctl");
    ExpectRefusal("$PITOOL drive - < zeros", "-: no report of smartctl");
    ExpectRefusal("$PITOOL drive --events --strings zeros $EXAMPLES/drives/wd-disk.json",
                  "zeros:1:1: the root element is not Strings");
    ExpectRefusal("$PITOOL layout zeros", "zeros:1:1: no well-formed XML: a zero byte");
    ExpectRefusal("$PITOOL event < zeros", "standard input: byte 1: A zero byte.");
    ExpectRefusal("$PITOOL event --id 10055 --strings zeros", "zeros:1:1: the root element is not Strings");
    ExpectRefusal("$PITOOL eta < zeros", "standard input: line 1: longer than 4096 bytes");
}

TEST_F(ProgramFaults, AnEmptyFileIsRefused) {
    Create("empty", "");
    ExpectRefusal("$PITOOL drive empty", "empty: the text is empty (line 1, column 1)");
    ExpectRefusal("$PITOOL drive --events --strings empty $EXAMPLES/drives/wd-disk.json",
                  "empty:1:1: the root element is not Strings");
    ExpectRefusal("$PITOOL layout empty", "empty:1:1: no well-formed XML: No document element found");
    ExpectRefusal("$PITOOL event < empty", "standard input: byte 1: The document is empty.");
    ExpectRefusal("$PITOOL event --id 10055 --strings empty", "empty:1:1: the root element is not Strings");
}

TEST_F(ProgramFaults, AnEmptyStreamOfSamplesGivesNoEstimate) {
    const Outcome run = Shell("$PITOOL eta < /dev/null");
    EXPECT_EQ(run.m_Output + run.m_Errors, "");
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST_F(ProgramFaults, ADirectoryInPlaceOfAFileIsRefused) {
    ExpectRefusal("$PITOOL drive - < .", "-: Is a directory");
    ExpectRefusal("$PITOOL layout .", ".: Is a directory");
    ExpectRefusal("$PITOOL event < .", "standard input: Is a directory");
    ExpectRefusal("$PITOOL event --id 10055 --strings .", ".: cannot be read: Is a directory");
    ExpectRefusal("$PITOOL eta < .", "standard input: Is a directory");
}

TEST_F(ProgramFaults, ADirectoryWithoutPermissionIsRefused) {
    fs::create_directory(Path("closed"));
    Create("closed/file", "");
    fs::permissions(Path("closed"), fs::perms::none);
    std::string asUser;
    if (geteuid() == 0) {  // nothing is forbidden to root
        // Counters of coverage go where that user may write.
        fs::create_directory(Path("counters"));
        fs::permissions(Path("counters"), fs::perms::all);
        asUser = "GCOV_PREFIX=counters " + std::string(SET_USER) + " --reuid=" + std::to_string(NOBODY) +
                 " --regid=" + std::to_string(NOBODY) + " --clear-groups ";
        if (Shell(asUser + "$PITOOL --version").m_ExitStatus != 0) {
            GTEST_SKIP() << "another user cannot run the program, so root has nobody to try this as";
        }
    }
    ExpectRefusal(asUser + "$PITOOL drive closed", "closed: Permission denied");
    fs::create_directories(Path("both/closed"));
    fs::permissions(Path("both/closed"), fs::perms::none);
    ExpectRefusal(asUser + "$PITOOL drive both", "both/closed: Permission denied");
    fs::copy_file(PITOOL_ALL_EXAMPLES "/drives/wd-disk.json", Path("both/wd.json"));
    const Outcome both = Shell(asUser + "$PITOOL drive --check both");
    EXPECT_EQ(both.m_Output.substr(0, 11), "DRIVES UNKN") << "the other files are read";
    EXPECT_EQ(both.m_Errors, "pitool: both/closed: Permission denied\n");
    fs::permissions(Path("both/closed"), fs::perms::owner_all);
    ExpectRefusal(asUser + "$PITOOL drive closed/file", "closed/file: Permission denied");
    ExpectRefusal(asUser + "$PITOOL layout closed/file", "closed/file: Permission denied");
    ExpectRefusal(asUser + "$PITOOL event --id 10055 --strings closed/file",
                  "closed/file: cannot be read: Permission denied");
    fs::permissions(Path("closed"), fs::perms::owner_all);
}

TEST_F(ProgramFaults, AFifoIsReadToItsEnd) {
    ASSERT_EQ(mkfifo(Path("fifo").c_str(), 0600), 0);
    const Outcome file = Shell("$PITOOL layout - < $EXAMPLES/layouts/raid1-array.xml");
    const Outcome fifo = Shell("cat $EXAMPLES/layouts/raid1-array.xml > fifo & $PITOOL layout fifo");
    EXPECT_EQ(fifo.m_Output, file.m_Output);
    EXPECT_EQ(fifo.m_Errors, "");
    EXPECT_EQ(fifo.m_ExitStatus, 0);
}

TEST_F(ProgramFaults, AClosedInputIsRefused) {
    ExpectRefusal("$PITOOL drive - <&-", "-: Bad file descriptor");
    ExpectRefusal("$PITOOL layout - <&-", "-: Bad file descriptor");
    ExpectRefusal("$PITOOL event <&-", "standard input: Bad file descriptor");
    ExpectRefusal("$PITOOL eta <&-", "standard input: Bad file descriptor");
}

TEST_F(ProgramFaults, AFileIsReadWhereNoInputIsOpen) {
    const Outcome run = Shell("$PITOOL drive --format csv $EXAMPLES/drives/wd-disk.json <&-");
    EXPECT_EQ(run.m_Errors, "");
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST_F(ProgramFaults, AClosedOutputIsOneErrorWithEveryCommand) {
    for (const char* command :
         {"drive $EXAMPLES/drives/wd-disk.json", "layout $EXAMPLES/layouts/raid1-array.xml",
          "event --id 10055", "name 30045", "name --list 'error codes'", "sense 5 24 0"}) {
        ExpectRefusal(std::string("$PITOOL ") + command + " >&-", "standard output: Bad file descriptor");
    }
    ExpectRefusal("echo '50 0' | $PITOOL eta >&-", "standard output: Bad file descriptor");
}

TEST_F(ProgramFaults, AReaderThatWentAwayIsNoCrashAndNoMessage) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    close(ends[0]);
    for (const char* command : {"drive $EXAMPLES/drives/wd-disk.json", "drive --json $EXAMPLES/drives",
                                "layout $EXAMPLES/layouts/raid1-array.xml", "event --id 10055", "name 30045",
                                "name --list 'error codes'", "sense 5 24 0", "--help"}) {
        const Outcome run = Shell(std::string("$PITOOL ") + command, ends[1]);
        EXPECT_EQ(run.m_Errors, "") << command;
        EXPECT_EQ(run.m_ExitStatus, 1) << command;
    }
    const Outcome run = Shell("yes '50 0' | head -1000 | $PITOOL eta", ends[1]);
    close(ends[1]);
    EXPECT_EQ(run.m_Errors, "");
    EXPECT_EQ(run.m_ExitStatus, 1);
}

TEST_F(ProgramFaults, TheFirstLineOfMuchIsToBeHad) {
    const Outcome run = Shell("$PITOOL name --list 'event identifiers' | head -1");
    EXPECT_EQ(run.m_Errors, "");
    EXPECT_EQ(std::count(run.m_Output.begin(), run.m_Output.end(), '\n'), 1) << run.m_Output;
}

TEST_F(ProgramFaults, ADocumentThatReachesOutsideReachesNothing) {
    Create("secret", "31337");
    const std::string outside = PI::Test::ExternalEntity(Path("secret"));
    Create("text.xml", outside + "<ArrayConfiguration Size='5' Units='21025'>&e9;</ArrayConfiguration>");
    Create("number.xml", outside + "\n<ArrayConfiguration Size='&e9;' Units='21025'/>");
    const Outcome text = Shell("$PITOOL layout text.xml");
    EXPECT_EQ(text.m_Output,
              "array, size 5 (5 bytes), sizes in bytes\n|-- containers: none\n`-- logical drives: none\n");
    EXPECT_EQ(text.m_Errors, "");
    const Outcome number = Shell("$PITOOL layout number.xml");
    EXPECT_EQ(number.m_Output,
              "array, size 0 (0 bytes), sizes in bytes\n|-- containers: none\n`-- logical drives: none\n");
    EXPECT_EQ(number.m_Errors,
              "pitool: number.xml:2:1: warning: ArrayConfiguration: Size \"&e9;\" is no number, read as 0\n");
}

TEST_F(ProgramFaults, AnExpandingDocumentDoesNotExpand) {
    Create("bomb.xml", PI::Test::EntityBomb() +
                           "\n<ArrayConfiguration Size='&e9;' Units='21025'>&e9;</ArrayConfiguration>");
    const Outcome run = Shell("$PITOOL layout bomb.xml");
    EXPECT_EQ(run.m_Output,
              "array, size 0 (0 bytes), sizes in bytes\n|-- containers: none\n`-- logical drives: none\n");
    EXPECT_EQ(run.m_Errors,
              "pitool: bomb.xml:2:1: warning: ArrayConfiguration: Size \"&e9;\" is no number, read as 0\n");
}

TEST_F(ProgramFaults, DepthIsRefused) {
    for (const std::size_t levels : {10'000U, 100'000U}) {
        Create("deep.xml", PI::Test::Nested(levels, ""));
        ExpectRefusal("$PITOOL layout deep.xml",
                      "deep.xml:1:1: the root element is \"Level\", neither ArrayConfiguration nor "
                      "LogicalDriveConfiguration");
        ExpectRefusal("$PITOOL event --id 10055 --strings deep.xml",
                      "deep.xml:1:2: the root element is not Strings");
        Create("lists.json", "{\"a\":" + std::string(levels, '[') + std::string(levels, ']') + "}");
        ExpectRefusal("$PITOOL drive lists.json", "lists.json: no report of smartctl");
        ExpectRefusal("$PITOOL event < lists.json",
                      "standard input: the document has an unknown member \"a\"");
        std::string objects;
        for (std::size_t level = 0; level < levels; ++level) {
            objects += "{\"a\":";
        }
        Create("objects.json", objects + "1" + std::string(levels, '}'));
        ExpectRefusal("$PITOOL drive objects.json", "objects.json: no report of smartctl");
        ExpectRefusal("$PITOOL event < objects.json",
                      "standard input: the document has an unknown member \"a\"");
    }
}

TEST_F(ProgramFaults, OtherEncodingsAreReadOrRefused) {
    const std::string text = "<ArrayConfiguration Size='5' Units='21025'/>";
    Create("utf16.xml", PI::Test::Utf16(text, false));
    ExpectRefusal("$PITOOL layout utf16.xml",
                  "utf16.xml:1:1: no well-formed XML: UTF-16 or UTF-32 where UTF-8 is expected");
    Create("utf8.xml", text);
    Create("latin1.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><!-- \xE4 -->" + text);
    const Outcome utf8 = Shell("$PITOOL layout - < utf8.xml");
    const Outcome latin1 = Shell("$PITOOL layout - < latin1.xml");
    EXPECT_NE(utf8.m_Output, "");
    EXPECT_EQ(latin1.m_Output, utf8.m_Output);
    EXPECT_EQ(latin1.m_Errors, "");
    EXPECT_EQ(latin1.m_ExitStatus, 0);
}

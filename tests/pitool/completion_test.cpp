// SPDX-License-Identifier: Apache-2.0
// The completion in a real bash: what it offers, and what the Tab key makes of it.

#include "help_reader.h"
#include "program_runner.h"

#include <gtest/gtest.h>

#include <pty.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace {

using namespace pitool::test;
namespace fs = std::filesystem;

/// Bash with the completion; each argument is a word of the command line, the last one that at the cursor.
Words Completions(std::vector<std::string> words) {
    const std::string script = "set -u; . '" PITOOL_COMPLETION
                               "'; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _pitool \"$1\"; "
                               "[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\"";
    words.insert(words.begin(), {"-c", script, "bash", PITOOL_PROGRAM});
    const Outcome run = RunProgram("/bin/bash", PITOOL_ALL_EXAMPLES, words);
    EXPECT_EQ(run.m_Errors, "");
    const std::vector<std::string> lines = Lines(run.m_Output);
    return {lines.begin(), lines.end()};
}

constexpr const char* PROMPT = "READY> ";
constexpr const char* PACKAGE = "/usr/share/bash-completion/bash_completion";

/// A shell at a terminal, in the folder of the examples, with pitool in its path.
class InteractiveShell {
public:
    InteractiveShell() {
        const winsize size{24, 500, 0, 0};
        m_Process = forkpty(&m_Terminal, nullptr, nullptr, &size);
        if (m_Process == 0) {
            const std::string path =
                "PATH=" + fs::path(PITOOL_PROGRAM).parent_path().string() + ":/usr/bin:/bin";
            const std::string prompt = std::string("PS1=") + PROMPT;
            const std::string data = "XDG_DATA_DIRS=" PITOOL_SHARE;
            const char* variables[] = {path.c_str(),        prompt.c_str(),      data.c_str(), "TERM=dumb",
                                       "INPUTRC=/dev/null", "HOME=/nonexistent", nullptr};
            const char* argv[] = {"bash", "--norc", "--noprofile", "-i", nullptr};
            if (chdir(PITOOL_ALL_EXAMPLES) == 0) {
                execve("/bin/bash", const_cast<char**>(argv), const_cast<char**>(variables));
            }
            _exit(127);
        }
        ReadToPrompt();
        Type("bind 'set enable-bracketed-paste off'\n");
    }
    ~InteractiveShell() {
        close(m_Terminal);
        kill(m_Process, SIGKILL);
        waitpid(m_Process, nullptr, 0);
    }
    InteractiveShell(const InteractiveShell&) = delete;
    InteractiveShell& operator=(const InteractiveShell&) = delete;

    /// Types a line and gives what the terminal shows up to the next prompt, without carriage returns.
    std::string Type(const std::string& line) {
        EXPECT_EQ(write(m_Terminal, line.data(), line.size()), static_cast<ssize_t>(line.size()));
        return ReadToPrompt();
    }

private:
    std::string ReadToPrompt() {
        const std::string prompt = PROMPT;
        std::string shown;
        char c = 0;
        while (read(m_Terminal, &c, 1) == 1) {
            shown += c == '\r' ? "" : std::string(1, c);
            if (shown.size() >= prompt.size() &&
                shown.compare(shown.size() - prompt.size(), prompt.size(), prompt) == 0) {
                return shown.substr(0, shown.size() - prompt.size());
            }
        }
        ADD_FAILURE() << "the shell has gone: " << shown;
        return shown;
    }

    int m_Terminal = -1;
    pid_t m_Process = -1;
};

/// What a command line prints that is typed with the key Tab at some places.
std::string Answer(InteractiveShell& shell, const std::string& line) {
    const std::string shown = shell.Type(line + "\n");
    return shown.substr(shown.find('\n') + 1);
}

/// What pitool prints, on a terminal like that of the shell.
std::string Printed(const std::vector<std::string>& arguments) {
    return RunProgram(PITOOL_PROGRAM, PITOOL_ALL_EXAMPLES, arguments).m_Output;
}

void ExpectTabToComplete(InteractiveShell& shell) {
    EXPECT_EQ(Answer(shell, "pitool dr\t--ev\tdri\tfail\t"),
              Printed({"drive", "--events", "drives/failing-hgst-disk.json"}));
    EXPECT_EQ(Answer(shell, "pitool lay\tlay\traid1-\t"), Printed({"layout", "layouts/raid1-array.xml"}));
    EXPECT_EQ(Answer(shell, "pitool name raid_l\t"), Printed({"name", "RAID_LEVEL"}));
    EXPECT_EQ(Answer(shell, "pitool name --li\t\"oper\t"),
              Printed({"name", "--list", "operation identifiers"}));
    EXPECT_EQ(Answer(shell, "pitool name --list=ope\t"),
              Printed({"name", "--list", "operation identifiers"}));
    EXPECT_EQ(Answer(shell, "pitool --col\t\b=al\tsen\t5 24 00 | cat"),
              Printed({"sense", "--color=always", "5", "24", "00"}));
}

}  // namespace

TEST(Completion, OffersEveryCommandAndOptionOfTheHelpAndNoOther) {
    Words commands = Commands();
    EXPECT_EQ(Completions({""}), commands);
    commands.insert("");
    for (const std::string& command : commands) {
        Words options = Options(command);
        options.insert("--color");  // of the program, but taken after the command as well
        EXPECT_EQ(command.empty() ? Completions({"--"}) : Completions({command, "--"}), options) << command;
    }
}

TEST(Completion, OffersTheOtherSpellingToThoseWhoHaveBegunWithIt) {
    EXPECT_EQ(Completions({"--colo"}), Words{"--color"});
    EXPECT_EQ(Completions({"eta", "--colou"}), Words{"--colour"});
}

TEST(Completion, LeavesOutOptionsThatWereGiven) {
    EXPECT_EQ(Completions({"drive", "--json", "--colour", "never", "--"}),
              (Words{"--by-model", "--check", "--events", "--format", "--help", "--limit", "--output",
                     "--sort", "--state", "--strings"}));
    EXPECT_EQ(Completions({"event", "--resource2", "5", "--resource"}),
              (Words{"--resource1", "--resource3", "--resource4", "--resource5", "--resource6"}));
    EXPECT_EQ(Completions({"drive", "--", "--"}), Words{});
}

TEST(Completion, OffersFilesOfTheKindThatACommandReads) {
    EXPECT_EQ(Completions({"drive", ""}), (Words{"drives", "events", "history", "layouts", "plugins",
                                                 "progress", "sense", "service", "trees"}));
    EXPECT_EQ(Completions({"drive", "drives/w"}),
              (Words{"drives/wd-disk.json", "drives/worn-intel-ssd.json"}));
    EXPECT_EQ(Completions({"drive", "events/s"}), (Words{"events/spare-taken.json"}));
    EXPECT_EQ(Completions({"layout", "layouts/raid1-"}), Words{"layouts/raid1-array.xml"});
    EXPECT_EQ(Completions({"layout", "layouts/raid1-array.xml", "layouts/"}), Words{});
    EXPECT_EQ(Completions({"forecast", "history/2025.json", "history/2026"}), Words{"history/2026.json"});
    EXPECT_EQ(Completions({"compare", "history/2025.json", "history/2026"}), Words{"history/2026.json"});
    EXPECT_EQ(Completions({"compare", "history/2025.json", "history/2026.json", "history/"}), Words{});
    EXPECT_EQ(Completions({"drive", "--events", "--strings", "events/"}), Words{"events/strings.de.xml"});
    EXPECT_EQ(Completions({"event", "<", "events/r"}), Words{"events/rebuild-failed.json"});
}

TEST(Completion, OffersTheValuesOfOptions) {
    const Words when{"always", "auto", "never"};
    EXPECT_EQ(Completions({"--color", ""}), when);
    EXPECT_EQ(Completions({"--color", "="}), when);
    EXPECT_EQ(Completions({"drive", "--colour", "=", "a"}), (Words{"always", "auto"}));
    EXPECT_EQ(Completions({"event", "--severity", ""}), (Words{"DEBUG", "ERROR", "INFORMATION", "WARNING"}));
    EXPECT_EQ(Completions({"name", "--list", "property"}),
              (Words{"property-identifiers", "property-values"}));
    EXPECT_EQ(Completions({"name", "--list", "\"property i"}), Words{"property identifiers"});
    EXPECT_EQ(Completions({"event", "--host", ""}), Words{});
    EXPECT_EQ(Completions({"drive", "--format", ""}), (Words{"csv", "html", "json", "prometheus", "text"}));
    EXPECT_EQ(Completions({"drive", "--sort", "s"}), (Words{"serial", "size", "state"}));
    EXPECT_EQ(Completions({"drive", "--state", "f"}), Words{"failed"});
    EXPECT_EQ(Completions({"drive", "--limit", ""}), Words{});
}

TEST(Completion, OffersNamesInAnyCase) {
    EXPECT_EQ(Completions({"name", "raid_l"}), Words{"RAID_LEVEL"});
    EXPECT_EQ(Completions({"event", "--id", "Rebuild_f"}), (Words{"REBUILD_FAILED", "REBUILD_FINISHED"}));
    EXPECT_EQ(Completions({"name", "a.*"}), Words{});
    EXPECT_EQ(Completions({"eta", ""}), Words{});
    EXPECT_EQ(Completions({"sense", ""}), Words{});
}

TEST(Completion, OffersEveryNameThereIs) {
    std::size_t names = 0;
    for (const char* vocabulary : {"error", "property-i", "property-v", "operation", "event"}) {
        const Outcome run = RunProgram(PITOOL_PROGRAM, ".", {"name", "--list", vocabulary});
        const Words own = Find(run.m_Output, "\n[0-9]+ +([^ ()\n]+) ");
        const Words offered = Completions({"name", ""});
        names += own.size();
        EXPECT_TRUE(std::includes(offered.begin(), offered.end(), own.begin(), own.end())) << vocabulary;
    }
    EXPECT_GT(names, 2000U);
}

TEST(Completion, OffersFilesWithBlanks) {
    const std::string folder = testing::TempDir() + "pitool completion";
    fs::create_directories(folder + "/sub folder");
    EXPECT_EQ(RunProgram("/bin/sh", folder, {"-c", ": > 'a disk.json'; : > 'a disk.c'"}).m_ExitStatus, 0);
    EXPECT_EQ(Completions({"drive", folder + "/"}), (Words{folder + "/sub folder", folder + "/a disk.json"}));
    EXPECT_EQ(Completions({"drive", "\"" + folder + "/a"}), Words{folder + "/a disk.json"});
    fs::remove_all(folder);
}

TEST(Completion, TheTabKeyCompletes) {
    InteractiveShell shell;
    shell.Type(". '" PITOOL_COMPLETION "'\n");
    ExpectTabToComplete(shell);
}

TEST(Completion, ThePackageBashCompletionFindsIt) {
    if (!fs::exists(PACKAGE)) {
        GTEST_SKIP() << "the package bash-completion is not installed";
    }
    InteractiveShell shell;
    shell.Type(std::string(". ") + PACKAGE + "\n");
    ExpectTabToComplete(shell);
}

// SPDX-License-Identifier: Apache-2.0

#include "line_reader.h"

#include <unistd.h>

#include <gtest/gtest.h>

using namespace pitool;

namespace {

/// A pipe with a text in it whose writing end is closed.
class TextPipe {
public:
    explicit TextPipe(const std::string& text) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe(ends), 0);
        EXPECT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
        close(ends[1]);
        m_Descriptor = ends[0];
    }
    ~TextPipe() { close(m_Descriptor); }
    TextPipe(const TextPipe&) = delete;
    TextPipe& operator=(const TextPipe&) = delete;

    int m_Descriptor;
};

}  // namespace

TEST(LineReader, GivesLinesAndALastOneWithoutNewline) {
    const TextPipe pipe("a\n\nb c");
    LineReader reader(pipe.m_Descriptor);
    std::string line;
    EXPECT_EQ(reader.Next(line), LineReader::LINE);
    EXPECT_EQ(line, "a");
    EXPECT_EQ(reader.Next(line), LineReader::LINE);
    EXPECT_EQ(line, "");
    EXPECT_EQ(reader.Next(line), LineReader::LINE);
    EXPECT_EQ(line, "b c");
    EXPECT_EQ(reader.Next(line), LineReader::END);
}

TEST(LineReader, PassesOverLinesThatAreTooLong) {
    const std::string longest(LineReader::MAX_LENGTH, 'x');
    const TextPipe pipe(longest + "\n" + longest + "y\nz\n" + longest + longest);
    LineReader reader(pipe.m_Descriptor);
    std::string line;
    EXPECT_EQ(reader.Next(line), LineReader::LINE);
    EXPECT_EQ(line, longest);
    EXPECT_EQ(reader.Next(line), LineReader::TOO_LONG);
    EXPECT_EQ(reader.Next(line), LineReader::LINE);
    EXPECT_EQ(line, "z");
    EXPECT_EQ(reader.Next(line), LineReader::TOO_LONG);
    EXPECT_EQ(reader.Next(line), LineReader::END);
}

TEST(LineReader, DoesNotWaitForMoreThanALine) {
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    LineReader reader(ends[0]);
    std::string line;
    ASSERT_EQ(write(ends[1], "a\n", 2), 2);
    EXPECT_EQ(reader.Next(line), LineReader::LINE);
    EXPECT_EQ(line, "a");
    close(ends[1]);
    EXPECT_EQ(reader.Next(line), LineReader::END);
    close(ends[0]);
}

TEST(LineReader, ReportsAFailure) {
    LineReader reader(-1);
    std::string line;
    EXPECT_EQ(reader.Next(line), LineReader::FAILED);
}

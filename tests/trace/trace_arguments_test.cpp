// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <plog/Formatters/MessageOnlyFormatter.h>

#include <boost/format.hpp>
#include <cstdint>
#include <limits>
#include <locale>
#include <ostream>
#include <random>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "support/random_seed.h"
#include "support/trace_recorder.h"

namespace {

using PI::Test::Below;
using PI::Test::RandomSeed;
using PI::Test::TraceRecorder;
using testing::ElementsAre;

/// What a trace with these arguments writes.
template <class... Arguments>
std::string Traced(const std::string& format, const Arguments&... arguments) {
    TraceRecorder<3> recorder;
    {
        VELKTrace trace(494, "VELK_Trace", 3, format.c_str());
        static_cast<void>((trace << ... << arguments));
    }
    return recorder.Texts().at(0);
}

/// The same by Boost alone: the text as it stands until the last placeholder is filled.
class BoostAlone {
public:
    explicit BoostAlone(const std::string& format)
        : m_Message(format), m_Format(format, std::locale::classic()) {}

    template <class Argument>
    void Feed(const Argument& argument) {
        if (m_IsFinished) {
            return;
        }
        try {
            m_Format % argument;
            m_Message = m_Format.str();
            m_IsFinished = true;
        } catch (const std::exception&) {
            // Too few arguments so far, or one that cannot be printed.
        }
    }

    std::string m_Message;

private:
    boost::format m_Format;
    bool m_IsFinished = false;
};

template <class... Arguments>
std::string Formatted(const std::string& format, const Arguments&... arguments) {
    BoostAlone alone(format);
    (alone.Feed(arguments), ...);
    return alone.m_Message;
}

/// Prints as two numbers, of which flags and width reach the first.
struct Address {
    int m_Channel;
    int m_Target;
};

std::ostream& operator<<(std::ostream& stream, const Address& address) {
    return stream << address.m_Channel << ':' << address.m_Target;
}

/// Begins to print and gives up.
struct Unprintable {};

std::ostream& operator<<(std::ostream& stream, const Unprintable&) {
    stream << "half";
    throw std::runtime_error("cannot be printed");
}

/// Gives up with what is no standard exception.
struct OddlyUnprintable {};

std::ostream& operator<<(std::ostream& stream, const OddlyUnprintable&) {
    stream << "half";
    throw 42;
}

enum Colour { RED = 4, GREEN = 250 };

// --- The message before and after the last argument.

TEST(TraceArguments, MessageIsTheRawTextUntilTheLastPlaceholderIsFilled) {
    EXPECT_EQ(Traced("%d of %d: %s"), "%d of %d: %s");
    EXPECT_EQ(Traced("%d of %d: %s", 1), "%d of %d: %s");
    EXPECT_EQ(Traced("%d of %d: %s", 1, 2), "%d of %d: %s");
    EXPECT_EQ(Traced("%d of %d: %s", 1, 2, "x"), "1 of 2: x");
}

TEST(TraceArguments, SurplusOnesAreIgnored) {
    EXPECT_EQ(Traced("%d", 1, 2), "1");
    EXPECT_EQ(Traced("%d %d", 1, 2, 3), "1 2");
    EXPECT_EQ(Traced("%d %d", 1, 2, 3, 4), "1 2");
    EXPECT_EQ(Traced("%d %d", 1, 2, 3, 4, 5, 6, 7, 8, 9), "1 2");
}

TEST(TraceArguments, TextWithoutPlaceholdersStaysAsItStands) {
    EXPECT_EQ(Traced(""), "");
    EXPECT_EQ(Traced("plain"), "plain");
    EXPECT_EQ(Traced("100%%"), "100%%");
    EXPECT_EQ(Traced("100%%", 1), "100%%");
    EXPECT_EQ(Traced("plain", 1, 2), "plain");
}

TEST(TraceArguments, DoubledPercentSignsBecomeOneWithTheArguments) {
    EXPECT_EQ(Traced("%d%%"), "%d%%");
    EXPECT_EQ(Traced("%d%%", 7), "7%");
}

TEST(TraceArguments, PercentSignsInArgumentsAreText) {
    EXPECT_EQ(Traced("%s and %s", "%d%%", "%1%"), "%d%% and %1%");
}

TEST(TraceArguments, NumberedPlaceholdersMayRepeatAndChangePlaces) {
    EXPECT_EQ(Traced("%1%", "a"), "a");
    EXPECT_EQ(Traced("%2% %1%", "a", "b"), "b a");
    EXPECT_EQ(Traced("%1% %1% %2%", "a"), "%1% %1% %2%");
    EXPECT_EQ(Traced("%1% %1% %2%", "a", "b"), "a a b");
    EXPECT_EQ(Traced("%2%", "a"), "%2%");
    EXPECT_EQ(Traced("%2%", "a", "b"), "b");
    EXPECT_EQ(Traced("%2$s %1$04d", 7, "b"), "b 0007");
}

TEST(TraceArguments, ManyPlaceholdersWork) {
    std::string format;
    std::string expected;
    TraceRecorder<3> recorder;
    for (int index = 0; index < 200; ++index) {
        format += "%d,";
        expected += std::to_string(index) + ",";
    }
    {
        VELKTrace trace(494, "VELK_Trace", 3, format.c_str());
        for (int index = 0; index < 200; ++index) {
            trace << index;
        }
    }
    EXPECT_THAT(recorder.Texts(), ElementsAre(expected));
}

// --- Texts and arguments of any kind together.

using AnyArgument = std::variant<int, unsigned long, double, char, bool, std::string>;

std::string RandomFormat(std::mt19937& random) {
    static const std::vector<std::string> plain = {"", "a", " of ", "%%", "]", "drive "};
    static const std::vector<std::string> inTurn = {"%d", "%s", "%5d", "%-6s|", "%+d", "%04x", "%.3f", "%c"};
    static const std::vector<std::string> numbered = {"%1%", "%2%", "%3%", "%1$s", "%2$-5d|", "%3$.2f"};
    const std::vector<std::string>& placeholders = Below(random, 2) == 0 ? inTurn : numbered;
    std::string format;
    for (std::uint32_t pieces = Below(random, 8); pieces > 0; --pieces) {
        const std::vector<std::string>& choice = Below(random, 2) == 0 ? plain : placeholders;
        format += choice[Below(random, static_cast<std::uint32_t>(choice.size()))];
    }
    return format;
}

AnyArgument RandomArgument(std::mt19937& random) {
    switch (Below(random, 6)) {
        case 0: return static_cast<int>(random());
        case 1: return static_cast<unsigned long>(random()) << 20;
        case 2: return static_cast<double>(random()) / 1000;
        case 3: return static_cast<char>('!' + Below(random, 94));
        case 4: return Below(random, 2) == 0;
        default: return std::string(Below(random, 30), static_cast<char>('!' + Below(random, 94)));
    }
}

TEST(TraceArguments, RandomOnesPrintAsBoostPrintsThem) {
    std::mt19937 random(RandomSeed());
    for (int round = 0; round < 5000; ++round) {
        const std::string format = RandomFormat(random);
        TraceRecorder<3> recorder;
        BoostAlone alone(format);
        {
            VELKTrace trace(494, "VELK_Trace", 3, format.c_str());
            for (std::uint32_t arguments = Below(random, 6); arguments > 0; --arguments) {
                const auto feed = [&](const auto& value) {
                    trace << value;
                    alone.Feed(value);
                };
                std::visit(feed, RandomArgument(random));
            }
        }
        ASSERT_THAT(recorder.Texts(), ElementsAre(alone.m_Message)) << format;
    }
}

// --- Values of many types under flags and widths of every kind.

const std::vector<std::string> formats = {
    "%d",      "%i",     "%u",    "%x",     "%X",      "%o",       "%s",        "%c",      "%f",
    "%e",      "%E",     "%g",    "%G",     "%p",      "%5d",      "%-5d",      "%05d",    "%+d",
    "% d",     "%#x",    "%#o",   "%#10x",  "%-#10x",  "%010x",    "%5.2f",     "%-10.3f", "%+.1e",
    "%010.2f", "%.0f",   "%5s",   "%-5s",   "%05s",    "%.2s",     "%10.3s",    "%-10.3s", "%=10s",
    "%=9d",    "%_8d",   "%ld",   "%lu",    "%llu",    "%hd",      "%hhx",      "%lx",     "%Lf",
    "%zu",     "%jd",    "%1%",   "%1$d",   "%1$-8s",  "%1$08x",   "%|10|",     "%|-10|",  "%|=10|",
    "%|1$10|", "%|+5d|", "%|.3|", "%|x|",   "%20t|%d", "%|20t|%d", "%|20T.|%d", "a%dz",    "%%%d%%",
    "%5c",     "%-5c",   "%'d",   "%08.3f", "%+08d",   "% 8d",     "%-+8d",     "%+5x",    "%#5X",
};

template <class T>
void ExpectAsBoost(const T& value) {
    for (const std::string& format : formats) {
        EXPECT_EQ(Traced(format, value), Formatted(format, value)) << format;
        const std::string both = "<" + format + ">";
        EXPECT_EQ(Traced(both, value), Formatted(both, value)) << both;
    }
}

TEST(TraceArguments, IntegersPrintAsBoostPrintsThem) {
    for (const int value :
         {0, 1, -1, 42, -42, 1234567, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        ExpectAsBoost(value);
    }
    ExpectAsBoost(static_cast<short>(-7));
    ExpectAsBoost(static_cast<unsigned short>(65535));
    ExpectAsBoost(7u);
    ExpectAsBoost(-8L);
    ExpectAsBoost(std::numeric_limits<unsigned long>::max());
    ExpectAsBoost(std::numeric_limits<long long>::min());
    ExpectAsBoost(std::numeric_limits<unsigned long long>::max());
    ExpectAsBoost(std::uint64_t{8831022});
}

TEST(TraceArguments, FloatingPointNumbersPrintAsBoostPrintsThem) {
    for (const double value :
         {0.0, -0.0, 2.5, -2.5, 1e100, 1.0 / 3, 1234567.891, std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::denorm_min()}) {
        ExpectAsBoost(value);
    }
    ExpectAsBoost(7.2f);
    ExpectAsBoost(3.14159265358979L);
}

TEST(TraceArguments, CharactersAndTruthValuesPrintAsBoostPrintsThem) {
    ExpectAsBoost('a');
    ExpectAsBoost('%');
    ExpectAsBoost(static_cast<unsigned char>(65));
    ExpectAsBoost(static_cast<signed char>(66));
    ExpectAsBoost(true);
    ExpectAsBoost(false);
}

TEST(TraceArguments, TextsPrintAsBoostPrintsThem) {
    ExpectAsBoost(std::string());
    ExpectAsBoost(std::string("text"));
    ExpectAsBoost(std::string("longer than the width"));
    ExpectAsBoost(std::string("with\nline"));
    ExpectAsBoost(std::string_view("view"));
    ExpectAsBoost(static_cast<const char*>("literal"));
}

TEST(TraceArguments, PointersPrintAsBoostPrintsThem) {
    static int target = 0;
    ExpectAsBoost(static_cast<const void*>(&target));
    ExpectAsBoost(static_cast<void*>(nullptr));
    ExpectAsBoost(&target);
}

TEST(TraceArguments, EnumerationsPrintAsTheirNumbers) {
    ExpectAsBoost(GREEN);
    ExpectAsBoost(PI::PropertyType::MULTI_STRING);
    EXPECT_EQ(Traced("%d %s", RED, GREEN), "4 250");
    for (int type = 0; type <= 12; ++type) {
        EXPECT_EQ(Traced("%d", static_cast<PI::_PROPERTY_TYPE>(type)), std::to_string(type));
    }
}

TEST(TraceArguments, OwnTypesPrintByTheirOperator) {
    ExpectAsBoost(Address{1, 27});
    EXPECT_EQ(Traced("drive %s", Address{1, 27}), "drive 1:27");
    EXPECT_EQ(Traced("drive %8s|", Address{1, 27}), "drive     1:27|");
}

TEST(TraceArguments, TellingFlagsCompareWhole) {
    EXPECT_EQ(Traced("[%5d]", 42), "[   42]");
    EXPECT_EQ(Traced("[%-5d]", 42), "[42   ]");
    EXPECT_EQ(Traced("[%05d]", -42), "[-0042]");
    EXPECT_EQ(Traced("[%+d]", 42), "[+42]");
    EXPECT_EQ(Traced("[%x]", 255), "[ff]");
    EXPECT_EQ(Traced("[%#x]", 255), "[0xff]");
    EXPECT_EQ(Traced("[%5.2f]", 3.14159), "[ 3.14]");
    EXPECT_EQ(Traced("[%c]", 'z'), "[z]");
    EXPECT_EQ(Traced("[%-5s]", "ab"), "[ab   ]");
    EXPECT_EQ(Traced("[%=10s]", "ab"), "[    ab    ]");
    EXPECT_EQ(Traced("[%|10|]", "ab"), "[        ab]");
    EXPECT_EQ(Traced("[%lu]", 8831022ul), "[8831022]");
}

// --- Values that cannot be printed.

TEST(TraceArguments, ExceptionsOfAValueAreSwallowed) {
    EXPECT_EQ(Traced("%s", Unprintable()), "%s");
    EXPECT_EQ(Traced("%d %s", 1, Unprintable()), "%d %s");
    EXPECT_EQ(Traced("%s", OddlyUnprintable()), "%s");
    EXPECT_EQ(Traced("%d %s", 1, OddlyUnprintable()), "%d %s");
    EXPECT_EQ(Traced("%s %s", OddlyUnprintable(), 1, 2), Formatted("%s %s", Unprintable(), 1, 2));
}

TEST(TraceArguments, ValueThatThrewLeavesItsPlaceholderToTheNext) {
    EXPECT_EQ(Traced("%d %s", 1, Unprintable(), 2), Formatted("%d %s", 1, Unprintable(), 2));
    EXPECT_EQ(Traced("%s %s", Unprintable(), 1, 2), Formatted("%s %s", Unprintable(), 1, 2));
    EXPECT_EQ(Traced("%s %s", Unprintable(), 1), "%s %s");
}

// --- The process's locale.

class ThousandsInGroups : public std::numpunct<char> {
protected:
    char do_thousands_sep() const override { return '.'; }
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

class TraceLocale : public testing::Test {
protected:
    TraceLocale()
        : m_Before(std::locale::global(std::locale(std::locale::classic(), new ThousandsInGroups))) {}
    ~TraceLocale() override { std::locale::global(m_Before); }

    std::locale m_Before;
};

TEST_F(TraceLocale, NumbersArePlainDigitsWhateverItIs) {
    ASSERT_EQ((boost::format("%d") % 1234567).str(), "1.234.567");

    EXPECT_EQ(Traced("%d %lu %5.2f %x", 1234567, 8831022ul, 12345.678, 0x1234567),
              "1234567 8831022 12345.68 1234567");
    EXPECT_EQ(Traced("%s is %d", Address{1000, 2000}, 3000), "1000:2000 is 3000");
}

TEST(TraceArguments, LocaleChangedBetweenTwoArgumentsChangesNothing) {
    TraceRecorder<3> recorder;
    const std::locale before;

    {
        VELKTrace trace(494, "VELK_Trace", 3, "%d %d");
        trace << 1234567;
        std::locale::global(std::locale(std::locale::classic(), new ThousandsInGroups));
        trace << 7654321;
        std::locale::global(before);
    }

    EXPECT_THAT(recorder.m_Records.at(0).m_Message, testing::EndsWith("]1234567 7654321"));
}

TEST_F(TraceLocale, PrefixIsPlainDigitsWhateverItIs) {
    TraceRecorder<3> recorder;

    VELKTrace(1234567, "name", 3, "text");

    EXPECT_THAT(recorder.m_Records.at(0).m_Message, testing::EndsWith("][name][1234567]text"));
}

// --- NUL bytes.

TEST(TraceArguments, NulByteInAnArgumentIsKeptInTheRecord) {
    // plog hands the message out as a pointer to a zero-terminated text; what follows the zero stands there
    // too.
    class Appender : public plog::IAppender {
    public:
        void write(const plog::Record& record) override {
            const std::string cut = record.getMessage();
            m_Whole.assign(record.getMessage(), cut.size() + 3);
            m_Cut = cut;
        }
        std::string m_Cut;
        std::string m_Whole;
    };
    Appender appender;
    TraceRecorder<3> recorder;
    plog::get<3>()->addAppender(&appender);

    VELKTrace(1, "name", 3, "<%s>") << std::string("a\0b", 3);

    EXPECT_THAT(appender.m_Cut, testing::EndsWith("][name][1]<a"));
    EXPECT_THAT(appender.m_Whole, testing::EndsWith(std::string("][name][1]<a\0b>", 15)));
}

TEST(TraceArguments, NulByteEndsTheLinesOfPlogsFormatters) {
    class Appender : public plog::IAppender {
    public:
        void write(const plog::Record& record) override {
            m_Line = plog::MessageOnlyFormatter::format(record);
        }
        std::string m_Line;
    };
    Appender appender;
    TraceRecorder<3> recorder;
    plog::get<3>()->addAppender(&appender);

    VELKTrace(1, "name", 3, "<%s>") << std::string("a\0b", 3);

    EXPECT_THAT(appender.m_Line, testing::EndsWith("][name][1]<a\n"));
}

// --- Texts that are no format.

TEST(TraceFormat, MalformedTextsThrowFromTheConstructorAsBoostDoes) {
    const std::string malformed[] = {
        "%",  "100%", "%5", "%-",   "%1", "%1$", "%|",  "%|5",   "%0$d",   "%d %",
        "% ", "%5.2", "%.", "%|1$", "%l", "%0%", "%d%", "%d%1%", "%1% %d", "%1$d %s",
    };
    for (const std::string& text : malformed) {
        EXPECT_THROW(boost::format(text, std::locale::classic()), boost::io::bad_format_string) << text;
        EXPECT_THROW(VELKTrace(494, "VELK_Trace", 3, text.c_str()), boost::io::bad_format_string) << text;
        EXPECT_THROW(VELKTrace(494, "VELK_Trace", 3, text.c_str()), std::exception) << text;
    }
}

TEST(TraceFormat, MalformedTextWritesNothing) {
    TraceRecorder<3> recorder;

    EXPECT_THROW(VELKTrace(494, "VELK_Trace", 3, "100%"), std::exception);

    EXPECT_THAT(recorder.m_Records, testing::IsEmpty());
}

TEST(TraceFormat, NullNameThrowsLogicError) {
    EXPECT_THROW(VELKTrace(494, nullptr, 3, "text"), std::logic_error);
}

}  // namespace

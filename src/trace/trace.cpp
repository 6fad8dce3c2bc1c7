// SPDX-License-Identifier: Apache-2.0

#include <pi/trace.h>
#include <plog/Log.h>
#include <pthread.h>

#include <boost/format.hpp>
#include <chrono>
#include <iterator>
#include <locale>
#include <string_view>

struct VELKTrace::Format {
    explicit Format(const char* text) : m_Text(text) {}

    boost::format m_Text;
};

namespace {

// The standard library notes how a locale's characters are narrowed when that is first asked, without a lock.
// Asked for all of them before the first format is read, so that threads that trace at once only read.
bool AskForAllCharacters() noexcept {
    char characters[256];
    for (int i = 0; i < 256; ++i) {
        characters[i] = static_cast<char>(i);
    }
    const auto& facet = std::use_facet<std::ctype<char>>(std::locale::classic());
    facet.narrow(characters, std::end(characters), '\0', characters);
    facet.widen(characters, std::end(characters), characters);
    return true;
}

// Lets a thread be cancelled only after this. Neither a destructor nor a function that throws nothing can be
// left by a cancellation, which would end the process.
class CancellationLater {
public:
    CancellationLater() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_State); }
    CancellationLater(const CancellationLater&) = delete;
    CancellationLater& operator=(const CancellationLater&) = delete;
    ~CancellationLater() { pthread_setcancelstate(m_State, nullptr); }

private:
    int m_State = PTHREAD_CANCEL_ENABLE;
};

struct Argument {
    void (*m_Print)(std::ostream&, const void*);
    const void* m_Value;
};

std::ostream& operator<<(std::ostream& stream, const Argument& argument) {
    // Numbers are plain digits whatever the process's locale is. The format is not given it: it would hand
    // the locale to a new stream for every argument.
    const std::locale& classic = std::locale::classic();
    if (stream.getloc() != classic) {
        stream.imbue(classic);
    }
    argument.m_Print(stream, argument.m_Value);
    return stream;
}

std::uint64_t NowMs() noexcept {
    using std::chrono::nanoseconds;
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<nanoseconds>(sinceEpoch).count() / 1000000);
}

// Set by the first trace of the process and kept, whatever its name says.
std::uint64_t TimeBaseMs() {
    static const std::uint64_t lastTimeStamp = NowMs();
    return lastTimeStamp;
}

struct Line {
    std::string_view m_Tag;
    std::string_view m_Prefix;
    std::string_view m_Message;
};

// plog cuts texts that it is given directly at their first NUL byte; this one it hands to the stream.
std::ostream& operator<<(std::ostream& stream, const Line& line) {
    return stream << line.m_Tag << line.m_Prefix << line.m_Message;
}

template <int Instance>
void WriteTo(std::size_t line, std::string_view tag, std::string_view prefix, std::string_view message) {
    plog::Logger<Instance>* logger = plog::get<Instance>();
    if (logger == nullptr || !logger->checkSeverity(plog::debug)) {
        return;
    }
    plog::Record record(plog::debug, "VELKTrace::~VELKTrace()", line, "", nullptr, Instance);
    record << Line{tag, prefix, message};
    logger->write(record);
}

}  // namespace

VELKTrace::VELKTrace(int number, const char* name, int category, const char* format)
    : m_Number(number), m_Name(name), m_Category(category), m_Format(nullptr), m_Message(format) {
    [[maybe_unused]] static const bool asked = AskForAllCharacters();
    m_Format = new Format(format);  // last, so that nothing after it can throw
}

VELKTrace::~VELKTrace() {
    delete m_Format;
    if (!tracesEnabled) {
        return;
    }
    const CancellationLater later;
    try {
        Write();
    } catch (...) {
        // A trace never fails its caller.
    }
}

void VELKTrace::Feed(Printer print, const void* value) noexcept {
    boost::format& text = m_Format->m_Text;
    // Asked first, so that the usual course of feeding throws nothing.
    if (text.remaining_args() <= 0) {
        return;
    }
    const CancellationLater later;
    try {
        text % Argument{print, value};
        if (text.remaining_args() <= 0) {
            m_Message = text.str();
        }
    } catch (...) {
        // The message stays as it was.
    }
}

void VELKTrace::Write() const {
    const std::uint64_t base = TimeBaseMs();
    const std::string prefix =
        "[" + std::to_string(NowMs() - base) + "][" + m_Name + "][" + std::to_string(m_Number) + "]";
    switch (m_Category) {
#define PI_TRACE_CATEGORY(category, tag, line) \
    case category:                             \
        return WriteTo<category>(line, tag, prefix, m_Message);
#include "trace/categories.def"
#undef PI_TRACE_CATEGORY
        default: return WriteTo<0>(453, "[defaultLog]", prefix, m_Message);
    }
}

template VELKTrace& VELKTrace::operator<< <std::string>(std::string value);
template VELKTrace& VELKTrace::operator<< <PI::_PROPERTY_TYPE>(PI::_PROPERTY_TYPE value);

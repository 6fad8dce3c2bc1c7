// SPDX-License-Identifier: Apache-2.0
// Uses a bit of everything that the library offers.
#include <pi/pi.h>
#include <plog/Init.h>
#include <plog/Log.h>
#include <velk/clock.h>
#include <velkx/language_support.h>
#include <velkx/system_time.h>

#include <iostream>
#include <string>

#ifndef PLOG_GLOBAL
#error "the library's compile definitions have not arrived"
#endif

namespace {

/// Prints messages from behind the milliseconds, which change.
class Printer : public plog::IAppender {
public:
    void write(const plog::Record& record) override {
        const std::string message = record.getMessage();
        std::cout << message.substr(0, message.find("][") + 1) << message.substr(message.find("[consumer]"))
                  << '\n';
    }
};

}  // namespace

int main() {
    std::cout << PI::ErrorCodeToString(PI::ErrorCode::GENERAL) << '\n'
              << PI::StringToPropertyValue("RAID0", -1) << '\n';

    PI::CProperty property;
    property.SetValue(std::string("text"));
    std::string text;
    property.GetValue(text);
    std::cout << text << '\n';

    Printer printer;
    plog::init<3>(plog::debug, &printer);
    VELKTrace(7, "consumer", 3, "not written: traces are off");
    VELKTrace::tracesEnabled = true;
    VELKTrace(7, "consumer", 3, "drive %d: %s") << 5 << std::string("ready");
    VELKTrace::tracesEnabled = false;

    std::cout << PI::SATASSDEndurance.size() << ' ' << PI::SASSSDEndurance.size() << ' '
              << PI::NVMeSSDEndurance.size() << '\n';

    CLanguageSupport::SetString(10056, "Rebuild started on %1");
    CLanguageSupport::ResolveString(10056, text);
    std::cout << text << '\n';

    VELKX::_DATE date = {};
    VELKX::CSystemTime::GetDate(VELK::now(), date);
    std::cout << (date.m_Year >= 2024 ? "in this century" : "long ago") << '\n';
}

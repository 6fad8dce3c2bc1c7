// SPDX-License-Identifier: Apache-2.0
// Serial numbers, against the rules character by character.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/plugin_helper.h>

#include <cstdint>

#include "check.h"
#include "drives/plain_sata_names.h"

namespace {

using namespace PI;
using PI::Test::Upper;

bool Begins(const std::string& text, const std::string& with) {
    if (text.size() < with.size()) {
        return false;
    }
    for (std::size_t i = 0; i < with.size(); ++i) {
        if (Upper(text[i]) != with[i]) {
            return false;
        }
    }
    return true;
}

std::string ExpectedSerial(const std::string& vendor, const std::string& model, const std::string& serial) {
    const std::string upper = Upper(vendor);
    if ((upper == "WD" || upper == "WDC") && serial.size() > 3 && Begins(serial, "WD-")) {
        return serial.substr(3);
    }
    if (upper == "HGST" && Upper(model) == "HTE541010A9E68" && serial.size() > 6 &&
        Begins(serial, "JA1000")) {
        return serial.substr(6);
    }
    return upper == "SEAGATE" ? serial.substr(0, 8) : serial;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    std::string vendor = input.ConsumeRandomLengthString();
    const std::string model = input.ConsumeRandomLengthString();
    std::string serial = input.ConsumeRemainingBytesAsString();
    const std::string expected = ExpectedSerial(vendor, model, serial);

    CPluginHelper::CorrectSerialNumber(vendor, model, serial);
    CHECK_TEXT(serial, expected);

    const std::string before = vendor;
    const bool isVirtual = CPluginHelper::IsVirtualDisk(vendor);
    CHECK_TEXT(vendor, before);
    CHECK(isVirtual == (vendor == "VMware" || vendor == "\xCE\xFA"));
    return 0;
}

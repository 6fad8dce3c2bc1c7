// SPDX-License-Identifier: Apache-2.0
// Serial numbers: a known prefix is cut off, or all but eight characters.
#include <fuzzer/FuzzedDataProvider.h>
#include <pi/plugin_helper.h>

#include <cstdint>

#include "check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using PI::CPluginHelper;
    FuzzedDataProvider input(data, size);
    std::string vendor = input.ConsumeRandomLengthString();
    const std::string model = input.ConsumeRandomLengthString();
    const std::string before = input.ConsumeRemainingBytesAsString();

    std::string serial = before;
    CPluginHelper::CorrectSerialNumber(vendor, model, serial);
    const std::size_t cut = before.size() - serial.size();
    const bool isPrefixCut = (cut == 3 || cut == 6) && !serial.empty() && before.substr(cut) == serial;
    const bool isShortened = serial.size() == 8 && before.substr(0, 8) == serial;
    CHECK(serial == before || isPrefixCut || isShortened);
    CHECK(serial == before || vendor.size() == 2 || vendor.size() == 3 || vendor.size() == 4 ||
          vendor.size() == 7);

    const std::string vendorBefore = vendor;
    const bool isVirtual = CPluginHelper::IsVirtualDisk(vendor);
    CHECK_TEXT(vendor, vendorBefore);
    CHECK(isVirtual == (vendor == "VMware" || vendor == "\xCE\xFA"));
    return 0;
}

// Any text is a TC string or none; what is read from one is written, and read again, as the same.
// Whatever a store holds, what pages are told of it is JSON.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <variant>

#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Encoder.h"
#include "vxprivacy/services/iab/InAppTCData.h"
#include "vxprivacy/testing/MemoryStore.h"

namespace {

using namespace vx::services::tcf;

constexpr std::string_view kCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.";

void check(std::string_view text) {
    const auto result = decode(text);
    if (const auto* model = std::get_if<TCModel>(&result)) {
        const auto again = decode(encode(*model));
        const auto* same = std::get_if<TCModel>(&again);
        if (!same || *same != *model)
            std::abort();
    } else if (std::get<TCError>(result).bit > 6 * text.size()) {
        std::abort();
    }
    const std::string stored(text);
    const vx::recording::MemoryStore store({{"IABTCF_TCString", stored},
                                            {"IABTCF_CmpSdkID", stored},
                                            {"IABTCF_gdprApplies", stored},
                                            {"IABTCF_AddtlConsent", stored}});
    if (!vx::JSONValue::parse(vx::services::inAppTCData(store)).isObject())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    check(text);
    // Once more with nothing in it that is refused at once.
    for (char& c : text)
        if (kCharacters.find(c) == std::string_view::npos)
            c = kCharacters[static_cast<unsigned char>(c) % kCharacters.size()];
    check(text);
    return 0;
}

#include "services/iab/TCFLibrary.h"

#include <charconv>

#include "services/iab/CMPStorage.h"
#include "services/iab/Decoder.h"
#include "services/iab/TCStringBuilder.h"

namespace vx::services {

namespace {

// The number that the IAB has given to this module.
constexpr std::uint32_t kCmpID = 90;

// The purpose that `text` names; 0 when it names none.
int purposeIn(std::string_view text) {
    int purpose = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), purpose);
    const bool plain = error == std::errc() && end == text.data() + text.size() && text[0] != '0';
    return plain && purpose >= 1 && purpose <= tcf::kGreatestPurpose ? purpose : 0;
}

} // namespace

TCFLibrary::TCFLibrary(KeyValueStore& store, Logger& logger) : store_(store), logger_(logger) {}

TCFLibrary::~TCFLibrary() = default;

void TCFLibrary::setCMPSDKID() {
    tcf::CMPStorage(store_).setCMP(kCmpID);
}

std::string TCFLibrary::getCreatedDate() const {
    const auto text = tcf::CMPStorage(store_).tcString();
    if (!text)
        return {};
    const auto decoded = tcf::decode(*text);
    const auto* model = std::get_if<tcf::TCModel>(&decoded);
    if (model && model->cmpId == kCmpID)
        return std::to_string(model->created / 10);
    const auto* error = std::get_if<tcf::TCError>(&decoded);
    logger_.log("The stored TC string is " +
                    (error ? "damaged: " + error->field + ", bit " + std::to_string(error->bit) +
                                 ": " + error->why
                           : "that of CMP " + std::to_string(model->cmpId)),
                4);
    return {};
}

void TCFLibrary::setPublisherRestrictions(const PublisherRestrictions& restrictions) {
    StoreTransaction transaction(store_);
    tcf::CMPStorage storage(store_);
    for (int purpose = 1; purpose <= tcf::kGreatestPurpose; ++purpose) {
        const std::string* types = restrictions.find(std::to_string(purpose));
        storage.setRestrictions(purpose, types ? std::optional(*types) : std::nullopt);
    }
    for (const auto& [purpose, types] : restrictions)
        if (purposeIn(purpose) == 0) {
            logger_.log("Publisher restrictions: \"" + purpose + "\" is no purpose, left out", 4);
            break;
        }
    transaction.commit();
}

void TCFLibrary::saveConsentString(std::string_view consent) {
    tcf::CMPStorage(store_).setTCString(consent);
}

void TCFLibrary::resetTCData() {
    tcf::CMPStorage(store_).reset();
}

std::unique_ptr<CoreStringBuilder> TCFLibrary::makeCoreStringBuilder() {
    return std::make_unique<tcf::TCStringBuilder>(tcf::CMPStorage(store_), logger_);
}

} // namespace vx::services

// Steps that print what the engine, the store and the registered files answer.

#include <optional>

#include "tools/play/Session.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"

namespace vx::tools::play {

namespace {

using recording::Event;

Event textOrNull(const std::optional<std::string>& text) {
    return text ? Event(*text) : Event();
}

template <auto Operation>
void ask(Session& session, const Step&) {
    session.answer(Operation());
}

template <auto Operation>
void askOne(Session& session, const Step& step) {
    session.answer(Operation(step.integer("id")));
}

constexpr Action kAskable[] = {
    {"isConsentAlreadyGiven", "what", ask<&VXPrivacyAPI::isConsentAlreadyGiven>},
    {"shouldDisplayPrivacyCenter", "what", ask<&VXPrivacyAPI::shouldDisplayPrivacyCenter>},
    {"getLastTimeConsentWasSaved", "what", ask<&VXPrivacyAPI::getLastTimeConsentWasSaved>},
    {"isCategoryAccepted", "what id", askOne<&VXPrivacyAPI::isCategoryAccepted>},
    {"isVendorAccepted", "what id", askOne<&VXPrivacyAPI::isVendorAccepted>},
    {"getAcceptedCategories", "what", ask<&VXPrivacyAPI::getAcceptedCategories>},
    {"getAcceptedVendors", "what", ask<&VXPrivacyAPI::getAcceptedVendors>},
    {"getAcceptedFeatures", "what", ask<&VXPrivacyAPI::getAcceptedFeatures>},
    {"getAllAcceptedConsent", "what", ask<&VXPrivacyAPI::getAllAcceptedConsent>},
};

void askAPI(Session& session, const Step& step) {
    const std::string what = step.text("what");
    for (const Action& operation : kAskable)
        if (operation.name == what)
            return operation.run(session, step);
    throw StepError("unknown question: " + what);
}

void engine(Session& session, const Step&) {
    const VXMobilePrivacy& engine = session.engine();
    session.answer({{"enableIAB", engine.enableIAB()},
                    {"privacyState", engine.privacyState()},
                    {"clientSiteID", engine.clientSiteID()},
                    {"privacyID", engine.privacyID()},
                    {"consentExpired", engine.consentExpired()},
                    {"generatePublisherTC", engine.generatePublisherTC()},
                    {"userID", textOrNull(engine.userID())},
                    {"vendorListVersion", engine.vendorListVersion()},
                    {"switchDefaultState", engine.switchDefaultState()},
                    {"maxVendorID", engine.maxVendorID()},
                    {"languageCode", textOrNull(engine.languageCode())}});
}

void store(Session& session, const Step&) {
    session.answer(Event(session.world().store().entries()));
}

void sdkData(Session& session, const Step&) {
    session.answer(Event(session.world().sdkData()));
}

// What follows the host in an address.
std::string pathOf(std::string_view address) {
    const std::size_t scheme = address.find("://");
    const std::size_t host = scheme == std::string_view::npos ? 0 : scheme + 3;
    return std::string(address.substr(std::min(address.find('/', host), address.size())));
}

Event registration(const std::string& name, const VXConfigurationFile& file) {
    const auto& url = file.baseURL();
    return {{"name", name},
            {"versionPath", file.versionPath().empty() ? Event() : Event(file.versionPath())},
            {"path", url ? Event(pathOf(*url)) : Event()},
            {"version", file.version()},
            {"loaded", static_cast<bool>(file.getJSONDictionary())}};
}

void restrictions(Session& session, const Step&) {
    const auto& handedOver = session.world().iab().publisherRestrictions();
    session.answer(handedOver ? recording::asObject(*handedOver) : Event());
}

void registrations(Session& session, const Step&) {
    Event list = Event::array();
    for (const auto& [name, file] : VXConfigurationFileFactory::sharedInstance().files())
        list.push_back(registration(name, *file));
    session.answer(list);
}

constexpr Action kQuestions[] = {
    {"ask", "what id", askAPI}, {"engine", "", engine},
    {"store", "", store},       {"registrations", "", registrations},
    {"sdkData", "", sdkData},   {"restrictions", "", restrictions},
};

} // namespace

std::span<const Action> questions() {
    return kQuestions;
}

} // namespace vx::tools::play

// Encodes and decodes TC strings for the tests in JavaScript: for each line of standard input,
// {"encode":MODEL} or {"decode":TEXT}, one line {"text":...}, {"model":...} or {"error":...}. Of
// the profile in force: {"list":TEXT,"cmpID":...} chooses the vendor list, and for {"choice":...}
// there is the string with its findings. {"event":NAME} asks for what the application's own
// web views are given then, script and update, by its store or by the entries {"store":...}.

#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/tc/FindingsJSON.h"
#include "tools/tc/ModelJSON.h"
#include "vxprivacy/hosts/web/TCFAPI.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Encoder.h"
#include "vxprivacy/services/iab/InAppTCData.h"
#include "vxprivacy/services/iab/TCFLibrary.h"
#include "vxprivacy/testing/MemoryStore.h"

namespace {

using namespace vx::services::tcf;
using JSON = nlohmann::ordered_json;

JSON encoded(const JSON& json) {
    const auto model = vx::tools::tc::modelIn(json);
    if (const auto* fault = std::get_if<vx::tools::tc::JSONFault>(&model))
        return {{"error", fault->path + " " + fault->why}};
    return {{"text", encode(std::get<TCModel>(model))}};
}

JSON decoded(const std::string& text) {
    const auto model = decode(text);
    if (const auto* error = std::get_if<TCError>(&model))
        return {
            {"error", error->field + ", bit " + std::to_string(error->bit) + ": " + error->why}};
    return {{"model", vx::tools::tc::asJSON(std::get<TCModel>(model))}};
}

// An application with the profile in force, without a screen.
class InForce : vx::Logger {
public:
    explicit InForce(const JSON& request)
        : list_(vx::JSONValue::parse(request["list"].get<std::string>())),
          library_(store_, *this,
                   {.profile = vx::services::TCFProfile::InForce,
                    .publisherCountry = request["country"],
                    .cmpID = request["cmpID"],
                    .cmpVersion = request["cmpVersion"],
                    .vendorList = [this] { return list_; }}) {
        library_.setCMPSDKID();
    }

    JSON saved(const JSON& choice) {
        vx::ExplicitRestrictions restrictions;
        for (const auto& [purpose, vendors] : choice["restrictions"].items()) {
            vx::OrderedDictionary<std::string> types;
            for (const auto& [vendor, type] : vendors.items())
                types.set(vendor, type.get<std::string>());
            restrictions.set(purpose, std::move(types));
        }
        library_.setExplicitRestrictions(restrictions);
        library_.setDisclosedVendors(choice["disclosed"].get<std::vector<std::int32_t>>());
        const auto builder = library_.makeCoreStringBuilder();
        builder->setConsentRecordLastUpdated(choice["now"]);
        builder->setConsentLanguage(choice["language"].get<std::string>());
        vx::OrderedDictionary<std::string> consent;
        for (const auto& [key, value] : choice["consent"].items())
            consent.set(key, value.get<std::string>());
        builder->setChoice(consent);
        const std::string text = builder->buildConsentString(choice["publisher"]);
        builder->writeTCData();
        const vx::tools::tc::CheckLists lists{.vendors = VendorList::of(list_)};
        return {{"text", text},
                {"findings", vx::tools::tc::asJSON(vx::tools::tc::check(text, lists))}};
    }

    const vx::KeyValueStore& store() const { return store_; }

private:
    void log(std::string_view message, int) override { std::cerr << message << '\n'; }

    vx::recording::MemoryStore store_;
    vx::JSONValue list_;
    vx::services::TCFLibrary library_;
};

JSON toldToPages(const std::string& name, const vx::KeyValueStore& store) {
    using vx::web::TCFEvent;
    const TCFEvent event = name == "cmpuishown"           ? TCFEvent::CenterShown
                           : name == "useractioncomplete" ? TCFEvent::UserActionComplete
                                                          : TCFEvent::Loaded;
    const std::string data = vx::services::inAppTCData(store);
    return {{"script", vx::web::tcfAPIScript(data, event)},
            {"update", vx::web::tcfAPIUpdate(data, event)}};
}

JSON answerTo(const JSON& request, std::optional<InForce>& inForce) {
    if (request.contains("encode"))
        return encoded(request["encode"]);
    if (request.contains("decode"))
        return decoded(request["decode"].get<std::string>());
    if (request.contains("choice"))
        return inForce->saved(request["choice"]);
    if (request.contains("store"))
        return toldToPages(request["event"], vx::recording::MemoryStore(request["store"]));
    if (request.contains("event"))
        return toldToPages(request["event"], inForce->store());
    inForce.emplace(request);
    return JSON::object();
}

} // namespace

int main() {
    std::ios::sync_with_stdio(false);
    std::optional<InForce> inForce;
    for (std::string line; std::getline(std::cin, line);) {
        const JSON request = JSON::parse(line);
        const JSON answer = answerTo(request, inForce);
        std::cout << answer.dump() << std::endl;
    }
}

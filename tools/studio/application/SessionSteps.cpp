#include "tools/studio/application/SessionSteps.h"

#include <optional>
#include <system_error>
#include <utility>
#include <variant>

#include "tools/studio/application/StoreView.h"
#include "tools/studio/application/StudioReport.h"
#include "tools/system/Files.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/services/iab/Decoder.h"

namespace vx::tools::studio {

namespace {

Json asJSON(const JSONValue& value) {
    switch (value.type()) {
    case JSONValue::Type::Boolean:
        return *value.boolean();
    case JSONValue::Type::Number:
        return value.integer() ? Json(*value.integer()) : Json(*value.number());
    case JSONValue::Type::String:
        return *value.string();
    case JSONValue::Type::Array: {
        Json array = Json::array();
        for (const JSONValue& element : value.elements())
            array.push_back(asJSON(element));
        return array;
    }
    case JSONValue::Type::Object: {
        Json object = Json::object();
        for (const auto& [key, member] : value.members())
            addMember(object, std::string(key), asJSON(member));
        return object;
    }
    default:
        return nullptr;
    }
}

// One text for each content: the same document is found again at the next launch.
std::string textOf(const JSONValue& document) {
    return dumped(asJSON(document));
}

void addDocument(Json& files, const std::string& name, const std::string& text) {
    if (const JSONValue document = VXConfigurationFile::getJSONDictionaryFromString(text))
        files[name] = textOf(document);
}

Json documentsAtHand(const Launch& launch) {
    Json files = Json::object();
    if (!launch.played.empty()) {
        for (const auto& [name, text] : launch.played["files"].items())
            addDocument(files, name, text.get<std::string>());
        return files;
    }
    for (const auto& [name, text] : storedDocuments(launch.store, launch.inForce))
        addDocument(files, name, text);
    if (launch.packaged.empty())
        return files;
    const std::string name(kVXPublisherRestrictionConfiguration);
    try {
        addDocument(files, name, system::readFile(launch.packaged / (name + ".json")));
    } catch (const std::system_error&) {
        return files; // it ships none
    }
    return files;
}

// As the IAB library says it.
std::string createdDate(const Json& entries) {
    for (const Json& entry : entries)
        if (entry[0] == "IABTCF_TCString") {
            const auto decoded = services::tcf::decode(entry[1].get<std::string>());
            if (const auto* model = std::get_if<services::tcf::TCModel>(&decoded))
                return std::to_string(model->created / 10);
        }
    return "";
}

} // namespace

void SessionSteps::launch(const Launch& launch, const std::string& userAgent) {
    told_ = clock_.nowMilliseconds();
    Json entries = Json::array(); // of a store that cannot be read the engine knows nothing either
    if (std::optional<Json> stored = storedState(launch.store))
        entries = std::move((*stored)["entries"]);
    std::string created = createdDate(entries);
    if (created.empty() && !launch.played.empty())
        created = launch.played.value("createdDate", "");
    report({{"kind", kind::kLaunch},
            {"body",
             {{"now", told_},
              {"iab", launch.mode == Mode::IAB},
              {"inForce", launch.inForce ? kPublisherCountry : ""},
              {"userAgent", userAgent},
              {"createdDate", created},
              {"isFresh", launch.played.contains("store")},
              {"files", documentsAtHand(launch)},
              {"store", std::move(entries)}}}});
}

void SessionSteps::step(const Json& step) {
    const std::uint64_t now = clock_.nowMilliseconds();
    if (std::exchange(told_, now) != now)
        report({{"kind", kind::kStep}, {"body", {{"do", "clock"}, {"now", now}}}});
    report({{"kind", kind::kStep}, {"body", step}});
}

void SessionSteps::remark(const std::string& text) {
    report({{"kind", kind::kStep}, {"body", text}});
}

void SessionSteps::lookForDocuments() {
    for (const auto& [name, file] : VXConfigurationFileFactory::sharedInstance().files()) {
        Known& known = documents_[name];
        const std::int32_t version = file->version();
        const bool isNewer = known.file == file && known.version != version;
        known = {file, version};
        if (isNewer)
            step({{"do", "install"}, {"name", name}, {"text", textOf(file->getJSONDictionary())}});
    }
}

} // namespace vx::tools::studio

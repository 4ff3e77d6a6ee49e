// Steps that print what a configuration document says, or what a newer one changes.

#include "tools/play/ScreenDescription.h"
#include "tools/play/Session.h"
#include "vxprivacy/configuration/ConfigurationNames.h"
#include "vxprivacy/configuration/VXPrivacyConfiguration.h"

namespace vx::tools::play {

namespace {

using recording::Event;

constexpr std::string_view kVersionPath = "information/version";

Event asEvent(const JSONValue& value) {
    switch (value.type()) {
    case JSONValue::Type::Boolean:
        return *value.boolean();
    case JSONValue::Type::Number:
        return value.integer() ? Event(*value.integer()) : Event(*value.number());
    case JSONValue::Type::String:
        return *value.string();
    case JSONValue::Type::Array: {
        Event array = Event::array();
        for (const JSONValue& element : value.elements())
            array.push_back(asEvent(element));
        return array;
    }
    case JSONValue::Type::Object: {
        Event object = Event::object();
        for (const auto& [key, member] : value.members())
            object[std::string(key)] = asEvent(member);
        return object;
    }
    default:
        return nullptr;
    }
}

std::shared_ptr<VXPrivacyConfiguration> configurationOf(const std::string& document) {
    VXConfigurationFile source;
    source.setPackaged(kPrivacyConfiguration, kVersionPath);
    source.setDocument(VXConfigurationFile::getJSONDictionaryFromString(document));
    return VXPrivacyConfiguration::initFromConfiguration(source);
}

void configuration(Session& session, const Step& step) {
    const auto file = configurationOf(step.text("document"));
    Event customisation = Event::object();
    for (const auto& [name, colour] : file->customisation())
        customisation[name] = asArray(colour);
    Event categories = Event::array();
    for (const JSONValue& id : VXPrivacyConfiguration::categoryList(file->getJSONDictionary()))
        categories.push_back(asEvent(id));
    session.answer({{"components", recording::asObject(file->components())},
                    {"customisation", customisation},
                    {"categories", categories}});
}

void text(Session& session, const Step& step) {
    const std::string document = step.text("document");
    const std::string key = step.text("key");
    const auto suffix = step.has("suffix") ? step.textOrNull("suffix") : std::nullopt;
    const auto text = configurationOf(document)->getTextForKey(key, suffix);
    session.answer(text ? Event(*text) : Event());
}

void colour(Session& session, const Step& step) {
    session.answer(asArray(VXPrivacyConfiguration::parseUIColorFromHex(step.text("text"))));
}

void change(Session& session, const Step& step) {
    const std::string oldText = step.text("old");
    const std::string newText = step.text("new");
    // A center that nobody listens to: what is posted is recorded and goes no further.
    recording::RecordingNotificationCenter center(session.world().sink());
    VXPrivacyConfiguration file;
    file.setPackaged(kPrivacyConfiguration, kVersionPath);
    file.senderDelegate().setNotificationCenter(center);
    session.answer(file.specificUpdate(oldText, newText));
}

constexpr Action kDocumentQuestions[] = {
    {"configuration", "document", configuration},
    {"text", "document key suffix", text},
    {"colour", "text", colour},
    {"change", "old new", change},
};

} // namespace

std::span<const Action> documentQuestions() {
    return kDocumentQuestions;
}

} // namespace vx::tools::play

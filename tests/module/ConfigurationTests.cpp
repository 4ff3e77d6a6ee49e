#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "vxprivacy/configuration/VXPrivacyConfiguration.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/testing/World.h"

namespace {

using namespace vx;
using nlohmann::json;
using recording::World;

const json kDocument = json::parse(R"({
    "information": {"version": 3, "significantChanges": "no", "content": "c", "vendors": "1"},
    "global_consent": {"name": "n", "description": "d"},
    "categories": [{"ID": "1", "name": "n", "subcategories": [{"ID": "11"}]}, {"ID": "2"}],
    "texts": {"generic": {"backButton": "b"}}, "texts_fr": {"generic": {"backButton": "r"}},
    "customisation": {"content": {"fontcolor": "#102030"}, "button": {"backgroundcolor": "#40"}},
    "components": {"firstLayerButton": ["Detail"], "secondLayerButton": ["Save"]}})");

// Runs everything of the configuration that reads the document `text`.
void read(const std::string& text) {
    VXConfigurationFile source;
    source.setSiteID(12, 5, "privacy", "information/version", std::nullopt);
    source.setDocument(VXConfigurationFile::getJSONDictionaryFromString(text));
    const auto copy = VXPrivacyConfiguration::initFromConfiguration(source);
    EXPECT_EQ(copy->getJSONDictionary(), source.getJSONDictionary());
    for (const char* path : {"", "/", "generic/backButton", "generic//x", "generic/backButton/x"})
        for (const auto& suffix : {std::optional<std::string>(), std::optional<std::string>("fr")})
            copy->getTextForKey(path, suffix);
    copy->specificUpdate(kDocument.dump(), text);
    copy->specificUpdate(text, kDocument.dump());
}

// The same, and what the engine does with it.
void readAndAnswer(const std::string& text) {
    World world({.files = {{"privacy", text}}});
    read(text);
    world.engine().setSiteID(12, 5, world.sdk());
    world.engine().acceptAllConsent();
    world.engine().refuseAllConsent();
}

TEST(Configuration, AValueOfAnyTypeAnywhereDoesNoHarm) {
    const json replacements = json::parse(R"([null, true, 3, -2.5, 99999999999, "x", [], {}, [[]],
                                               ["x", 3, null], {"x": {"y": []}}])");
    const json flat = kDocument.flatten();
    std::vector<json::json_pointer> places = {json::json_pointer("")};
    for (const auto& [path, value] : flat.items())
        for (json::json_pointer at(path); !at.empty(); at = at.parent_pointer())
            places.push_back(at);
    for (const auto& place : places)
        for (const json& replacement : replacements) {
            SCOPED_TRACE(place.to_string() + " = " + replacement.dump());
            json document = kDocument;
            document[place] = replacement;
            readAndAnswer(document.dump());
        }
}

TEST(Configuration, ATruncatedDocumentDoesNoHarm) {
    const std::string text = kDocument.dump();
    for (std::size_t length = 0; length < text.size(); length += 3)
        readAndAnswer(text.substr(0, length));
}

TEST(Configuration, HugeAndDeepDocumentsAreReadOrRefused) {
    std::string many = R"({"categories":[{"ID":"0"})";
    while (many.size() < (8u << 20))
        many += R"(,{"ID":")" + std::to_string(many.size()) + R"("})";
    std::string deep = R"({"texts":)";
    for (int i = 0; i < 2000; ++i)
        deep += R"({"a":)";
    World world;
    for (const std::string& text : {many + "]}", many, deep + "1" + std::string(2001, '}')})
        read(text);
}

} // namespace

// What the privacy configuration says: IDs of categories, texts, colours and buttons. What a newer
// document changes is in VXPrivacyConfigurationChange.cpp.

#include "vxprivacy/configuration/VXPrivacyConfiguration.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <limits>
#include <utility>

#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

namespace {

void appendID(std::vector<JSONValue>& list, const JSONValue& category) {
    if (JSONValue id = category["ID"])
        list.push_back(std::move(id));
}

// Adds the position of each button of `object`[`listName`]; says whether the list, if there is one,
// has the button that it must have.
bool addPositions(OrderedDictionary<std::string>& positions, const JSONValue& object,
                  std::string_view listName, std::string_view mandatory) {
    if (!object[listName].isArray())
        return true;
    bool seen = false;
    std::int32_t position = 0;
    for (const JSONValue& button : object[listName].elements()) {
        ++position;
        const auto name = button.string();
        if (!name)
            continue;
        positions.set(formatted("%@-%@", {listName, *name}), std::to_string(position));
        seen = seen || *name == mandatory;
    }
    return seen;
}

void addColours(OrderedDictionary<Colour>& colours, const JSONValue& object,
                std::string_view section, std::initializer_list<std::string_view> names) {
    for (std::string_view name : names)
        if (const auto text = object[section][name].string())
            colours.set(formatted("%@_%@", {section, name}),
                        VXPrivacyConfiguration::parseUIColorFromHex(*text));
}

// The hexadecimal number that `text` starts with; 0 when there is none, all bits set when it does
// not fit.
std::uint32_t leadingHexadecimal(std::string_view text) {
    if (text.starts_with("0x") || text.starts_with("0X"))
        text.remove_prefix(2);
    std::uint32_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return result.ec == std::errc::result_out_of_range ? std::numeric_limits<std::uint32_t>::max()
                                                       : value;
}

} // namespace

std::shared_ptr<VXPrivacyConfiguration>
VXPrivacyConfiguration::initPrivacyWithSiteID(std::int32_t siteID, std::int32_t privacyID,
                                              std::string_view fileName,
                                              const VXEventListener& listener) {
    return initPrivacyWithSiteID(siteID, privacyID, fileName, "information/version", std::nullopt,
                                 listener);
}

std::shared_ptr<VXPrivacyConfiguration> VXPrivacyConfiguration::initPrivacyWithSiteID(
    std::int32_t siteID, std::int32_t privacyID, std::string_view fileName,
    std::string_view versionPath, const std::optional<std::string>& url,
    const VXEventListener& listener) {
    auto file = std::make_shared<VXPrivacyConfiguration>();
    listener.listen(formatted("%@%@", {kVXNotification_ConfigurationChanged, fileName}));
    file->setSiteID(siteID, privacyID, fileName, versionPath, url);
    return file;
}

std::shared_ptr<VXPrivacyConfiguration>
VXPrivacyConfiguration::initFromConfiguration(const VXConfigurationFile& source) {
    auto copy = std::make_shared<VXPrivacyConfiguration>();
    copy->copyDescription(source);
    copy->setDocument(source.getJSONDictionary());
    copy->parseCustomisation(copy->getJSONDictionary()["customisation"]);
    copy->parseComponents(copy->getJSONDictionary()["components"]);
    return copy;
}

std::vector<JSONValue> VXPrivacyConfiguration::categoryList(const JSONValue& dictionary) {
    std::vector<JSONValue> list;
    for (const JSONValue& category : objectsOf(dictionary["categories"])) {
        appendID(list, category);
        for (const JSONValue& subcategory : objectsOf(category["subcategories"]))
            appendID(list, subcategory);
    }
    return list;
}

std::vector<JSONValue> VXPrivacyConfiguration::objectsOf(const JSONValue& list) {
    std::vector<JSONValue> objects = list.elements();
    std::erase_if(objects, [](const JSONValue& element) { return !element.isObject(); });
    return objects;
}

std::optional<std::string>
VXPrivacyConfiguration::getTextForKey(std::string_view path,
                                      const std::optional<std::string>& suffix) const {
    // No fallback to "texts" for a language that the document lacks, deliberately.
    const std::string name = suffix ? "texts_" + *suffix : "texts";
    const JSONValue texts = getJSONDictionary()[name];
    if (!texts.isObject())
        return "";
    const auto text = getJsonLeaf(texts, path).string();
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

Colour VXPrivacyConfiguration::parseUIColorFromHex(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of('#'), text.size()));
    const std::uint32_t value = leadingHexadecimal(text);
    const auto component = [value](int shift) { return ((value >> shift) & 0xFF) / 255.0; };
    return {component(16), component(8), component(0), 1.0};
}

void VXPrivacyConfiguration::parseComponents(const JSONValue& object) {
    const auto report = [](std::string_view message) {
        VXLogger::sharedInstance().logMessage(message, kLogProblem);
    };
    if (!addPositions(components_, object, "firstLayerButton", "Detail"))
        report("Error parsing first layer buttons, Detail button should be in the list of buttons");
    if (!addPositions(components_, object, "secondLayerButton", "Save"))
        report("Error parsing second layer buttons, Save button should be in the list of buttons");
}

void VXPrivacyConfiguration::parseCustomisation(const JSONValue& object) {
    addColours(customisation_, object, "content", {"fontcolor", "backgroundcolor", "bordercolor"});
    // Buttons have no border colour and contents no disabled background, deliberately.
    addColours(customisation_, object, "button",
               {"fontcolor", "backgroundcolor", "disabledBackground"});
}

void VXPrivacyConfiguration::setCustomisation(OrderedDictionary<Colour> colours) {
    customisation_ = std::move(colours);
}

void VXPrivacyConfiguration::setComponents(OrderedDictionary<std::string> positions) {
    components_ = std::move(positions);
}

} // namespace vx

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/ui/Colour.h"

namespace vx {

/// The privacy configuration: which consent categories exist, what the screens say in each
/// language, how they are coloured and which buttons they show. docs/privacy-configuration.md has
/// the document key by key. A value that is missing or of the wrong type counts as absent.
///
/// There are two sorts of it. The engine registers the file itself, whose document is replaced by
/// newer ones and which has no colours and buttons parsed. A screen takes a copy of it, which has
/// them and stays as it is. Application's thread.
///
///     if (const auto file = configurationFile(kPrivacyConfiguration)) {
///         const auto copy = VXPrivacyConfiguration::initFromConfiguration(*file);
///         copy->getTextForKey("generic/backButton", "fr");      // "Retour"
///         copy->components().find("firstLayerButton-Detail");   // "1"; null without this button
///     }
class VXPRIVACY_EXPORT VXPrivacyConfiguration : public VXConfigurationFile {
public:
    VXPrivacyConfiguration() = default;

    // Making one; never null. None of them reads or downloads anything: registering the file does.

    /// The file of a site, on the configuration CDN. `listener` (the engine's) is made to listen to
    /// the notification that this file posts when it changes; it is not kept.
    static std::shared_ptr<VXPrivacyConfiguration>
    initPrivacyWithSiteID(std::int32_t siteID, std::int32_t privacyID, std::string_view fileName,
                          const VXEventListener& listener);
    /// The same with the caller's own version path and address; without one, on the CDN.
    static std::shared_ptr<VXPrivacyConfiguration>
    initPrivacyWithSiteID(std::int32_t siteID, std::int32_t privacyID, std::string_view fileName,
                          std::string_view versionPath, const std::optional<std::string>& url,
                          const VXEventListener& listener);
    /// A copy of `source` with its colours and buttons parsed. It is not registered anywhere and
    /// shares the document that `source` has now. A list of buttons without the one that it must
    /// have gives a log line at level 4 and is used as it is.
    static std::shared_ptr<VXPrivacyConfiguration>
    initFromConfiguration(const VXConfigurationFile& source);

    /// The IDs of all categories, each followed by those of its subcategories, as the document has
    /// them: a number stays a number, and what occurs twice is listed twice. Empty without a
    /// document.
    static std::vector<JSONValue> categoryList(const JSONValue& dictionary);
    /// The objects of a list of categories or subcategories; what is no object counts as absent.
    static std::vector<JSONValue> objectsOf(const JSONValue& list);

    /// The text at `path` ("generic/backButton") of "texts", or of "texts_XX" with the suffix XX.
    /// Empty when the document has no such texts, missing when they lack this one. There is no
    /// fallback from one language to another, deliberately.
    std::optional<std::string> getTextForKey(std::string_view path,
                                             const std::optional<std::string>& suffix = {}) const;

    /// "#RRGGBB" or "RRGGBB"; always opaque. Black when the text does not begin with a hexadecimal
    /// digit, white when it holds more than 32 bits. Of the digits read, the last six count: "#fff"
    /// is 000fff.
    static Colour parseUIColorFromHex(std::string_view text);

    // Parsing a part of a document. Both add to what is there: an entry that the object lacks
    // stays. An absent object adds nothing.

    /// Adds the button positions of a "components" object to `components`. A list without the
    /// button that it must have ("Detail", "Save") gives a log line at level 4.
    void parseComponents(const JSONValue& object);
    /// Adds the colours of a "customisation" object to `customisation`.
    void parseCustomisation(const JSONValue& object);

    /// Colours by name ("content_fontcolor"); only those that the document gives. For one that is
    /// missing a screen has its own.
    const OrderedDictionary<Colour>& customisation() const { return customisation_; }
    void setCustomisation(OrderedDictionary<Colour> colours);
    /// 1-based positions of the IAB screens' buttons ("firstLayerButton-Detail": "1").
    const OrderedDictionary<std::string>& components() const { return components_; }
    void setComponents(OrderedDictionary<std::string> positions);

    // What a newer document changes. The texts are whole documents; one that is no JSON object has
    // no categories.

    /// Posts the change notification where the newer document asks for something or has other
    /// category IDs, and says whether it did. The engine has acted on it when this returns. The
    /// word "resetSave" asks for a reset wherever it stands in the text, deliberately.
    bool specificUpdate(std::string_view oldText, std::string_view newText) override;
    /// Whether the document flags itself as a significant change: "True", "true" or "1", as a text.
    /// A text that is no JSON gives no, and a log line at level 4.
    static bool significantUpdate(std::string_view newText);
    /// Whether two documents differ in their category IDs; their order does not matter. IDs that
    /// occur twice can hide a change, deliberately.
    static bool compareCategories(std::string_view oldText, std::string_view newText);

private:
    OrderedDictionary<Colour> customisation_;
    OrderedDictionary<std::string> components_;
};

} // namespace vx

#pragma once

#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/ui/Colour.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The privacy configuration: which consent categories exist, what the screens say in each
/// language, how they are coloured and which buttons they show. Application's thread.
class VXPrivacyConfiguration : public VXConfigurationFile {
public:
    VXPrivacyConfiguration() = default;

    /// The file of a site, on the configuration CDN. `listener` (the engine's) is made to listen to
    /// the notification that this file posts when it changes.
    static std::shared_ptr<VXPrivacyConfiguration>
    initPrivacyWithSiteID(std::int32_t siteID, std::int32_t privacyID, std::string_view fileName,
                          const VXEventListener& listener);
    /// The same with the caller's own version path and address.
    static std::shared_ptr<VXPrivacyConfiguration>
    initPrivacyWithSiteID(std::int32_t siteID, std::int32_t privacyID, std::string_view fileName,
                          std::string_view versionPath, const std::optional<std::string>& url,
                          const VXEventListener& listener);
    /// A copy of `source` with its theming and buttons parsed. It is not registered anywhere and
    /// keeps the document that `source` has now.
    static std::shared_ptr<VXPrivacyConfiguration>
    initFromConfiguration(const VXConfigurationFile& source);

    /// The IDs of all categories, each followed by those of its subcategories, as the document has
    /// them (a number stays a number). Empty without a document.
    static std::vector<JSONValue> categoryList(const JSONValue& dictionary);

    /// The text at `path` of "texts", or of "texts_XX" with the suffix XX. Empty when the document
    /// has no such texts, missing when they lack this one.
    std::optional<std::string> getTextForKey(std::string_view path,
                                             const std::optional<std::string>& suffix = {}) const;

    /// "#RRGGBB" or "RRGGBB". Black when the text holds no hexadecimal digit first, white when it
    /// holds more than 32 bits; always opaque.
    static Colour parseUIColorFromHex(std::string_view text);

    /// Adds the button positions of a "components" object to `components`.
    void parseComponents(const JSONValue& object);
    /// Adds the colours of a "customisation" object to `customisation`.
    void parseCustomisation(const JSONValue& object);

    /// Colours by name ("content_fontcolor"); only those that the document gives.
    const OrderedDictionary<Colour>& customisation() const { return customisation_; }
    void setCustomisation(OrderedDictionary<Colour> colours);
    /// 1-based positions of the IAB screens' buttons ("firstLayerButton-Detail": "1").
    const OrderedDictionary<std::string>& components() const { return components_; }
    void setComponents(OrderedDictionary<std::string> positions);

    /// Compares a newer document with the one it replaces and posts the change notification where
    /// there is something to tell; says whether it did.
    bool specificUpdate(std::string_view oldText, std::string_view newText) override;
    /// Whether the document `newText` flags itself as a significant change.
    static bool significantUpdate(std::string_view newText);
    /// Whether two documents differ in their category IDs; their order does not matter.
    static bool compareCategories(std::string_view oldText, std::string_view newText);

private:
    OrderedDictionary<Colour> customisation_;
    OrderedDictionary<std::string> components_;
};

} // namespace vx

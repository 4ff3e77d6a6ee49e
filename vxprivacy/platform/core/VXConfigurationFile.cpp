#include "vxprivacy/platform/core/VXConfigurationFile.h"

#include <limits>
#include <utility>

#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

VXConfigurationFile::~VXConfigurationFile() = default;

void VXConfigurationFile::setSiteID(std::int32_t siteID, std::int32_t fileID,
                                    std::string_view fileName, std::string_view versionPath,
                                    const std::optional<std::string>& url) {
    setPackaged(fileName, versionPath);
    source_ = url ? Source::Address : Source::ConfigurationCDN;
    siteID_ = siteID;
    fileID_ = fileID;
    baseURL_ = url;
}

void VXConfigurationFile::setPackaged(std::string_view fileName, std::string_view versionPath) {
    source_ = Source::Packaged;
    offlineName_ = fileName;
    sharedName_ = fileName;
    versionPath_ = versionPath;
}

void VXConfigurationFile::setDocument(JSONValue document) {
    document_ = std::move(document);
    version_ = getJsonLeaf(document_, versionPath_).integerValue();
}

// One that 32 bits do not hold would be the highest there is, and bar all later ones.
std::int32_t VXConfigurationFile::versionOf(const JSONValue& document) const {
    using Limits = std::numeric_limits<std::int32_t>;
    const JSONValue version = getJsonLeaf(document, versionPath_);
    const double exact = version.number().value_or(
        static_cast<double>(longIntegerValue(version.string().value_or(""))));
    return exact < Limits::min() || exact > Limits::max() ? 0 : version.integerValue();
}

void VXConfigurationFile::install(std::string_view oldText, std::string_view newText,
                                  JSONValue newDocument) {
    setDocument(std::move(newDocument)); // first, for who hears of the change looks at it
    specificUpdate(oldText, newText);
}

JSONValue VXConfigurationFile::getJSONDictionaryFromString(std::string_view text) {
    const JSONValue value = JSONValue::parse(text);
    return value.isObject() ? value : JSONValue();
}

JSONValue VXConfigurationFile::getJsonLeafFromPath(std::string_view path) const {
    return getJsonLeaf(document_, path);
}

JSONValue VXConfigurationFile::getJsonLeaf(const JSONValue& dictionary, std::string_view path) {
    JSONValue leaf = dictionary;
    for (std::string_view key : split(path, '/'))
        leaf = leaf[key];
    return leaf;
}

bool VXConfigurationFile::specificUpdate(std::string_view, std::string_view) {
    return false;
}

void VXConfigurationFile::copyDescription(const VXConfigurationFile& other) {
    source_ = other.source_;
    siteID_ = other.siteID_;
    fileID_ = other.fileID_;
    offlineName_ = other.offlineName_;
    sharedName_ = other.sharedName_;
    baseURL_ = other.baseURL_;
    version_ = other.version_;
    versionPath_ = other.versionPath_;
    bundle_ = other.bundle_;
}

} // namespace vx

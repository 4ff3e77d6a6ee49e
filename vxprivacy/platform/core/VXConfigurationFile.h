#pragma once

#include "vxprivacy/platform/core/VXEvents.h"
#include "vxprivacy/platform/foundation/JSONValue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// A JSON document that the core library finds, keeps offline, updates and parses.
///
/// The object knows where its document comes from and holds the parsed document; fetching and
/// keeping are the installed `ConfigurationDocuments`' work. Application's thread.
class VXConfigurationFile {
public:
    /// Where the document comes from.
    enum class Source {
        Packaged,         ///< only from the copy that ships with the application
        ConfigurationCDN, ///< an address made of host, site ID, file ID and name
        Address           ///< the address given
    };

    virtual ~VXConfigurationFile();

    /// Says what the file is. `versionPath` is the "/"-separated place of the document's version.
    /// Without `url` the document lies on the configuration CDN under the two IDs.
    void setSiteID(std::int32_t siteID, std::int32_t fileID, std::string_view fileName,
                   std::string_view versionPath, const std::optional<std::string>& url);
    /// The same for a file that ships with the application and has no address.
    void setPackaged(std::string_view fileName, std::string_view versionPath);

    Source source() const { return source_; }
    std::int32_t siteID() const { return siteID_; }
    std::int32_t fileID() const { return fileID_; }
    const std::string& offlineName() const { return offlineName_; }
    const std::string& sharedName() const { return sharedName_; }
    /// The address given, or nothing.
    const std::optional<std::string>& baseURL() const { return baseURL_; }
    const std::string& versionPath() const { return versionPath_; }
    /// Directory of the copy that ships with the application; empty: the platform's usual one.
    const std::string& bundle() const { return bundle_; }
    void setBundle(std::string_view directory) { bundle_ = directory; }

    /// The number at the version path of the document; 0 when there is no document or no number.
    std::int32_t version() const { return version_; }
    /// The document, or absent when none was found yet.
    JSONValue getJSONDictionary() const { return document_; }
    /// Puts `document` in place, silently. Absent: there is none.
    void setDocument(JSONValue document);
    /// A newer document arrives: asks `specificUpdate`, then puts it in place. The old text is
    /// empty when there was no document.
    void install(std::string_view oldText, std::string_view newText, JSONValue newDocument);

    /// The object that `text` holds, or absent.
    static JSONValue getJSONDictionaryFromString(std::string_view text);
    /// The value at the end of `path` ("information/version"), or absent.
    static JSONValue getJsonLeaf(const JSONValue& dictionary, std::string_view path);

    /// Asked when a newer document is installed: whether the change concerned this file's owner,
    /// who is told by then. A file that does not care says no.
    virtual bool specificUpdate(std::string_view oldText, std::string_view newText);

    /// Through which the file posts its notifications.
    VXEventSender& senderDelegate() { return senderDelegate_; }

protected:
    void copyDescription(const VXConfigurationFile& other);

private:
    Source source_ = Source::Packaged;
    std::int32_t siteID_ = 0;
    std::int32_t fileID_ = 0;
    std::string offlineName_;
    std::string sharedName_;
    std::optional<std::string> baseURL_;
    std::int32_t version_ = 0;
    std::string versionPath_;
    std::string bundle_;
    JSONValue document_;
    VXEventSender senderDelegate_;
};

} // namespace vx

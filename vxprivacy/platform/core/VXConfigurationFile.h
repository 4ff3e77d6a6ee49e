#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/core/VXEvents.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/JSONValue.h"

namespace vx {

/// A JSON document that is found, kept offline and updated for the module.
///
/// The object knows where its document comes from, and holds it parsed. Fetching and keeping it is
/// the work of the door `ConfigurationDocuments`, once the file is registered with
/// `VXConfigurationFileFactory`. Application's thread.
class VXPRIVACY_EXPORT VXConfigurationFile {
public:
    /// Where the document comes from.
    enum class Source {
        Packaged,         ///< only from the copy that ships with the application
        ConfigurationCDN, ///< an address made of host, site ID, file ID and name
        Address           ///< the address given
    };

    virtual ~VXConfigurationFile();

    // What the file is; to be said before it is registered.

    /// A file that is downloaded: from `url`, or without one from the configuration CDN under the
    /// two IDs. `versionPath` says where in the document its version stands, keys joined by "/"
    /// ("information/version").
    void setSiteID(std::int32_t siteID, std::int32_t fileID, std::string_view fileName,
                   std::string_view versionPath, const std::optional<std::string>& url);
    /// A file that ships with the application and has no address.
    void setPackaged(std::string_view fileName, std::string_view versionPath);

    // As they were said above; 0, empty or absent where nothing was.
    Source source() const { return source_; }
    std::int32_t siteID() const { return siteID_; }
    std::int32_t fileID() const { return fileID_; }
    /// The file's name without ".json": copies are kept and found under it.
    const std::string& offlineName() const { return offlineName_; }
    /// The same name.
    const std::string& sharedName() const { return sharedName_; }
    /// The address given, or nothing.
    const std::optional<std::string>& baseURL() const { return baseURL_; }
    const std::string& versionPath() const { return versionPath_; }
    /// Directory of the copy that ships with the application; empty: the platform's usual one.
    const std::string& bundle() const { return bundle_; }
    void setBundle(std::string_view directory) { bundle_ = directory; }

    // The document.

    /// The number at the version path; 0 when there is no document or no number, the nearest that
    /// 32 bits hold where it is too large. A text that begins with a number counts as that number.
    std::int32_t version() const { return version_; }
    /// By which `document` is compared with another: its version, or 0 where 32 bits do not hold
    /// it.
    std::int32_t versionOf(const JSONValue& document) const;
    /// The document, or absent when none was found yet. A copy of the handle, not of the document:
    /// who holds it keeps this version, also when a newer one is put in place.
    JSONValue getJSONDictionary() const { return document_; }
    /// Puts `document` in place and tells nobody. Absent: there is none any more.
    void setDocument(JSONValue document);
    /// Puts a newer document in place and then asks `specificUpdate`: who is told of the change
    /// finds the new document here. The texts are the whole documents; the old one is empty when
    /// there was none.
    void install(std::string_view oldText, std::string_view newText, JSONValue newDocument);

    /// The object that `text` holds, or absent.
    static JSONValue getJSONDictionaryFromString(std::string_view text);
    /// The value at the end of `path` ("information/version"), or absent when a key on the way is
    /// missing.
    static JSONValue getJsonLeaf(const JSONValue& dictionary, std::string_view path);
    /// The same for the file's own document.
    JSONValue getJsonLeafFromPath(std::string_view path) const;

    /// Tells the file's owner of a newer document, where that concerns the owner, and says whether
    /// it did. As it stands: tells nobody and says no.
    virtual bool specificUpdate(std::string_view oldText, std::string_view newText);

    /// Posts the file's notifications.
    VXEventSender& senderDelegate() { return senderDelegate_; }

protected:
    /// Takes over what `other` is, and its version; not its document.
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

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// The user's choices as they lie in the key-value store: an entry for each, lists of the saved
/// keys, the global consent, its time and the display flag. Keys and values are those of
/// VXPrivacyConstants.h and ConsentEntry.h.
///
/// What is stored can be read at once; it is durable when the transaction around it is committed.
class SavedEntries {
public:
    /// What is stored under `key`; absent when nothing is.
    static std::optional<std::string> text(std::string_view key);
    /// Whether the entry under `key` is an acceptance; without an entry it is not.
    static bool isAccepted(std::string_view key);

    /// The keys of all lists: categories, vendors, features. The empty piece behind a list's last
    /// separator counts as a key, deliberately.
    static std::vector<std::string> getSavedCategoriesAndVendors();
    /// Appends the keys of `list`, the text of a saved one, to `keys`.
    static void appendByParsing(const std::optional<std::string>& list,
                                std::vector<std::string>& keys);
    /// The entries under all keys as a query string, "&key=value" each; a missing value prints as
    /// "(null)". Empty without saved keys. Nothing is escaped.
    static std::string categoriesToStartWith();

    /// Puts `value` under `key`.
    static void store(std::string_view key, std::string_view value);
    /// Stores the entries whose keys begin with `prefix`, and their list where that is the prefix
    /// of a kind; says whether one of them is accepted. An entry that was saved before and is not
    /// among them stays, but is listed no more.
    static bool getCustomCategories(const ConsentDictionary& consent, std::string_view prefix);
    /// Stores `keys`, each followed by ";", as the list named `list`; without keys it stays as it
    /// is.
    static void storeList(std::string_view list, std::string_view keys);
    /// Stores the empty text in place of each list.
    static void clearLists();

    /// Stores the global consent and the time.
    static void storeGlobalConsent(std::string_view value);
    /// Says which global consent the entries go with that are stored now, as far as another process
    /// changed it. The switch stores it only when the decision of this process changes.
    static void standByGlobalConsent(std::string_view value);
    /// Stores the time as that of the last save.
    static void saveTimeOfConsent();
    /// Says whether the privacy center must be displayed: one of the flag's values.
    static void storeDisplayFlag(std::string_view value);
    /// On a first start: says that it must be.
    static void armDisplayFlagIfAbsent();

    /// Everything listed, the lists, the global consent and its time, as they are now.
    static ConsentDictionary snapshot();
};

} // namespace vx

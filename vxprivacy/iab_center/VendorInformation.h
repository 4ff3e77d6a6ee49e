#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/iab_center/ContentView.h"
#include "vxprivacy/iab_center/VendorRecord.h"

namespace vx {

/// Writes what a vendor's record says into a view of a screen: the policy's address, then a list
/// for each kind of item that it has, then, where the IAB library asks for that, what it says of
/// data: categories, retention, and the addresses of claim and disclosure. Puts the horizontal
/// rules there and leaves the vertical ones to the screen.
class VendorInformation {
public:
    /// A panel within the vendor list, or a screen of its own.
    enum class Place { Panel, Screen };

    /// `parentName` is `parent`'s name on the screen. All must outlive this.
    VendorInformation(ContentView& screen, View& parent, std::string_view parentName, Place place)
        : screen_(screen), parent_(parent), parentName_(parentName), place_(place) {}

    /// The policy's address is a button that does `open`.
    void add(const VendorRecord& record, std::function<void(const Button& sender)> open);

    /// The names of what was written, from top to bottom. All stand in the screen's `UIObjects`
    /// too.
    const std::vector<std::string>& names() const { return names_; }

private:
    struct Link;
    struct List;

    void addLink(const Link& link, std::optional<std::string_view> address,
                 std::function<void(const Button& sender)> open);
    void addLists(const VendorRecord& record);
    void addList(const List& list, const std::vector<std::int32_t>& ids);
    void addDataUse(const VendorRecord& record, std::string_view language);
    void addRetention(const VendorRecord::Retention& retention);
    std::shared_ptr<Label> addTitle(std::string_view textPath, std::string_view name);
    void addItem(const std::string& text, const std::string& name,
                 const std::shared_ptr<Label>& title);
    // A panel lies in a row, which has a heading of its own.
    std::int32_t headingLevel() const { return place_ == Place::Panel ? 3 : 2; }
    void note(const std::string& name);

    ContentView& screen_;
    View& parent_;
    std::string_view parentName_;
    Place place_;
    std::vector<std::string> names_;
};

} // namespace vx

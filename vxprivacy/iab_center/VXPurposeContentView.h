#pragma once

#include <memory>
#include <string>
#include <vector>

#include "vxprivacy/iab_center/SecondLayerContentView.h"
#include "vxprivacy/iab_center/VXPurposeLegalContentView.h"
#include "vxprivacy/iab_center/VendorRecord.h"

namespace vx {

/// The purposes, special purposes, features and special features, each in a box with its name, its
/// description and two links: to its legal wording and to the vendors related to it. Purposes and
/// special features have switches; a purpose's sets its consent and its legitimate interest.
class VXPurposeContentView : public SecondLayerContentView {
public:
    /// Builds the screen. The controller's model must be loaded.
    explicit VXPurposeContentView(VXIABPrivacyCenterViewController& controller);

    Kind kind() const override { return Kind::Purposes; }

    // Actions of the switches and links; `sender` is the control touched, a switch already in its
    // new state.

    void selectCategory(const Switch& sender);
    /// Does what `selectCategory` does.
    void selectLegIntCategory(const Switch& sender) { selectCategory(sender); }
    void selectSpecialFeature(const Switch& sender);
    void displayDescription(const Button& sender);
    void displayRelatedVendors(const Button& sender);
    void displayVendorList();

    /// One for each item, from top to bottom.
    const std::vector<std::shared_ptr<VXPurposeLegalContentView>>& detailList() const {
        return detailList_;
    }
    /// That of the link tapped last; null before.
    const std::shared_ptr<VXPurposeLegalContentView>& currentDetail() const {
        return currentDetail_;
    }
    /// Null where it has no text.
    const std::shared_ptr<Button>& vendorBtn() const { return vendorBtn_; }
    /// Always empty, deliberately: the vendors have a screen of their own.
    const std::vector<VendorRecord>& vendorList() const { return vendorList_; }

private:
    struct Section;
    struct Item;

    void addCategories();
    void build(const Section& section);
    void buildItems(const Section& section, const std::vector<std::string>& keys, View& box);
    Item buildItem(const Section& section, const std::string& key, View& box);
    void addPurpose(const Item& item);
    void addSpecialFeature(const Item& item);
    void addInformation(const Item& item);
    std::shared_ptr<View> createConsentContainer(std::int32_t purpose);
    void addLinks(Item& item, const Section& section, const std::string& key);

    std::vector<std::shared_ptr<VXPurposeLegalContentView>> detailList_;
    std::shared_ptr<VXPurposeLegalContentView> currentDetail_;
    std::shared_ptr<Button> vendorBtn_;
    std::vector<VendorRecord> vendorList_;
};

} // namespace vx

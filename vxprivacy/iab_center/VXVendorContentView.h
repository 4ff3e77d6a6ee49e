#pragma once

#include <memory>
#include <string>
#include <vector>

#include "vxprivacy/iab_center/SecondLayerContentView.h"
#include "vxprivacy/iab_center/VXVendorDetailContentView.h"

namespace vx {

/// The vendors, a row each: name, switch where there is something to refuse, and a button that
/// expands the row into what the vendor does, or collapses it. A switch sets the vendor's consent
/// and its legitimate interest.
class VXVendorContentView : public SecondLayerContentView {
public:
    /// Builds the screen for the controller's `vendorsToDisplay`. Time: the number of vendors.
    explicit VXVendorContentView(VXIABPrivacyCenterViewController& controller);

    Kind kind() const override { return Kind::Vendors; }

    // Actions of the switches and buttons; `sender` is the control touched, a switch already in its
    // new state.

    void selectVendor(const Switch& sender);
    /// Does what `selectVendor` does.
    void selectLegIntVendor(const Switch& sender) { selectVendor(sender); }
    /// Expands the row of the sender, or collapses it.
    void displayDetails(const Button& sender);
    /// Opens the sender's title as an address through the door `Application`.
    void policyButtonAction(const Button& sender);
    void displayPurposeList();

    /// The record of each row, from top to bottom.
    const std::vector<std::shared_ptr<VXVendorDetailContentView>>& detailBtns() const {
        return detailBtns_;
    }
    /// What `displayVendorDetail` shows; null unless the application set it: the screen never does.
    const std::shared_ptr<VXVendorDetailContentView>& currentDetail() const {
        return currentDetail_;
    }
    void setCurrentDetail(std::shared_ptr<VXVendorDetailContentView> detail) {
        currentDetail_ = std::move(detail);
    }
    /// Null where it has no text.
    const std::shared_ptr<Button>& purposeBtn() const { return purposeBtn_; }
    /// Always empty, deliberately.
    const ViewsDictionary& stackList() const { return stackList_; }
    const OrderedDictionary<VisualFormat>& constraintList() const { return constraintList_; }

private:
    void createPurposeViewButton();
    void addVendors();
    void buildInterfaceWith(const VendorRecord& record);
    void addConsentContainer(const VendorRecord& record, View& row);
    std::shared_ptr<View> displayInformation(const VendorRecord& record, View& row);
    void hideInformation(const VendorRecord& record, View& row,
                         const std::vector<std::shared_ptr<View>>& kept);
    void stackPanel(const VendorRecord& record, View& panel, const std::string& name);
    std::vector<std::shared_ptr<View>> keptViews(const VendorRecord& record) const;

    std::shared_ptr<Label> title_;
    std::vector<std::shared_ptr<VXVendorDetailContentView>> detailBtns_;
    std::shared_ptr<VXVendorDetailContentView> currentDetail_;
    std::shared_ptr<Button> purposeBtn_;
    ViewsDictionary stackList_;
    OrderedDictionary<VisualFormat> constraintList_;
};

} // namespace vx

#include "vxprivacy/iab_center/VXVendorContentView.h"

#include <algorithm>

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/iab_center/ConsentNumbers.h"
#include "vxprivacy/iab_center/VendorInformation.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/ui/Application.h"

namespace vx {

namespace {

using LabelType = VXIABPrivacyCenterViewController::LabelType;

// A row's names carry the vendor's ID, by which they are found again.
std::string named(std::string_view format, const VendorRecord& record) {
    return formatted(format, {record.vendorID(), record.vendorID(), record.vendorID()});
}

// What a row without anything to refuse leaves out.
std::string consentFragment(const VendorRecord& record) {
    return record.hasChoice() ? named("[consentContainer%d]", record) : "";
}

} // namespace

VXVendorContentView::VXVendorContentView(VXIABPrivacyCenterViewController& controller) {
    begin(controller);
    createContainer(kWhite);
    createScrollView();
    title_ = stackTitle("vendors/title", "vendorScreenTitle");
    createPurposeViewButton();
    addVendors();
    customiseButtons();
    arrangeViews();
}

void VXVendorContentView::createPurposeViewButton() {
    createButtons();
    saveExitBtn()->setTitleColor(kLinkColour);
    purposeBtn_ = createNavigationButton("generic/purposeButton", "purposeBtn",
                                         [this] { displayPurposeList(); });
}

void VXVendorContentView::addVendors() {
    for (const VendorRecord* record : viewController()->recordsToDisplay()) {
        buildInterfaceWith(*record);
        viewController()->setNumberOfViews(viewController()->numberOfViews() + 1);
    }
}

void VXVendorContentView::buildInterfaceWith(const VendorRecord& record) {
    const auto detail = std::make_shared<VXVendorDetailContentView>();
    detail->setRecord(record);
    const auto row = viewController()->createStackView(record.vendorID());
    const std::string rowName = named("stackView%d", record);
    enter(rowName, row);
    scrollContainerView()->addSubview(row);
    if (record.hasChoice())
        addConsentContainer(record, *row);
    const auto name =
        addLabel(LabelType::Title, std::string(record.name()), named("nameL%d", record), *row);
    name->setHeadingLevel(2);
    makeItem(*row, name, title_);
    const auto button = createLink("generic/detailButton");
    button->addTouchUpInside([this, sender = button.get()] { displayDetails(*sender); });
    button->setExpanded(false, nullptr);
    enter(named("detailBtn%d", record), button);
    row->addSubview(button);
    detail->setOriginalBtn(button);
    detailBtns_.push_back(detail);
    stack(rowName);
    attach(formatted("H:|-[%@]-|", {rowName}), *scrollContainerView());
    attach(named("H:|-[nameL%d]-|", record), *row, kAlignAllCentreY);
    attach(named("H:[detailBtn%d]-|", record), *row);
    attach(named("V:|-[nameL%d]", record) + consentFragment(record) +
               named("[detailBtn%d]|", record),
           *row);
}

// The switch and its label carry the running number, not the vendor's, deliberately.
void VXVendorContentView::addConsentContainer(const VendorRecord& record, View& row) {
    const auto [container, consentSwitch] =
        createConsentRow(named("consentContainer%d", record),
                         consentNumber(kVXVendorOffset, record.vendorID()), kVXVendorPrefix);
    consentSwitch->addTouchUpInside(
        [this, sender = consentSwitch.get()] { selectVendor(*sender); });
    row.addSubview(container);
    attach(named("H:|-[consentContainer%d]|", record), row, kAlignAllCentreY);
    // The purpose screen has it the other way round, deliberately.
    attach(numbered("V:|[consentL%d]|"), *container);
    attach(numbered("V:|[consentSwitch%d(consentL%d)]|"), *container);
}

void VXVendorContentView::selectVendor(const Switch& sender) {
    viewController()->choose(kVXVendorPrefix, sender.tag(), sender.on());
    viewController()->choose(kVXVendorPrefix, wrappedSum(sender.tag(), 1), sender.on());
}

// What a row shows while it is collapsed.
std::vector<std::shared_ptr<View>>
VXVendorContentView::keptViews(const VendorRecord& record) const {
    std::vector<std::shared_ptr<View>> kept;
    for (std::string_view format : {"detailBtn%d", "nameL%d", "consentContainer%d"})
        if (const auto* view = viewsDictionary().find(named(format, record)))
            kept.push_back(*view);
    return kept;
}

void VXVendorContentView::displayDetails(const Button& sender) {
    const auto found = std::ranges::find_if(
        detailBtns_, [&](const auto& each) { return each->originalBtn().get() == &sender; });
    if (found == detailBtns_.end())
        return;
    const VendorRecord& record = (*found)->record();
    View& row = **viewsDictionary().find(named("stackView%d", record));
    const auto kept = keptViews(record);
    Button& button = *(*found)->originalBtn();
    if (row.subviews().size() > kept.size()) {
        hideInformation(record, row, kept);
        button.setExpanded(false, nullptr);
    } else {
        button.setExpanded(true, displayInformation(record, row));
    }
}

std::shared_ptr<View> VXVendorContentView::displayInformation(const VendorRecord& record,
                                                              View& row) {
    auto panel = std::make_shared<View>();
    const Colour* ground = colour("content_backgroundcolor");
    panel->setBackgroundColor(ground ? *ground : kWhite);
    const std::string name = named("vendorList%d", record);
    enter(name, panel);
    row.addSubview(panel);
    const auto isInRow = [&](const View* item) { return item && item->superview() == &row; };
    row.removeConstraints([&](const LayoutConstraint& constraint) {
        return isInRow(constraint.firstItem) || isInRow(constraint.secondItem);
    });
    if (record.hasChoice())
        attach(named("H:|-[consentContainer%d]|", record), row, kAlignAllCentreY);
    attach(named("H:|-[nameL%d]-|", record), row, kAlignAllCentreY);
    attach(named("H:[detailBtn%d]-|", record), row);
    attach(named("H:|-[vendorList%d]|", record), row, kAlignAllCentreY);
    attach(named("V:|-[nameL%d]", record) + consentFragment(record) +
               named("[detailBtn%d][vendorList%d]|", record),
           row);
    stackPanel(record, *panel, name);
    return panel;
}

// Names of panels that are open together may be the same, and belong to the last; all are appended
// to `UIObjects` again, deliberately.
void VXVendorContentView::stackPanel(const VendorRecord& record, View& panel,
                                     const std::string& name) {
    VendorInformation information(*this, panel, name, VendorInformation::Place::Panel);
    information.add(record, [this](const Button& sender) { policyButtonAction(sender); });
    std::string vertical = "V:|-";
    for (const std::string& each : information.names())
        vertical += formatted("[%@]-", {each});
    attach(vertical + "|", panel);
}

void VXVendorContentView::hideInformation(const VendorRecord& record, View& row,
                                          const std::vector<std::shared_ptr<View>>& kept) {
    const auto subviews = row.subviews(); // a copy: it changes
    for (const auto& view : subviews)
        if (std::ranges::find(kept, view) == kept.end()) {
            view->forgetActions(); // nobody sees it again
            view->removeFromSuperview();
        }
    attach(named("V:|-[nameL%d]", record) + consentFragment(record) +
               named("[detailBtn%d]|", record),
           row);
}

void VXVendorContentView::policyButtonAction(const Button& sender) {
    openURL(sender.title());
}

void VXVendorContentView::displayPurposeList() {
    viewController()->displayPurposeScreen();
}

} // namespace vx

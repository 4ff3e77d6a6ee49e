#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXPopUpContentView.h"
#include "vxprivacy/iab_center/VXPurposeContentView.h"
#include "vxprivacy/iab_center/VXVendorContentView.h"
#include "vxprivacy/platform/ui/Touch.h"
#include "vxprivacy/testing/World.h"

// What scripted sessions cannot show of the privacy centers' screens: what is built and what is
// not, how long a screen lives, what stands around a center, its shares of the width, where it
// scrolls.

namespace {

using namespace vx;
using Center = VXIABPrivacyCenterViewController;

struct Application : ViewControllerDelegate {
    void show() {
        world.engine().setSiteID(12, 5);
        center = std::make_unique<Center>();
        center->setDelegate(this);
        center->viewDidLoad();
    }
    std::shared_ptr<View> named(const std::string& name) const {
        return *center->currentScreen()->viewsDictionary().find(name);
    }

    void viewControllerDismissed(ViewController& gone, bool) override { end(gone); }
    void viewControllerPopped(ViewController& gone, bool) override { end(gone); }
    void end(ViewController& gone) {
        gone.viewWillDisappear(true);
        center.reset();
    }

    recording::World world{{.files = {{"vendor-list", R"({"purposes":{"1":{"id":1}},
                       "specialFeatures":{"1":{"id":1}},"vendors":{
                       "7":{"id":7,"purposes":[-5,1],"policyUrl":"https://seven.example/"},
                       "8":{"id":7,"name":"the same ID","purposes":[1]},
                       "9":{"id":-9,"name":"an ID that no row has","purposes":[1]}}})"},
                                      {"privacy", "{}"}},
                            .iab = true}};
    std::unique_ptr<Center> center;
};

TEST(IABCenter, DetailsAreBuiltWhenTheyAreFirstShownAndNeverAgain) {
    Application application;
    application.show();
    Center& center = *application.center;
    for (const std::shared_ptr<DetailContentView>& detail :
         {std::shared_ptr<DetailContentView>(center.vendorContentView()->detailBtns().front()),
          std::shared_ptr<DetailContentView>(center.purposeContentView()->detailList().front())}) {
        EXPECT_FALSE(detail->containerView() || detail->viewController());
        EXPECT_TRUE(detail->viewsDictionary().empty() && detail->UIObjects().empty());
        const std::int32_t before = center.numberOfViews();
        detail->displayWithController(center);
        const auto built = detail->containerView();
        const auto names = detail->UIObjects();
        detail->displayWithController(center);
        EXPECT_EQ(detail->containerView(), built);
        EXPECT_EQ(detail->UIObjects(), names);
        EXPECT_EQ(center.numberOfViews(), before + 1);
    }
}

TEST(IABCenter, ShowsNoDetailsThatWereNotChosen) {
    Application application;
    application.show();
    const auto shown = application.center->currentScreen();
    application.center->displayVendorDetail();
    application.center->displayPurposeDetail();
    EXPECT_EQ(application.center->currentScreen(), shown);
}

TEST(IABCenter, TheWayBackReplacesTheListThatHoldsIt) {
    Application application;
    application.show();
    Center& center = *application.center;
    center.displayVendorList();
    const std::weak_ptr<VXVendorContentView> list = center.vendorContentView();
    auto detail = center.vendorContentView()->detailBtns().front();
    const std::weak_ptr<VXVendorDetailContentView> watched = detail;
    detail->displayWithController(center);
    center.vendorContentView()->setCurrentDetail(std::move(detail));
    center.displayVendorDetail();
    const auto back = application.named("backBtn");
    touch(*back);
    EXPECT_TRUE(list.expired() && watched.expired());
    EXPECT_EQ(center.currentScreen(), center.vendorContentView());
    touch(*back); // a late tap on what is gone
    EXPECT_EQ(center.currentScreen(), center.vendorContentView());
}

TEST(IABCenter, MayBeEndedByTheApplicationThatHearsOfItsClosing) {
    for (const char* button : {"acceptAll", "refuseAll", "saveExitBtn"}) {
        Application application;
        ViewController presenter;
        application.show();
        presenter.presentViewController(*application.center);
        application.center->displayVendorList();
        const auto root = application.center->view();
        const auto touched = application.named(button);
        touch(*touched);
        EXPECT_FALSE(application.center) << button;
        EXPECT_TRUE(application.world.store().get("PRIVACY_VEN_1013")) << button;
        touch(*touched);
    }
}

TEST(IABCenter, StaysWhereNobodyPresentsIt) {
    Application application;
    application.show();
    application.center->actionAcceptAll();
    EXPECT_TRUE(application.center);
}

TEST(IABCenter, IsModalUnlessANavigationControllerAloneHasIt) {
    Application application;
    application.show();
    Center& center = *application.center;
    EXPECT_TRUE(center.isModal()); // nothing equals nothing
    ViewController presenter;
    NavigationController navigation;
    navigation.pushViewController(center);
    EXPECT_FALSE(center.isModal());
    TabBarController inner;
    center.setTabBarController(&inner);
    presenter.presentViewController(inner);
    EXPECT_FALSE(center.isModal());
    TabBarController outer;
    outer.presentViewController(inner);
    EXPECT_TRUE(center.isModal());
    center.setTabBarController(nullptr);
    presenter.presentViewController(navigation);
    EXPECT_TRUE(center.isModal());
}

TEST(IABCenter, HidesWhatThePlatformWouldShowAroundIt) {
    Application application;
    application.world.engine().setSiteID(12, 5);
    NavigationController navigation;
    navigation.setToolbarHidden(false);
    Center center;
    navigation.pushViewController(center);
    center.viewDidLoad();
    EXPECT_TRUE(center.prefersStatusBarHidden() && center.hidesBackButton());
    EXPECT_TRUE(navigation.toolbarHidden());
}

TEST(IABCenter, OpensEveryScreenAtItsTop) {
    Application application;
    application.show();
    Center& center = *application.center;
    center.popupContentView()->scrollView()->setContentOffset({0, 90});
    center.displayPurposeScreen();
    center.displayPopUpScreen();
    ScrollView& scroll = *center.popupContentView()->scrollView();
    EXPECT_EQ(scroll.contentOffset(), ScrollView::Offset());
    scroll.scrolledTo({0, 5}); // nothing was measured yet
    EXPECT_EQ(scroll.contentOffset(), (ScrollView::Offset{0, 1}));
}

TEST(CategoryCenter, NeverScrollsSideways) {
    const Application application;
    VXPrivacyCenterViewController center;
    center.viewDidLoad();
    center.scrollView()->scrolledTo({30, 40});
    EXPECT_EQ(center.scrollView()->contentOffset(), (ScrollView::Offset{0, 40}));
}

TEST(PrivacyCenters, ComputeSharesOfTheWidthThatTheirNamesBelie) {
    Application application;
    VXPrivacyCenterViewController categories;
    Center iab;
    for (ViewController* each :
         {static_cast<ViewController*>(&categories), static_cast<ViewController*>(&iab)}) {
        each->view()->setSize(400, 800);
        each->viewDidLoad();
    }
    EXPECT_FLOAT_EQ(static_cast<float>(*categories.metrics().find("oneFourthH")), 60);
    EXPECT_FLOAT_EQ(static_cast<float>(*categories.metrics().find("threeFourthH")), 320);
    EXPECT_FLOAT_EQ(static_cast<float>(*iab.metrics().find("oneThirdH")), 120);
    EXPECT_FLOAT_EQ(static_cast<float>(*iab.metrics().find("aboutHalfH")), 160);
}

TEST(IABCenter, KeepsLongTextsFromSqueezingWhatIsBesideThem) {
    Application application;
    application.show();
    Center& center = *application.center;
    center.displayPurposeScreen();
    EXPECT_EQ(application.named("PSpeFeatureName1")->compressionResistance(), 250);
    center.displayVendorList();
    touch(*center.vendorContentView()->detailBtns().front()->originalBtn());
    const auto policy =
        application.named("privacyPolicyBTN" + std::to_string(center.numberOfViews()));
    EXPECT_EQ(dynamic_cast<Button&>(*policy).minimumScaleFactor(), 0.5);
}

TEST(IABCenter, HasWhatNoScreenUses) {
    Application application;
    application.show();
    Center& center = *application.center;
    EXPECT_EQ(center.currentContentView(), center.popupContentView()->containerView());
    center.setNumberOfViews(7);
    center.attachFormattedConstraint("H:|-%d-[contentView]", *center.view());
    EXPECT_EQ(center.view()->formats().back().text, "H:|-7-[contentView]");
    EXPECT_FALSE(center.globalConsent());
    EXPECT_TRUE(center.purposeContentView()->vendorList().empty());
    EXPECT_TRUE(center.vendorContentView()->stackList().empty());
    EXPECT_TRUE(center.vendorContentView()->constraintList().empty());
}

TEST(IABCenter, StatesWhatNamesARowAndWhetherItIsExpanded) {
    Application application;
    application.show();
    application.center->displayVendorList();
    const auto row = application.named("stackView7")->row();
    ASSERT_TRUE(row);
    EXPECT_EQ(row->title.lock(), application.named("nameL7"));
    EXPECT_EQ(row->section.lock(), application.named("vendorScreenTitle"));
    const auto button = application.center->vendorContentView()->detailBtns().back()->originalBtn();
    EXPECT_EQ(button->expanded(), false);
    touch(*button);
    EXPECT_EQ(button->expanded(), true);
    EXPECT_EQ(button->panel(), application.named("vendorList7"));
    touch(*button);
    EXPECT_EQ(button->expanded(), false);
}

TEST(IABCenter, KeepsRowsApartThatClaimTheSameVendor) {
    Application application;
    application.show();
    application.center->displayVendorList();
    const auto& records = application.center->vendorContentView()->detailBtns();
    ASSERT_EQ(records.size(), 2U);
    for (int round = 0; round < 3; ++round) // the name belongs to the later row
        for (const auto& record : records)
            touch(*record->originalBtn());
    EXPECT_EQ(application.named("stackView7")->subviews().size(), 3U);
}

TEST(IABCenter, LeavesOutVendorsAndItemsWhoseIDsMakeNoName) {
    Application application;
    application.show();
    application.center->displayVendorList();
    EXPECT_EQ(application.center->vendorsToDisplay(), (std::vector<std::string>{"7", "8"}));
    const auto& record = application.center->vendorContentView()->detailBtns().front();
    EXPECT_EQ(record->record().purposes(), std::vector<std::int32_t>{1});
    touch(*record->originalBtn());
    const auto formats = application.named("vendorList7")->formats();
    EXPECT_TRUE(formats.back().text.starts_with("V:|-[policyTitle")) << formats.back().text;
}

} // namespace

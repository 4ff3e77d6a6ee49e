#include <string>

#include <gtest/gtest.h>

#include "vxprivacy/platform/ui/ViewController.h"

namespace {

using namespace vx;

struct Heard : ViewControllerDelegate {
    void viewControllerDismissed(ViewController&, bool) override { text += "dismissed "; }
    void viewControllerPopped(ViewController&, bool) override { text += "popped "; }

    std::string text;
};

TEST(ViewController, DismissesItselfWherePresentedAndTellsItsDelegateOnce) {
    Heard heard;
    ViewController presenter;
    ViewController controller;
    controller.setDelegate(&heard);
    controller.dismissViewController(true); // nobody presents it
    presenter.presentViewController(controller);
    EXPECT_EQ(presenter.presentedViewController(), &controller);
    controller.dismissViewController(true);
    controller.dismissViewController(true);
    EXPECT_EQ(heard.text, "dismissed ");
    EXPECT_FALSE(presenter.presentedViewController());
    EXPECT_FALSE(controller.presentingViewController());
}

TEST(ViewController, IsPresentedWithItsNavigationController) {
    Heard heard;
    ViewController presenter;
    NavigationController navigation;
    ViewController controller;
    controller.setDelegate(&heard);
    navigation.pushViewController(controller);
    EXPECT_FALSE(controller.presentingViewController());
    presenter.presentViewController(navigation);
    EXPECT_EQ(controller.presentingViewController(), &presenter);
    controller.dismissViewController(false);
    EXPECT_EQ(heard.text, "dismissed ");
    EXPECT_FALSE(navigation.presentingViewController());
}

TEST(ViewController, IsPoppedFromAboveAnother) {
    Heard heard;
    NavigationController navigation;
    ViewController first;
    ViewController second;
    first.setDelegate(&heard);
    second.setDelegate(&heard);
    navigation.pushViewController(first);
    navigation.pushViewController(second);
    navigation.popViewController(true);
    navigation.popViewController(true); // the first one stays
    EXPECT_EQ(heard.text, "popped ");
    EXPECT_FALSE(second.navigationController());
    EXPECT_EQ(navigation.viewControllers().size(), 1U);
}

TEST(ViewController, LeavesNobodyPointingAtOneThatEnded) {
    ViewController presenter;
    NavigationController navigation;
    {
        ViewController controller;
        presenter.presentViewController(controller);
        navigation.pushViewController(controller);
    }
    EXPECT_FALSE(presenter.presentedViewController());
    EXPECT_TRUE(navigation.viewControllers().empty());
    {
        ViewController other;
        other.presentViewController(presenter);
    }
    EXPECT_FALSE(presenter.presentingViewController());
}

} // namespace

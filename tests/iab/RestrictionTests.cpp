#include <gtest/gtest.h>

#include "tests/iab/IABApplication.h"
#include "vxprivacy/services/iab/Decoder.h"

// What the publisher's restrictions become in the TC string and under the IAB's keys.

namespace {

using namespace vx;
using namespace vx::services::tcf;
using recording::Texts;
using tests::IABApplication;

Restrictions inString(IABApplication& application) {
    const std::string text = application.builder()->buildConsentString(false);
    return std::get<TCModel>(decode(text)).publisherRestrictions;
}

// By purpose.
Texts inKeys(const IABApplication& application) {
    const std::string key = "IABTCF_PublisherRestrictions";
    Texts found;
    for (const auto& [stored, types] : application.store.entries())
        if (stored.starts_with(key))
            found.emplace(stored.substr(key.size()), types);
    return found;
}

} // namespace

TEST(Restrictions, OfATextHaveTypes0And2InTheString) {
    IABApplication application;
    const Texts texts = {{"1", "11012"}, {"63", "0"}, {"7", "111"}, {"8", "3x0"}};
    PublisherRestrictions restrictions;
    for (const auto& [purpose, types] : texts)
        restrictions.set(purpose, types);
    application.library.setPublisherRestrictions(restrictions);
    EXPECT_EQ(inString(application),
              (Restrictions{{{1, Restriction::NotAllowed}, {3}},
                            {{1, Restriction::RequireLegitimateInterest}, {5}},
                            {{8, Restriction::NotAllowed}, {3}},
                            {{63, Restriction::NotAllowed}, {1}}}));
    EXPECT_EQ(application.lines.size(), 1u); // about 3 and x
    save(application, false);
    EXPECT_EQ(inKeys(application), texts);
}

TEST(Restrictions, ComeIntoForceWithTheNextWrite) {
    IABApplication application;
    application.library.setPublisherRestrictions({{"1", "11012"}, {"2", "0"}});
    EXPECT_TRUE(application.store.entries().empty());
    save(application, false);
    EXPECT_TRUE(application.lines.empty());

    application.library.setPublisherRestrictions(
        {{"2", "12"}, {"64", "0"}, {"01", "0"}, {"", "0"}, {"3 ", "0"}});
    EXPECT_EQ(application.lines.size(), 1u);
    EXPECT_EQ(inKeys(application), (Texts{{"1", "11012"}, {"2", "0"}}));
    save(application, false);
    EXPECT_EQ(inKeys(application), (Texts{{"2", "12"}}));
}

TEST(Restrictions, OfAnEarlierRunAreGoneWithTheNextWrite) {
    IABApplication application(Texts{{"IABTCF_PublisherRestrictions1", "0"}});
    EXPECT_EQ(inString(application), Restrictions());
    save(application, false);
    EXPECT_EQ(inKeys(application), Texts());
}

TEST(Restrictions, OutliveAResetWithinTheRun) {
    IABApplication application;
    application.library.setPublisherRestrictions({{"1", "0"}});
    save(application, false);
    application.library.resetTCData();
    EXPECT_EQ(inKeys(application), Texts());
    EXPECT_EQ(inString(application), (Restrictions{{{1, Restriction::NotAllowed}, {1}}}));
    save(application, false);
    EXPECT_EQ(inKeys(application), (Texts{{"1", "0"}}));
}

TEST(Restrictions, ThatAreExplicitHaveAllTypes) {
    IABApplication application;
    application.library.setPublisherRestrictions({{"1", "11012"}, {"7", "11"}});
    application.library.setExplicitRestrictions(
        {{"1", {{"5", "2"}, {"3", "0"}, {"4", "1"}}}, {"7", {{"2", "1"}}}});
    EXPECT_EQ(inString(application),
              (Restrictions{{{1, Restriction::NotAllowed}, {3}},
                            {{1, Restriction::RequireConsent}, {4}},
                            {{1, Restriction::RequireLegitimateInterest}, {5}},
                            {{7, Restriction::RequireConsent}, {2}}}));
    save(application, false);
    EXPECT_EQ(inKeys(application), (Texts{{"1", "__012"}, {"7", "_1"}}));
    EXPECT_TRUE(application.lines.empty());
}

TEST(Restrictions, ThatAreExplicitMayBeAnything) {
    IABApplication application;
    application.library.setExplicitRestrictions(
        {{"64", {{"1", "0"}}},
         {"x", {{"1", "0"}}},
         {"2", {{"0", "0"}, {"x", "0"}, {"65536", "0"}, {"-1", "0"}}},
         {"3", {{"1", "3"}, {"2", "12"}, {"3", ""}, {"4", "_"}, {"5", "2"}, {"05", "1"}}},
         {"4", {}}});
    EXPECT_TRUE(application.lines.empty());
    EXPECT_EQ(inString(application), (Restrictions{{{3, Restriction::RequireConsent}, {5}}}));
    EXPECT_EQ(application.lines.size(), 1u);
    save(application, false);
    EXPECT_EQ(inKeys(application), (Texts{{"3", "____1"}}));
}

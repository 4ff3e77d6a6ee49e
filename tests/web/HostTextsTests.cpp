// What the host itself says, in the languages of the vendor list.

#include <array>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/hosts/web/HostTexts.h"
#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/platform/ui/View.h"
#include "vxprivacy/testing/World.h"

namespace vx {

namespace {

constexpr std::array kFields = {
    &web::HostTexts::title,    &web::HostTexts::leaves,     &web::HostTexts::countOn,
    &web::HostTexts::notYet,   &web::HostTexts::enabledNow, &web::HostTexts::connectionLost,
    &web::HostTexts::retry,    &web::HostTexts::outOfDate,  &web::HostTexts::showCurrent,
    &web::HostTexts::noScript, &web::HostTexts::newScreen,  &web::HostTexts::search,
    &web::HostTexts::matches,  &web::HostTexts::noMatch,    &web::HostTexts::answersConcernAll};

TEST(HostTexts, EveryLanguageOfTheEngineHasItsOwn) {
    const web::HostTexts& english = web::hostTexts("en");
    int languages = 0;
    for (char first = 'a'; first <= 'z'; ++first)
        for (char second = 'a'; second <= 'z'; ++second) {
            const std::string code = {first, second};
            if (!VXMobilePrivacy::supportsLanguage(code))
                continue;
            ++languages;
            for (const auto field : kFields) {
                const std::string& text = web::hostTexts(code).*field;
                EXPECT_NE(text, english.*field) << code;
                for (const char* placeholder : {"%1$@", "%2$@"})
                    EXPECT_EQ(text.find(placeholder) == std::string::npos,
                              (english.*field).find(placeholder) == std::string::npos)
                        << code << ": " << text;
            }
        }
    EXPECT_EQ(languages, 25);
    EXPECT_EQ(web::hostTexts("de-CH").retry, "Erneut versuchen");
    for (const char* unknown : {"", "xx", "dex", "-de"})
        EXPECT_EQ(web::hostTexts(unknown).retry, english.retry) << unknown;
}

TEST(HostTexts, ThePageSpeaksTheEnginesLanguageUnlessToldOtherwise) {
    recording::World world({}, [](const recording::Event&) {});
    const auto page = [](web::PageSettings settings) {
        return web::WebSurface(std::make_shared<View>(), std::move(settings)).render();
    };
    EXPECT_NE(page({}).find("lang=\"en\""), std::string::npos);
    world.engine().setLanguage("fr");
    EXPECT_NE(page({}).find("lang=\"fr\""), std::string::npos);
    EXPECT_NE(page({}).find("<h1 id=\"title\">Paramètres de confidentialité</h1>"),
              std::string::npos);
    EXPECT_NE(page({.language = "de"}).find("<h1 id=\"title\">Datenschutzeinstellungen</h1>"),
              std::string::npos);
    web::HostTexts own = web::hostTexts("de");
    own.title = "Deine Wahl";
    EXPECT_NE(page({.language = "de", .texts = own}).find("<h1 id=\"title\">Deine Wahl</h1>"),
              std::string::npos);
    EXPECT_NE(page({.title = "<Mine>", .owner = "Ä&"})
                  .find("<h1 id=\"title\">&lt;Mine&gt;</h1><p>Ä&amp;</p>"),
              std::string::npos);
}

} // namespace

} // namespace vx

#include "vxprivacy/hosts/web/Page.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "vxprivacy/hosts/web/Markup.h"

namespace vx::web {

namespace {

bool runsFromRight(std::string_view language) {
    constexpr std::array languages = {"ar", "dv", "fa", "he", "ku", "ps", "sd", "ug", "ur", "yi"};
    return std::ranges::find(languages, language.substr(0, language.find('-'))) != languages.end();
}

std::string_view firstCharacter(std::string_view text) {
    const auto continues = [](char byte) { return (byte & 0xC0) == 0x80; };
    std::size_t end = std::min<std::size_t>(1, text.size());
    while (end < text.size() && continues(text[end]))
        ++end;
    return text.substr(0, end);
}

void addHead(Markup& markup, const Page& page) {
    const PageSettings& settings = page.settings;
    markup.open("html").attribute("lang", settings.language);
    markup.attribute("dir", runsFromRight(settings.language) ? "rtl" : "ltr");
    markup.attribute("class", page.colours == Colours::Own ? "own-colours" : "platform-colours");
    markup.attribute("data-events", settings.events).close();
    markup.open("meta").attribute("charset", "utf-8").close();
    markup.open("meta").attribute("name", "viewport");
    markup.attribute("content", "width=device-width, initial-scale=1, viewport-fit=cover").close();
    markup.open("meta").attribute("http-equiv", "Content-Security-Policy");
    markup.attribute("content", page.policy).close();
    markup.open("title").close().text(settings.title).end("title");
    for (const std::string& sheet : {settings.surfaceCSS, settings.layoutCSS})
        markup.open("link").attribute("rel", "stylesheet").attribute("href", sheet).close();
    markup.open("script").attribute("type", "module").attribute("src", settings.surfaceJS).close();
    markup.end("script");
}

void addTitleBar(Markup& markup, const PageSettings& settings) {
    markup.open("header").attribute("class", "titlebar").close();
    if (!settings.owner.empty()) {
        markup.open("span").attribute("class", "monogram").attribute("aria-hidden", "true").close();
        markup.text(firstCharacter(settings.owner)).end("span");
    }
    markup.open("div").attribute("class", "naming").close();
    markup.open("h1").close().text(settings.title).end("h1");
    if (!settings.owner.empty())
        markup.open("p").close().text(settings.owner).end("p");
    markup.end("div").end("header");
}

} // namespace

std::string document(const Page& page) {
    Markup before;
    addHead(before, page);
    // Inert until the script listens: a tap before would be lost.
    before.open("main").attribute("class", "surface " + std::string(page.frame)).flag("inert");
    before.close().open("div").attribute("class", "sheet").close();
    addTitleBar(before, page.settings);
    before.open("div").attribute("class", "screen").close();
    return "<!doctype html>\n" + before.take() + std::string(page.screen) +
           "</div></div></main></html>\n";
}

} // namespace vx::web

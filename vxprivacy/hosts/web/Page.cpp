#include "vxprivacy/hosts/web/Page.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "vxprivacy/hosts/web/Markup.h"
#include "vxprivacy/hosts/web/Names.h"

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
    markup.attribute("class", nameOf(page.colours)).attribute("data-page", page.id);
    markup.attribute("data-events", settings.events);
    markup.attribute("data-new-screen", settings.texts->newScreen).close();
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
    markup.open("h1").attribute("id", kPageTitle).close().text(settings.title).end("h1");
    if (!settings.owner.empty())
        markup.open("p").close().text(settings.owner).end("p");
    markup.end("div").end("header");
}

// What the script shows in the region for alerts when there is something to say.
void addNotice(Markup& markup, std::string_view id, std::string_view text,
               std::string_view action) {
    markup.open("template").attribute("id", id).close();
    markup.open("div").attribute("class", "toast").close();
    markup.open("p").close().text(text).end("p");
    markup.open("button").attribute("type", "button").attribute("class", "button").close();
    markup.text(action).end("button").end("div").end("template");
}

void addNotices(Markup& markup, const HostTexts& texts) {
    addNotice(markup, "lost", texts.connectionLost, texts.retry);
    addNotice(markup, "gone", texts.outOfDate, texts.showCurrent);
    markup.open("div").attribute("id", "alert").attribute("role", "alert").close().end("div");
    markup.open("div").attribute("id", "status").attribute("class", "unseen");
    markup.attribute("role", "status").close().end("div");
}

} // namespace

std::string_view nameOf(Colours colours) {
    return colours == Colours::Own ? "own-colours" : "platform-colours";
}

std::string document(const Page& page) {
    Markup before;
    addHead(before, page);
    before.open("main").attribute("class", "surface " + std::string(page.frame)).close();
    before.open("div").attribute("class", "sheet").close();
    before.open("p").attribute("id", kNotYet).flag("hidden").close();
    before.text(page.settings.texts->notYet).end("p");
    before.open("noscript").close().open("p").attribute("class", "noscript").close();
    before.text(page.settings.texts->noScript).end("p").end("noscript");
    addTitleBar(before, page.settings);
    // Disabled until the script listens: a tap before would be lost.
    before.open("fieldset").attribute("class", "screen").attribute("role", "none");
    before.flag("disabled").close();
    Markup after;
    addNotices(after, *page.settings.texts);
    return "<!doctype html>\n" + before.take() + std::string(page.screen) + "</fieldset>" +
           after.take() + "</div></main></html>\n";
}

} // namespace vx::web

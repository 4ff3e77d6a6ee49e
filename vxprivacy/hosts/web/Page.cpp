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

// For a list that is all of its screen; the style sheet shows it there.
void addSearch(Markup& markup, const HostTexts& texts) {
    markup.open("div").attribute("class", "find").attribute("id", "find");
    markup.attribute("role", "search").attribute("data-matches", texts.matches).close();
    markup.open("label").close();
    markup.open("span").attribute("class", "unseen").close().text(texts.search).end("span");
    markup.open("input").attribute("id", "search").attribute("type", "search");
    markup.attribute("placeholder", texts.search).attribute("autocomplete", "off");
    markup.attribute("spellcheck", "false").attribute("enterkeyhint", "search").close();
    markup.end("label");
    markup.open("p").attribute("class", "found").close().end("p");
    markup.open("p").attribute("class", "nothing").flag("hidden").close().text(texts.noMatch);
    markup.end("p").end("div");
}

// Under the answers, where it is read by whoever is about to give one.
void addHints(Markup& markup, const HostTexts& texts) {
    markup.open("div").attribute("class", "hint").attribute("id", "waiting").close();
    markup.open("p").attribute("id", kNotYet).close().text(texts.notYet).end("p");
    markup.open("p").close().text(texts.enabledNow).end("p").end("div");
    markup.open("p").attribute("class", "hint").attribute("id", "whole-list").flag("hidden");
    markup.close().text(texts.answersConcernAll).end("p");
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
    before.open("noscript").close().open("p").attribute("class", "noscript").close();
    before.text(page.settings.texts->noScript).end("p").end("noscript");
    addTitleBar(before, page.settings);
    addSearch(before, *page.settings.texts);
    // Disabled until the script listens: a tap before would be lost.
    before.open("fieldset").attribute("class", "screen").attribute("role", "none");
    before.flag("disabled").close();
    Markup after;
    after.end("fieldset");
    addHints(after, *page.settings.texts);
    addNotices(after, *page.settings.texts);
    const std::string end = after.end("div").end("main").end("html").take() + "\n";
    std::string text = "<!doctype html>\n" + before.take();
    text.reserve(text.size() + page.screen.size() + end.size());
    text.append(page.screen).append(end);
    return text;
}

} // namespace vx::web

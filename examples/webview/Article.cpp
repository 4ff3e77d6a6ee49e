#include "examples/webview/Article.h"

#include <string>

#include "vxprivacy/services/iab/InAppTCData.h"

namespace examples {

namespace {

constexpr const char* kArticle = R"(<!doctype html>
<meta charset="utf-8">
<title>The harbour opens its new pier</title>
<style>
  :root { color-scheme: light dark; }
  body { font: 16px/1.5 system-ui, sans-serif; margin: 24px; }
  h1 { font-size: 22px; line-height: 1.25; }
  table { border-collapse: collapse; width: 100%; font-size: 14px; }
  td { border-top: 1px solid color-mix(in srgb, currentColor 25%, transparent); padding: 6px 0; }
  td:first-child { white-space: nowrap; }
  td + td { padding-left: 16px; text-align: right; overflow-wrap: anywhere; }
</style>
<h1>The harbour opens its new pier</h1>
<p>Ferries call there from Monday. What the scripts of this page were told of the consent:</p>
<table><tr><td>Event</td><td>nothing yet</td></tr></table>
<script>
  const count = (flags) => Object.values(flags).filter(Boolean).length;
  __tcfapi("addEventListener", 2, (tcData, success) => {
    if (!success || !tcData.gdprApplies) return;
    const { purpose, vendor, tcString } = tcData;
    const rows = {
      "Event": tcData.eventStatus ?? "none yet",
      "Purposes with consent": count(purpose.consents),
      "Vendors with consent": count(vendor.consents),
      "Vendors disclosed": count(vendor.disclosedVendors),
      "TC string": tcString ? tcString.slice(0, 24) + "…" : "none yet",
    };
    const table = document.querySelector("table");
    table.replaceChildren();
    for (const row of Object.entries(rows)) {
      const line = table.insertRow();
      for (const text of row) line.insertCell().textContent = text;
    }
  });
</script>)";

} // namespace

Article::Article(const vx::KeyValueStore& store) : store_(store) {
    gtk_window_set_title(GTK_WINDOW(window_), "Harbour Weekly");
    gtk_window_set_default_size(GTK_WINDOW(window_), 390, 480);
    gtk_container_add(GTK_CONTAINER(window_), GTK_WIDGET(page_));
    g_signal_connect(window_, "delete-event", G_CALLBACK(gtk_widget_hide_on_delete), nullptr);
    g_signal_connect(page_, "load-changed", G_CALLBACK(loadChanged), this);
    tell(vx::web::TCFEvent::Loaded);
    webkit_web_view_load_html(page_, kArticle, "https://harbour.example/pier");
    gtk_widget_show_all(window_);
}

// Pages that are loaded from now on begin with the script, the one on the screen is told.
void Article::tell(vx::web::TCFEvent event) {
    const bool shown = event == vx::web::TCFEvent::CenterShown;
    state_ = shown ? event : vx::web::TCFEvent::Loaded;
    const std::string script = vx::web::tcfAPIScript(vx::services::inAppTCData(store_), state_);
    WebKitUserScript* added =
        webkit_user_script_new(script.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                               WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
    webkit_user_content_manager_remove_all_scripts(scripts_);
    webkit_user_content_manager_add_script(scripts_, added);
    webkit_user_script_unref(added);
    evaluate(event);
}

void Article::evaluate(vx::web::TCFEvent event) {
    const std::string update = vx::web::tcfAPIUpdate(vx::services::inAppTCData(store_), event);
    webkit_web_view_evaluate_javascript(page_, update.c_str(), -1, nullptr, nullptr, nullptr,
                                        nullptr, nullptr);
}

// A page that was on its way meanwhile had the script of before.
void Article::loadChanged(WebKitWebView*, WebKitLoadEvent event, Article* self) {
    if (event == WEBKIT_LOAD_COMMITTED)
        self->evaluate(self->state_);
}

void Article::stay() {
    if (!gtk_widget_get_visible(window_))
        return;
    g_signal_connect(window_, "hide", G_CALLBACK(gtk_main_quit), nullptr);
    gtk_main();
}

} // namespace examples

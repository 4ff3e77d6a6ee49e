// webview DIRECTORY: a window with the privacy center. DIRECTORY has the application's
// privacy.json, and keeps its choices. With a vendor-list.json in it too, the center is the IAB's.

#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

#include <webkit2/webkit2.h>

#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/hosts/web/Addresses.h"
#include "vxprivacy/hosts/web/StaticFiles.h"
#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/platform/ui/Application.h"
#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/services/iab/TCFLibrary.h"

namespace {

class DesktopApplication : public vx::Application {
    void openURL(std::string_view address) override {
        if (vx::web::mayOpen(address))
            gtk_show_uri_on_window(nullptr, std::string(address).c_str(), GDK_CURRENT_TIME,
                                   nullptr);
    }
};

// The window goes with the center that closes itself.
class Closing : public vx::ViewControllerDelegate {
    void viewControllerDismissed(vx::ViewController&, bool) override { gtk_main_quit(); }
    void viewControllerPopped(vx::ViewController&, bool) override { gtk_main_quit(); }
};

struct File {
    std::string content;
    std::string type;
};

// The page and what it links, under privacy://center/.
File fileAt(const std::string& path, vx::web::WebSurface& surface) {
    for (const vx::web::StaticFile& file : vx::web::staticFiles())
        if (path == "/" + std::string(file.name))
            return {std::string(file.content), std::string(file.mediaType)};
    if (path == "/layout.css")
        return {surface.layoutCSS(), "text/css"};
    return {surface.render(), "text/html; charset=utf-8"};
}

void serve(WebKitURISchemeRequest* request, gpointer surface) {
    const File file = fileAt(webkit_uri_scheme_request_get_path(request),
                             *static_cast<vx::web::WebSurface*>(surface));
    const auto size = static_cast<gssize>(file.content.size());
    GInputStream* stream = g_memory_input_stream_new_from_data(
        g_memdup2(file.content.data(), file.content.size()), size, g_free);
    webkit_uri_scheme_request_finish(request, stream, size, file.type.c_str());
    g_object_unref(stream);
}

// The page's message channel: an event comes in, the patch is the reply.
gboolean receive(WebKitUserContentManager*, JSCValue* event, WebKitScriptMessageReply* reply,
                 gpointer surface) {
    char* text = jsc_value_to_string(event);
    const std::string patch = static_cast<vx::web::WebSurface*>(surface)->dispatch(text);
    g_free(text);
    JSCValue* answer = jsc_value_new_string(jsc_value_get_context(event), patch.c_str());
    webkit_script_message_reply_return_value(reply, answer);
    g_object_unref(answer);
    return TRUE;
}

void show(vx::web::WebSurface& surface) {
    WebKitWebContext* context = webkit_web_context_get_default();
    webkit_web_context_register_uri_scheme(context, "privacy", serve, &surface, nullptr);
    WebKitUserContentManager* channel = webkit_user_content_manager_new();
    g_signal_connect(channel, "script-message-with-reply-received::privacy", G_CALLBACK(receive),
                     &surface);
    webkit_user_content_manager_register_script_message_handler_with_reply(channel, "privacy",
                                                                           nullptr);
    GtkWidget* page = webkit_web_view_new_with_user_content_manager(channel);
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_default_size(GTK_WINDOW(window), 390, 844);
    gtk_container_add(GTK_CONTAINER(window), page);
    g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
    webkit_web_view_load_uri(WEBKIT_WEB_VIEW(page), "privacy://center/");
    gtk_widget_show_all(window);
}

gboolean poll(gpointer services) {
    static_cast<vx::services::Services*>(services)->poll();
    return G_SOURCE_CONTINUE;
}

void askByCategories() {
    vx::VXPrivacyCenterViewController center;
    center.view()->setSize(390, 844);
    center.viewDidLoad();
    vx::web::WebSurface surface(center.view());
    show(surface);
    gtk_main();
    center.viewWillDisappear(false); // saves
}

void askByVendors() {
    vx::ViewController home; // the application's own screen
    Closing application;
    vx::VXIABPrivacyCenterViewController center;
    center.setDelegate(&application);
    home.presentViewController(center); // or navigation.pushViewController(center)
    center.view()->setSize(390, 844);
    center.viewDidLoad();
    vx::web::WebSurface surface(center.view());
    surface.whenLaidOut([&] { center.viewDidAppear(true); });
    show(surface);
    gtk_main();
    center.viewWillDisappear(true); // saves
}

} // namespace

int main(int count, char** arguments) {
    gtk_init(&count, &arguments);
    if (count != 2) {
        std::cerr << "webview DIRECTORY\n";
        return 2;
    }
    const std::filesystem::path directory = arguments[1];
    const bool iabMode = std::filesystem::exists(directory / "vendor-list.json");
    vx::services::Services services({.store = directory / "choices.sqlite", .packaged = directory});
    DesktopApplication application;
    vx::Platform platform = services.platform();
    platform.application = &application;
    std::optional<vx::services::TCFLibrary> iab;
    if (iabMode)
        platform.iab = &iab.emplace(platform.store, platform.logger);
    vx::Runtime runtime(platform);
    vx::VXMobilePrivacy::sharedInstance().setSiteID({.site = 12, .privacy = 5});
    g_timeout_add(100, poll, &services);
    iabMode ? askByVendors() : askByCategories();
}

// webview DIRECTORY: a window with the privacy center. DIRECTORY has the application's
// privacy.json, and keeps its choices. With a vendor-list.json in it too, the center is the IAB's,
// and beside it a web view of the application's own shows what its scripts hear of the consent. Who
// closes the window without an answer has decided nothing, and is asked at the next start.

#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

#include <webkit2/webkit2.h>

#include "examples/webview/Article.h"
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

GtkWidget* pageOf(vx::web::WebSurface& surface) {
    WebKitWebContext* context = webkit_web_context_get_default();
    webkit_web_context_register_uri_scheme(context, "privacy", serve, &surface, nullptr);
    WebKitUserContentManager* channel = webkit_user_content_manager_new();
    g_signal_connect(channel, "script-message-with-reply-received::privacy", G_CALLBACK(receive),
                     &surface);
    webkit_user_content_manager_register_script_message_handler_with_reply(channel, "privacy",
                                                                           nullptr);
    GtkWidget* page = webkit_web_view_new_with_user_content_manager(channel);
    webkit_web_view_load_uri(WEBKIT_WEB_VIEW(page), "privacy://center/");
    return page;
}

// A window with a center's page, until the user answers or closes it.
class Window : public vx::ViewControllerDelegate {
public:
    explicit Window(vx::web::WebSurface& surface) {
        gtk_window_set_default_size(GTK_WINDOW(window_), 390, 844);
        gtk_container_add(GTK_CONTAINER(window_), box_);
        gtk_box_pack_start(GTK_BOX(box_), pageOf(surface), TRUE, TRUE, 0);
        g_signal_connect(window_, "delete-event", G_CALLBACK(closed), nullptr);
    }
    ~Window() override { gtk_widget_destroy(window_); }

    // The center of the categories has no button to save, and may be left without deciding.
    void addSaveBar(const std::string& save, const std::string& leave) {
        GtkWidget* bar = gtk_action_bar_new();
        GtkWidget* saves = gtk_button_new_with_label(save.c_str());
        GtkWidget* leaves = gtk_button_new_with_label(leave.c_str());
        g_signal_connect_swapped(saves, "clicked", G_CALLBACK(clickedSave), this);
        g_signal_connect(leaves, "clicked", G_CALLBACK(gtk_main_quit), nullptr);
        gtk_action_bar_pack_start(GTK_ACTION_BAR(bar), leaves);
        gtk_action_bar_pack_end(GTK_ACTION_BAR(bar), saves);
        gtk_box_pack_end(GTK_BOX(box_), bar, FALSE, FALSE, 0);
    }

    // Whether the user answered.
    bool run() {
        gtk_widget_show_all(window_);
        gtk_main();
        return answered_;
    }
    bool answered() const { return answered_; }

private:
    static gboolean closed() {
        gtk_main_quit();
        return TRUE;
    }
    static void clickedSave(Window* self) { self->answer(); }
    void answer() {
        answered_ = true;
        gtk_main_quit();
    }
    // The IAB's center goes by itself after accept all, refuse all and save.
    void viewControllerDismissed(vx::ViewController&, bool) override { answer(); }
    void viewControllerPopped(vx::ViewController&, bool) override { answer(); }

    GtkWidget* window_ = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    GtkWidget* box_ = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    bool answered_ = false;
};

gboolean poll(gpointer services) {
    static_cast<vx::services::Services*>(services)->poll();
    return G_SOURCE_CONTINUE;
}

void askByCategories() {
    vx::VXPrivacyCenterViewController center;
    center.view()->setSize(390, 844);
    center.viewDidLoad();
    vx::web::WebSurface surface(center.view());
    Window window(surface);
    window.addSaveBar(center.getSaveButtonText().value_or("Save"), "Not now");
    if (window.run())
        center.viewWillDisappear(true); // saves
}

// Whether the user answered.
bool askByVendors() {
    vx::ViewController home; // the application's own screen
    vx::VXIABPrivacyCenterViewController center;
    home.presentViewController(center); // or navigation.pushViewController(center)
    center.view()->setSize(390, 844);
    center.viewDidLoad();
    vx::web::WebSurface surface(center.view());
    surface.whenLaidOut([&] { center.viewDidAppear(true); });
    Window window(surface);
    center.setDelegate(&window); // hears that the center closed itself
    if (window.run())
        center.viewWillDisappear(true); // saves
    return window.answered();
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
    vx::VXMobilePrivacy& engine = vx::VXMobilePrivacy::sharedInstance();
    engine.setSwitchDefaultState(false); // only what the user switches on is accepted
    engine.setSiteID({.site = 12, .privacy = 5});
    g_timeout_add(100, poll, &services);
    if (!iabMode) {
        askByCategories();
        return 0;
    }
    examples::Article article(platform.store);
    article.tell(vx::web::TCFEvent::CenterShown);
    const bool answered = askByVendors();
    article.tell(answered ? vx::web::TCFEvent::UserActionComplete : vx::web::TCFEvent::Loaded);
    article.stay();
}

#pragma once

#include <webkit2/webkit2.h>

#include "vxprivacy/hosts/web/TCFAPI.h"
#include "vxprivacy/platform/core/KeyValueStore.h"

namespace examples {

/// A window with an article of the application in a web view. The article's scripts, and those of
/// what it embeds, ask __tcfapi for the consent that was given in the privacy center.
class Article {
public:
    explicit Article(const vx::KeyValueStore& store);

    /// To be called when the privacy center is shown and when it is gone, after its save.
    void tell(vx::web::TCFEvent event);
    /// Until the user closes the window.
    void stay();

private:
    static void loadChanged(WebKitWebView* page, WebKitLoadEvent event, Article* self);
    void evaluate(vx::web::TCFEvent event);

    const vx::KeyValueStore& store_;
    GtkWidget* window_ = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    WebKitUserContentManager* scripts_ = webkit_user_content_manager_new();
    WebKitWebView* page_ = WEBKIT_WEB_VIEW(webkit_web_view_new_with_user_content_manager(scripts_));
    vx::web::TCFEvent state_ = vx::web::TCFEvent::Loaded; // of a page that is loaded now
};

} // namespace examples

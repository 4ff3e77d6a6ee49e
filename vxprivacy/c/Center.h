#pragma once

#include <memory>
#include <string_view>

#include "vxprivacy/c/vxprivacy.h"
#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/platform/ui/ViewController.h"

struct vx_module;

/// A privacy center that is open, and its page. Its module outlives it.
struct vx_center : private vx::ViewControllerDelegate {
public:
    vx_center(vx_module& module, double width, double height, vx_screen first);
    ~vx_center() override;

    vx_module& module() const { return module_; }
    vx::web::WebSurface& surface() { return *surface_; }
    /// What the user did. Saves where the center closes itself over it.
    std::string dispatch(std::string_view event);
    /// Saves, unless that was done.
    void save();
    bool done() const { return done_; }

private:
    void viewControllerDismissed(vx::ViewController&, bool) override { done_ = true; }
    void viewControllerPopped(vx::ViewController&, bool) override { done_ = true; }

    vx_module& module_;
    vx::ViewController presenter_; // only what is presented can close itself
    std::unique_ptr<vx::ViewController> controller_;
    std::unique_ptr<vx::web::WebSurface> surface_;
    bool done_ = false;
    bool saved_ = false;
};

#pragma once

#include "vxprivacy/platform/ui/Label.h"
#include "vxprivacy/platform/ui/View.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vx {

/// An element that the user operates.
class Control : public View {
public:
    /// `action` is called when the user lifts the finger inside the control.
    void addTouchUpInside(std::function<void()> action) { actions_.push_back(std::move(action)); }
    /// What the platform does when the user lifts the finger: calls the actions in turn.
    void sendTouchUpInside() const;

private:
    std::vector<std::function<void()>> actions_;
};

class Button : public Control {
public:
    Kind kind() const override { return Kind::Button; }

    const std::string& title() const { return title_; }
    void setTitle(std::string title) { set(title_, std::move(title)); }
    /// Absent: the platform's.
    const std::optional<Font>& font() const { return font_; }
    void setFont(Font font) { set(font_, std::optional(std::move(font))); }
    const std::optional<Colour>& titleColor() const { return colour_; }
    void setTitleColor(const Colour& colour) { set(colour_, std::optional(colour)); }
    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled) { set(enabled_, enabled); }
    /// Whether a tap shows an address outside the application; a host tells the user beforehand.
    bool leavesApplication() const { return leavesApplication_; }
    void setLeavesApplication(bool leaves) { set(leavesApplication_, leaves); }

private:
    std::string title_;
    std::optional<Font> font_;
    std::optional<Colour> colour_;
    bool enabled_ = true;
    bool leavesApplication_ = false;
};

class Switch : public Control {
public:
    Kind kind() const override { return Kind::Switch; }

    bool on() const { return on_; }
    /// Moves the switch without calling its actions.
    void setOn(bool on) { set(on_, on); }
    /// Colour of the switch while it is on; absent: the platform's.
    const std::optional<Colour>& onTintColor() const { return onTint_; }
    void setOnTintColor(const Colour& colour) { set(onTint_, std::optional(colour)); }

private:
    bool on_ = false;
    std::optional<Colour> onTint_;
};

/// What the platform does when the user touches `view`: a switch moves and tells so, a button that
/// is enabled tells so, any other view that takes taps is tapped.
void touch(View& view);

} // namespace vx

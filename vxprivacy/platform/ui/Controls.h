#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/Label.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx {

/// An element that the user operates.
///
///     auto consent = std::make_shared<Switch>();
///     consent->addTouchUpInside([&] { note(consent->on()); });
///     consent->setOn(true);   // nobody is told
///     touch(*consent);        // off now, and `note` is called
///
/// A control owns its actions. One that keeps a `shared_ptr` to its own control keeps it for ever.
class VXPRIVACY_EXPORT Control : public View {
public:
    /// `action` is called when the user lifts the finger inside the control, on the user-interface
    /// thread, after those added before it. There is no way to take it off again.
    void addTouchUpInside(std::function<void()> action) { actions_.push_back(std::move(action)); }
    /// Whether anybody hears of it.
    bool takesTouches() const { return !actions_.empty(); }
    /// What the platform does when the user lifts the finger: calls the actions in turn.
    void sendTouchUpInside() const;

    void forgetActions() override;

private:
    std::vector<std::function<void()>> actions_;
};

/// A control with a title that does something when it is touched.
class VXPRIVACY_EXPORT Button : public Control {
public:
    Kind kind() const override { return Kind::Button; }

    /// UTF-8; plain text.
    const std::string& title() const { return title_; }
    void setTitle(std::string title) { set(title_, std::move(title)); }
    // Font and colour of the title; absent: the platform's.
    const std::optional<Font>& font() const { return font_; }
    void setFont(Font font) { set(font_, std::optional(std::move(font))); }
    const std::optional<Colour>& titleColor() const { return colour_; }
    void setTitleColor(const Colour& colour) { set(colour_, std::optional(colour)); }
    /// How many lines the title takes at most; 0: as many as it needs. Absent: the platform's, one.
    const std::optional<std::int32_t>& numberOfLines() const { return lines_; }
    void setNumberOfLines(std::int32_t lines) { set(lines_, std::optional(lines)); }
    /// How small the title's letters may become, as a share of their size, before a single line
    /// that is too long for its place is cut off. 1, and nothing shrinks, unless told otherwise.
    double minimumScaleFactor() const { return minimumScaleFactor_; }
    void setMinimumScaleFactor(double factor) { set(minimumScaleFactor_, factor); }
    /// A button that is not enabled takes no touch, and a host shows it so. Enabled unless told
    /// otherwise.
    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled) { set(enabled_, enabled); }
    /// Whether a touch shows an address outside the application. A host tells the user beforehand;
    /// what the touch does is the actions' business alone.
    bool leavesApplication() const { return leavesApplication_; }
    void setLeavesApplication(bool leaves) { set(leavesApplication_, leaves); }
    /// Whether a touch leads back to the screen before. A host's own ways back then work it.
    bool leadsBack() const { return leadsBack_; }
    void setLeadsBack(bool leads) { set(leadsBack_, leads); }

    /// Whether what the button shows and hides is shown; absent: it does nothing of the kind.
    const std::optional<bool>& expanded() const { return expanded_; }
    /// `panel` is what it shows and hides, null while there is none.
    void setExpanded(bool expanded, const std::shared_ptr<View>& panel) {
        panel_ = panel;
        set(expanded_, std::optional(expanded));
    }
    std::shared_ptr<View> panel() const { return panel_.lock(); }

private:
    std::string title_;
    std::optional<Font> font_;
    std::optional<Colour> colour_;
    std::optional<std::int32_t> lines_;
    double minimumScaleFactor_ = 1;
    bool enabled_ = true;
    bool leavesApplication_ = false;
    bool leadsBack_ = false;
    std::optional<bool> expanded_;
    std::weak_ptr<View> panel_;
};

/// A control that is on or off, and off to begin with.
///
/// It does not stretch: where it has more room than it needs it stands at the trailing edge, in the
/// middle of the height.
class VXPRIVACY_EXPORT Switch : public Control {
public:
    Kind kind() const override { return Kind::Switch; }

    /// How it stands; off at first.
    bool on() const { return on_; }
    /// Moves the switch without calling its actions.
    void setOn(bool on) { set(on_, on, ViewChange::What::State); }
    /// Colour of the switch while it is on; absent: the platform's.
    const std::optional<Colour>& onTintColor() const { return onTint_; }
    void setOnTintColor(const Colour& colour) { set(onTint_, std::optional(colour)); }

private:
    bool on_ = false;
    std::optional<Colour> onTint_;
};

} // namespace vx

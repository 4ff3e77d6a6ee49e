#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/AttachedConstraints.h"
#include "vxprivacy/platform/ui/Colour.h"
#include "vxprivacy/platform/ui/LayoutConstraint.h"

namespace vx {

class Label;
class View;

/// What became of a view since a host last looked.
struct VXPRIVACY_EXPORT ViewChange {
    /// `Properties`: what the view itself says, its subviews apart. `State`: of this only whether a
    /// switch is on, or how many a label counts. `Subviews`: those, or the constraints on them.
    /// `Scrolling`: where the content of a scroll view stands, and nothing that is painted.
    enum class What { Properties, State, Subviews, Scrolling };

    /// Never null. Kept alive by this, also when the screen drops it.
    std::shared_ptr<View> view;
    What what = What::Properties;
};

/// What belongs together on a screen, whichever views it lies in: a title with its switch, text and
/// link. For those who do not see it.
struct VXPRIVACY_EXPORT Row {
    /// The label that names it. A switch or button whose own text is the same in every row is told
    /// apart by this.
    std::weak_ptr<Label> title;
    /// The heading of the list that the row is an item of; none where it is in no list.
    std::weak_ptr<Label> section;
};

/// A plain element of a screen: a node of a tree with properties, which a host paints.
///
///     auto box = std::make_shared<View>();
///     auto title = std::make_shared<Label>();
///     box->addSubview(title);
///     const ViewsDictionary views = {{"title", title}};
///     box->addConstraints(constraintsWithVisualFormat("H:|-[title]-|", 0, {}, views));
///     title->superview();   // box.get()
///
/// A view must be made with `std::make_shared`. It owns its subviews; it does not own the view it
/// is in. It lays out and paints nothing itself: a host reads the tree and `gridPlan`. All of it is
/// used on the user-interface thread. To set a property to the value it has is no change.
class VXPRIVACY_EXPORT View : public std::enable_shared_from_this<View> {
public:
    /// The classes of views.
    enum class Kind { View, Label, Button, Switch, Scroll };

    /// A line around the view, in points; no line when its width is 0. Without a colour it is the
    /// text's.
    struct Border {
        double width = 0;             ///< points
        double cornerRadius = 0;      ///< points
        std::optional<Colour> colour; ///< absent: the text's

        friend bool operator==(const Border&, const Border&) = default;
    };

    View() = default;
    virtual ~View();
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    /// Which class this is, for `visit` and `viewAs` (ViewKinds.h), which know what to make of it.
    virtual Kind kind() const { return Kind::View; }

    /// A number that finds the view again; 0 is none. Several views may have the same.
    std::int32_t tag() const { return tag_; }
    void setTag(std::int32_t tag) { set(tag_, tag); }
    /// The first view with this tag, depth first, this one included and before its subviews; null
    /// when there is none. Goes through the whole tree below.
    std::shared_ptr<View> viewWithTag(std::int32_t tag);

    /// Absent where the screen leaves it to the platform.
    const std::optional<Colour>& backgroundColor() const { return rare().background; }
    void setBackgroundColor(const Colour& colour);
    /// How much larger or smaller the view is painted, in both directions; 1 is the natural size.
    /// The layout knows nothing of it: a view keeps the room of its natural size, and is painted
    /// around the middle of its trailing edge, which stays where it was.
    double scale() const { return scale_; }
    void setScale(double scale) { set(scale_, scale); }
    const Border& border() const { return rare().border; }
    void setBorder(const Border& border);

    /// How strongly the view, beside others in a line, holds out against being made narrower than
    /// its content; the weakest yields first. 750 unless told otherwise.
    float compressionResistance() const { return rare().compressionResistance; }
    void setCompressionResistance(float priority);

    /// What the view belongs to, with everything in it; null: nothing. Views with the same row, one
    /// after the other in their container, are that row.
    const std::shared_ptr<const Row>& row() const { return rare().row; }
    void setRow(std::shared_ptr<const Row> row);

    /// Points; what a host or controller last told, 0 before. Only the root's count: a screen
    /// computes its metrics from the width, and a host the shares of it.
    double width() const { return rare().width; }
    double height() const { return rare().height; }
    void setSize(double width, double height);

    /// The platform calls `action` with the character tapped (Unicode code points, from 0; 0 where
    /// there is no text) when the user taps the view. There is one action: a later one replaces it.
    void addTapRecogniser(std::function<void(std::size_t character)> action);
    bool takesTaps() const { return static_cast<bool>(rare().tap); }
    /// What the platform does when the user taps the view; nothing when it takes no taps.
    void tap(std::size_t character) const;

    /// Who acted on this view and its subviews is gone: from now on nobody hears of taps, touches
    /// and scrolling. May be called from one of them.
    virtual void forgetActions();

    // The tree.

    /// The view that this one is in; null for the root of a tree.
    View* superview() const { return superview_; }
    /// In the order in which they were added.
    const std::vector<std::shared_ptr<View>>& subviews() const { return subviews_; }
    /// Puts `view` behind the last subview, taking it from where it was. It must not be this view
    /// or one that this view is in.
    void addSubview(const std::shared_ptr<View>& view);
    /// Takes the view off, with the constraints outside it that concern it or what is in it. A root
    /// stays as it is.
    void removeFromSuperview();
    /// Whether this view is `view` or lies in it, however deep.
    bool isDescendantOf(const View& view) const;

    /// The constraints attached to this view, in the order of attaching: those of the first of
    /// `formats`, then those of the second.
    const std::vector<LayoutConstraint>& constraints() const { return attached().all(); }
    /// What they were made from, for whoever wants to see what a screen is made of. Made anew.
    std::vector<AttachedFormat> formats() const { return attached().formats(); }
    /// Attaches the constraints of a format. Those of views outside this view's tree are left out;
    /// a format of which none is left is not kept.
    void addConstraints(VisualFormat format);
    /// Takes off those attached to this view that `chosen` says yes to. A format of which none is
    /// left goes too.
    void removeConstraints(const std::function<bool(const LayoutConstraint&)>& chosen);

    // For a host that brings a picture up to date instead of painting anew.

    /// By which the host that shows the view finds what it keeps of it; 0: not shown yet.
    std::uint32_t hostNumber() const { return hostNumber_; }
    void setHostNumber(std::uint32_t number) { hostNumber_ = number; }

    /// From now on this root keeps account of the changes in its tree. Called again it does
    /// nothing.
    void beginRecordingChanges();
    /// What changed in the tree since the last call, each view once for each kind of change, in the
    /// order of the first. Views that have left the tree are not named. Empty for a view that
    /// records nothing.
    std::vector<ViewChange> takeChanges();

protected:
    /// Assigns `value` to `property` and tells the root when that made a difference.
    template <class T>
    void set(T& property, T value, ViewChange::What what = ViewChange::What::Properties) {
        if (property == value)
            return;
        property = std::move(value);
        changed(what);
    }

private:
    // What few views have, of the thousands that a screen has.
    struct Rare {
        std::optional<Colour> background;
        Border border;
        std::shared_ptr<const Row> row;
        float compressionResistance = 750;
        double width = 0;
        double height = 0;
        std::function<void(std::size_t)> tap;
        std::optional<std::vector<ViewChange>> changes; // of a root that records
    };

    const AttachedConstraints& attached() const;
    const Rare& rare() const;
    Rare& ownRare();
    template <class T>
    void setRare(T Rare::*property, T value) {
        if (rare().*property == value)
            return;
        ownRare().*property = std::move(value);
        changed(ViewChange::What::Properties);
    }
    void changed(ViewChange::What what);
    void dropConstraintsOn(const View& removed);
    bool concernsOwnTree(const LayoutConstraint& constraint) const;

    std::int32_t tag_ = 0;
    std::uint32_t hostNumber_ = 0;
    double scale_ = 1;
    View* superview_ = nullptr; // which owns this view
    std::vector<std::shared_ptr<View>> subviews_;
    // Of this view's tree alone, so their views live. Null while there are none.
    std::unique_ptr<AttachedConstraints> constraints_;
    std::unique_ptr<Rare> rare_;
};

} // namespace vx

#pragma once

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx {

class ScrollView;

/// Hears of a scroll view's movements, on the user-interface thread.
class VXPRIVACY_EXPORT ScrollViewDelegate {
public:
    virtual ~ScrollViewDelegate();

    /// The user moved the content, which stands at its new place already, or the view or its
    /// content got another height. The delegate may move it once more with `setContentOffset`, to
    /// hold one direction for instance.
    virtual void scrollViewDidScroll(ScrollView& scrollView) = 0;
};

/// A view whose content may be larger than itself. The content is its subviews; the user moves it.
class VXPRIVACY_EXPORT ScrollView : public View {
public:
    /// How far the content is moved: points from its top left corner to the view's.
    struct Offset {
        double x = 0; ///< points to the right
        double y = 0; ///< points down

        friend bool operator==(const Offset&, const Offset&) = default;
    };

    Kind kind() const override { return Kind::Scroll; }

    /// Must outlive the scroll view; null: none.
    void setDelegate(ScrollViewDelegate* delegate) { delegate_ = delegate; }

    /// The top left corner unless the user or the screen moved the content. It is not held to the
    /// content's size, which only a host knows.
    const Offset& contentOffset() const { return offset_; }
    /// Points; what a host last measured, 0 before. The frame is the part of the content that is
    /// seen.
    double frameHeight() const { return frameHeight_; }
    double contentHeight() const { return contentHeight_; }
    /// Notes what a host measured. The delegate does not hear of it.
    void setMeasures(double frameHeight, double contentHeight);
    /// Moves the content. The delegate does not hear of it.
    void setContentOffset(Offset offset) { set(offset_, offset, ViewChange::What::Scrolling); }
    /// What the platform does when the user moved the content: takes the offset and tells the
    /// delegate. The way of hosts and tests.
    void scrolledTo(Offset offset);

    void forgetActions() override;

private:
    ScrollViewDelegate* delegate_ = nullptr;
    Offset offset_;
    double frameHeight_ = 0;
    double contentHeight_ = 0;
};

} // namespace vx

#pragma once

#include "vxprivacy/platform/ui/View.h"

namespace vx {

class ScrollView;

/// Hears of a scroll view's movements.
class ScrollViewDelegate {
public:
    virtual ~ScrollViewDelegate();

    virtual void scrollViewDidScroll(ScrollView& scrollView) = 0;
};

/// A view whose content may be larger than itself.
class ScrollView : public View {
public:
    /// Points from the content's top left corner.
    struct Offset {
        double x = 0;
        double y = 0;

        friend bool operator==(const Offset&, const Offset&) = default;
    };

    Kind kind() const override { return Kind::Scroll; }

    /// Must outlive the scroll view; null: none.
    void setDelegate(ScrollViewDelegate* delegate) { delegate_ = delegate; }

    const Offset& contentOffset() const { return offset_; }
    void setContentOffset(Offset offset) { set(offset_, offset, ViewChange::What::Scrolling); }
    /// What the platform does when the user moved the content.
    void scrolledTo(Offset offset);

private:
    ScrollViewDelegate* delegate_ = nullptr;
    Offset offset_;
};

} // namespace vx

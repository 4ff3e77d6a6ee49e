#include "vxprivacy/platform/ui/ScrollView.h"

namespace vx {

ScrollViewDelegate::~ScrollViewDelegate() = default;

void ScrollView::setMeasures(double frameHeight, double contentHeight) {
    frameHeight_ = frameHeight;
    contentHeight_ = contentHeight;
}

void ScrollView::scrolledTo(Offset offset) {
    setContentOffset(offset);
    if (delegate_)
        delegate_->scrollViewDidScroll(*this);
}

void ScrollView::forgetActions() {
    delegate_ = nullptr;
    View::forgetActions();
}

} // namespace vx

#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "vxprivacy/hosts/web/Declarations.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx::web {

/// What the page knows of a view, beside its properties.
struct Element {
    unsigned number = 0; ///< from 1; 0 before it has one
    std::string id;      ///< the host's own, "v" and the number; never a name out of a document
    std::weak_ptr<View> view;
    /// Declarations of its place in its container, and of the container that it is; kept by the
    /// style sheet.
    std::string_view placement;
    std::string_view grid;
    /// What its container says of its height.
    Height height;
    /// Ids of the elements that name and describe a control, each after a space; empty: none. The
    /// control's own stands for `label`, which is not seen.
    std::string names;
    std::string label;
    std::string descriptions;
    /// The item of a list; a row of several views has an element of its own for that.
    bool isListItem = false;
    /// A button that was not enabled when it was painted last.
    bool disabled = false;
    /// A label that describes a switch.
    bool describes = false;
    /// The label that stands right after it in its container.
    std::weak_ptr<View> following;
};

/// The elements of a page, each with an id that stays while its view lives.
class Elements {
public:
    /// The view's element, made at first sight.
    Element& of(View& view);
    /// The view of the element with this id; null when there is none (any more).
    std::shared_ptr<View> view(std::string_view id) const;
    /// Drops the elements whose views are gone.
    void forgetGone();

private:
    std::unordered_map<const View*, Element> elements_;
    std::unordered_map<unsigned, const View*> byNumber_; // in an id, behind the letter
    unsigned made_ = 0;
};

} // namespace vx::web

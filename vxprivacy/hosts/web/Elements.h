#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/hosts/web/Declarations.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx::web {

/// The id of the element with this number, "v12": the host's own, never a name out of a document.
std::string idOf(unsigned number);

/// What the page knows of a view, beside its properties. A page has thousands of these.
struct Element {
    std::string id() const { return idOf(number); }

    unsigned number = 0; ///< from 1; 0 before it has one
    /// The labels that name and describe a control, by their elements' numbers: that of its row,
    /// its own and the one that explains it. 0: none.
    unsigned title = 0;
    unsigned text = 0;
    unsigned description = 0;
    /// The element of the label that stands right after it in its container. 0: none.
    unsigned following = 0;
    /// Whether the label that names it counts switches.
    bool counts = false;
    /// The item of a list; a row of several views has an element of its own for that.
    bool isListItem = false;
    /// A button that was not enabled when it was painted last.
    bool disabled = false;
    /// A label that describes a switch.
    bool describes = false;
    std::weak_ptr<View> view;
    /// Declarations of its place in its container, and of the container that it is; kept by the
    /// style sheet.
    std::string_view placement;
    std::string_view grid;
    /// What its container says of its height.
    Height height;
};

/// The elements of a page, each with an id that stays while its view lives.
class Elements {
public:
    /// The view's element, made at first sight.
    Element& of(View& view);
    /// The view of the element with this id; null when there is none (any more).
    std::shared_ptr<View> view(std::string_view id) const;
    /// The same by its number.
    std::shared_ptr<View> view(unsigned number) const;
    /// Drops the elements whose views are gone.
    void forgetGone();

private:
    // By number, so in the order in which they were made, which is nearly that in which they are
    // painted. A block of which all are gone is given back.
    static constexpr std::size_t kBlock = 256;
    using Block = std::array<Element, kBlock>;

    Element* find(unsigned number) const;

    std::vector<std::unique_ptr<Block>> blocks_;
    unsigned made_ = 0;
};

} // namespace vx::web

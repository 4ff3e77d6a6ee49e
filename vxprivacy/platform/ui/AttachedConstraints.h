#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/LayoutConstraint.h"

namespace vx {

/// A visual format that was attached to a view.
struct VXPRIVACY_EXPORT AttachedFormat {
    /// As it was written; valid until the view's constraints change.
    std::string_view text;
    /// Sum of alignment options (VisualFormat.h); 0: none.
    int options = 0;
    /// How many of its constraints are attached; never 0.
    std::size_t constraints = 0;
};

/// The constraints attached to one view, with the formats that they were made from. The work of
/// `View`. Its memory is what a list of thousands of rows consists of: constraints lie together,
/// and so do the texts.
class VXPRIVACY_EXPORT AttachedConstraints {
public:
    /// In the order of attaching: those of the first format, then those of the second.
    const std::vector<LayoutConstraint>& all() const { return constraints_; }
    /// In the order of attaching.
    std::vector<AttachedFormat> formats() const;

    /// Attaches the constraints of a format. One without any is not kept.
    void add(const VisualFormat& format);
    /// Takes off those that `chosen` says yes to, and formats of which none is left. Whether there
    /// was one.
    bool remove(const std::function<bool(const LayoutConstraint&)>& chosen);

private:
    struct Format {
        std::uint32_t length = 0; // of its text
        std::uint32_t constraints = 0;
        int options = 0;
    };

    void removeEmptyFormats();

    std::vector<LayoutConstraint> constraints_;
    std::vector<Format> formats_;
    std::string texts_; // of the formats, one after the other
};

} // namespace vx

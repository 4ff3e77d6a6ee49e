#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/configuration/VXPrivacyConfiguration.h"

namespace vx {

/// The buttons under a screen, as a list of the configuration has them: which there are, and in
/// which order. All are as wide as the first.
///
/// Without the first button's entry the configuration has no such list, and there are all three, in
/// their own order.
class ButtonBar {
public:
    /// A button: its entry in the configuration's `components`, its layout name.
    struct Button {
        std::string_view component;
        std::string_view name;
    };

    /// `first` is always there. `configuration` must outlive this.
    ButtonBar(const VXPrivacyConfiguration& configuration, Button first, Button acceptAll,
              Button refuseAll);

    bool hasAcceptAll() const { return has(acceptAll_); }
    bool hasRefuseAll() const { return has(refuseAll_); }
    /// The bar's horizontal format. Positions that do not run from 1 without a gap only order the
    /// buttons, and the log hears of them.
    std::string format() const;

private:
    struct Place;

    bool has(const Button& button) const;
    std::vector<Place> places() const;

    const VXPrivacyConfiguration& configuration_;
    Button first_;
    Button acceptAll_;
    Button refuseAll_;
};

} // namespace vx

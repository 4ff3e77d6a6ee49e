#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "vxprivacy/platform/ui/ScrollView.h"
#include "vxprivacy/platform/ui/ViewController.h"
#include "vxprivacy/platform/ui/VisualFormat.h"

namespace vx::tools::studio {

/// A privacy center of either kind, as a display needs it.
class ShownCenter {
public:
    virtual ~ShownCenter();

    virtual ViewController& controller() = 0;
    /// What leaving now would save, by key.
    using Choices = std::map<std::string, std::string>;
    virtual Choices choices() const = 0;
    /// What `vxprivacy play` is asked to tell them.
    virtual const char* choicesQuestion() const = 0;
    /// The views of the screen shown now, by layout name.
    virtual const ViewsDictionary& names() const = 0;
    /// The scroll view of the popup, while that is shown; else null.
    virtual ScrollView* popup() const = 0;
    /// What leaving is called; nothing where the center has no word for it, or its own buttons.
    virtual std::optional<std::string> leaveText() const = 0;
    /// Whether the user leaves by the center's own buttons alone.
    virtual bool closesItself() const = 0;
};

std::unique_ptr<ShownCenter> categoryCenter();
/// `first` is the screen that comes first: 0 popup, 1 purposes, 2 vendors.
std::unique_ptr<ShownCenter> iabCenter(std::int32_t first);

} // namespace vx::tools::studio

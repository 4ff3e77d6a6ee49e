#pragma once

#include <string>

#include "tests/studio/StudioProcess.h"

namespace vx::tests {

/// The page of the privacy center that a studio shows, as it was when this was made, used as a
/// browser would use it.
class CenterPage {
public:
    explicit CenterPage(StudioProcess& studio);

    bool isOn(const std::string& title) const;
    /// The patch for a tap on the switch with this title,
    Json tap(const std::string& title);
    /// or on the button.
    Json tapLink(const std::string& title);

    int status = 0;
    std::string text;
    std::string policy;

private:
    Json tapElement(const std::string& id);
    std::string tagOf(const std::string& title) const;

    StudioProcess& studio_;
};

} // namespace vx::tests

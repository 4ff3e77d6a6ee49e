#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "vxprivacy/platform/ui/GridPlan.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

/// Paints a screen as lines of text, and touches what a reader names by its number: a host in
/// small.
class TextPainter {
public:
    static constexpr double kPoints = 8; ///< that one letter is wide

    /// `root` has the width that it is painted in.
    explicit TextPainter(std::shared_ptr<vx::View> root);

    /// The screen as it is now; every control has a number, from 1.
    std::string paint();
    /// What the user of the last picture does, and how the control stands then, in words: for who
    /// hears the screen. Nothing: it has no such number.
    std::optional<std::string> touch(std::size_t number);
    /// Whether there is another picture to paint than the last.
    bool changed() { return !root_->takeChanges().empty(); }

private:
    using Line = std::vector<std::string>; // a letter in each
    using Block = std::vector<Line>;

    struct Control {
        std::weak_ptr<vx::View> view;
        std::string name;
    };

    Block block(const vx::GridPlan& plan, std::size_t index, std::size_t width,
                vx::View* following);
    Block container(vx::View& view, std::size_t width, vx::View* following);
    std::vector<std::size_t> columnEnds(const vx::GridPlan& plan, std::size_t width) const;
    std::size_t lettersOf(const vx::GridPlan::Length& length) const;
    std::string numbered(vx::View& view, std::string name);

    std::shared_ptr<vx::View> root_;
    std::vector<Control> controls_; // of the last picture
};

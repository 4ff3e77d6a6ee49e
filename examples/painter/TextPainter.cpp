#include "examples/painter/TextPainter.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "vxprivacy/platform/foundation/CodePoints.h"
#include "vxprivacy/platform/ui/ControlNames.h"
#include "vxprivacy/platform/ui/GridPlanner.h"
#include "vxprivacy/platform/ui/Touch.h"

namespace {

using Line = std::vector<std::string>;
using Block = std::vector<Line>;

Line lettersIn(std::string_view text) {
    Line letters;
    while (!text.empty()) {
        const std::size_t size = vx::byteOffset(text, 1);
        letters.emplace_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return letters;
}

// Breaks lines at blanks, and words that are wider than a line where it ends.
Block wrapped(std::string_view text, std::size_t width) {
    Block lines(1);
    std::size_t blank = 0; // after which the line may be broken
    for (const std::string& letter : lettersIn(text)) {
        if (lines.back().size() == width) {
            const auto cut =
                lines.back().begin() + static_cast<std::ptrdiff_t>(blank ? blank : width);
            Line rest(cut, lines.back().end());
            lines.back().erase(cut, lines.back().end());
            lines.push_back(std::move(rest));
            blank = 0;
        }
        if (letter == "\n")
            lines.emplace_back();
        else if (letter != " " || !lines.back().empty())
            lines.back().push_back(letter);
        if (letter == " " || letter == "\n")
            blank = lines.back().size();
    }
    return lines;
}

std::size_t widthOf(const Block& block) {
    std::size_t width = 0;
    for (const Line& line : block)
        width = std::max(width, line.size());
    return width;
}

void draw(Block& picture, const Block& block, std::size_t x, std::size_t y) {
    if (picture.size() < y + block.size())
        picture.resize(y + block.size());
    for (std::size_t i = 0; i < block.size(); ++i) {
        Line& line = picture[y + i];
        if (line.size() < x + block[i].size())
            line.resize(x + block[i].size(), " ");
        std::ranges::copy(block[i], line.begin() + static_cast<std::ptrdiff_t>(x));
    }
}

std::size_t letters(double points) {
    return static_cast<std::size_t>(points / TextPainter::kPoints);
}

// Buttons and switches are as wide as their content; in letters that is at most this.
std::size_t naturalWidth(const vx::View& view) {
    const auto* button = vx::viewAs<vx::Button>(view);
    return (button ? lettersIn(button->title()).size() : 4) + 7;
}

// How far a block that is smaller than its room stands from the leading edge.
std::size_t indent(const vx::GridPlan::Item& item, std::size_t room, std::size_t width) {
    if (item.view->kind() == vx::View::Kind::Switch)
        return room - width; // a switch does not stretch
    switch (item.column.alignment) {
    case vx::GridPlan::Alignment::Centre:
        return (room - width) / 2;
    case vx::GridPlan::Alignment::End:
        return room - width;
    default:
        return 0;
    }
}

// All of it is seen at once. A painter with a window tells where that stands.
void tellMeasures(vx::ScrollView& scroll, std::size_t lines) {
    const double height = TextPainter::kPoints * static_cast<double>(lines);
    scroll.setMeasures(height, height);
    scroll.scrolledTo(scroll.contentOffset());
}

} // namespace

TextPainter::TextPainter(std::shared_ptr<vx::View> root) : root_(std::move(root)) {
    root_->beginRecordingChanges();
}

std::string TextPainter::paint() {
    controls_.clear();
    std::string text;
    for (const Line& line : container(*root_, letters(root_->width()), nullptr)) {
        std::string row;
        for (const std::string& letter : line)
            row += letter;
        text.append(row, 0, row.find_last_not_of(' ') + 1).append(1, '\n');
    }
    root_->takeChanges(); // all of them are painted
    return text;
}

std::optional<std::string> TextPainter::touch(std::size_t number) {
    const Control control = number - 1 < controls_.size() ? controls_[number - 1] : Control();
    const auto view = control.view.lock();
    if (!view)
        return {};
    const auto* label = vx::viewAs<vx::Label>(*view);
    label && label->link() ? label->tap(label->link()->range.start) : vx::touch(*view);
    const auto* toggled = vx::viewAs<vx::Switch>(*view);
    return control.name + (toggled ? (toggled->on() ? ": on" : ": off") : "");
}

// Rows one below the other, each as high as its highest item.
TextPainter::Block TextPainter::container(vx::View& view, std::size_t width, vx::View* following) {
    const vx::GridPlan plan = vx::gridPlan(view, root_->width());
    const std::vector<std::size_t> ends = columnEnds(plan, width);
    std::vector<std::size_t> tops(plan.rowFills.size() + 1, 0);
    Block picture;
    const vx::Row* row = nullptr;
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        const auto& item = plan.items[i];
        const auto& column = item.column;
        const std::size_t left =
            (column.first == 0 ? 0
                               : ends[column.first - 1] + letters(plan.columns[column.first].gap)) +
            letters(column.before);
        const std::size_t right = ends[column.last - 1] - letters(column.after);
        std::size_t room = right > left ? right - left : 1;
        if (column.size.exact && column.alignment != vx::GridPlan::Alignment::End)
            room = std::min(room, std::max<std::size_t>(lettersOf(*column.size.exact), 1));
        const Block content = block(plan, i, room, following);
        std::size_t& top = tops[item.row.first];
        const vx::Row* its = item.view->row().get();
        if (its && its != std::exchange(row, its) && item.view->kind() == vx::View::Kind::View)
            top = std::max(top, picture.size() + 1); // a line before each row with controls
        draw(picture, content, left + indent(item, room, std::min(widthOf(content), room)), top);
        for (std::size_t below = item.row.last; below < tops.size(); ++below)
            tops[below] = std::max(tops[below], top + content.size());
    }
    return picture;
}

// Where each column ends. Those that do not fill take what is in them alone.
std::vector<std::size_t> TextPainter::columnEnds(const vx::GridPlan& plan,
                                                 std::size_t width) const {
    std::vector<std::size_t> widths(plan.columns.size(), 0);
    std::size_t taken = letters(plan.gapAfterColumns);
    std::size_t filling = 0;
    for (std::size_t i = 0; i < plan.columns.size(); ++i) {
        taken += letters(plan.columns[i].gap);
        filling += plan.columns[i].fills;
        for (const auto& item : plan.items)
            if (!plan.columns[i].fills && item.column.first == i && item.column.last == i + 1)
                widths[i] = std::max(widths[i], item.column.size.exact
                                                    ? std::max(lettersOf(*item.column.size.exact),
                                                               naturalWidth(*item.view))
                                                    : naturalWidth(*item.view));
        taken += widths[i];
    }
    std::size_t end = 0;
    for (std::size_t i = 0; i < plan.columns.size(); ++i) {
        if (plan.columns[i].fills)
            widths[i] = width > taken ? (width - taken) / filling : 1;
        end += letters(plan.columns[i].gap) + widths[i];
        widths[i] = end;
    }
    return widths;
}

TextPainter::Block TextPainter::block(const vx::GridPlan& plan, std::size_t index,
                                      std::size_t width, vx::View* following) {
    const auto& item = plan.items[index];
    vx::View* next = index + 1 < plan.items.size() ? plan.items[index + 1].view : nullptr;
    const auto name = [&] { return vx::controlNames(plan, item, following).text(); };
    return vx::visit(
        *item.view,
        vx::Overloaded{[&](vx::Label& label) {
                           std::string text = label.text();
                           if (const auto& count = label.count())
                               text += " (" + std::to_string(count->on) + " of " +
                                       std::to_string(count->all) + ")";
                           if (label.takesTaps())
                               text += " [" + numbered(label, label.text()) + "]";
                           return wrapped(text, width);
                       },
                       [&](vx::Button& button) {
                           const std::string number =
                               button.enabled() ? numbered(button, button.title()) : "wait";
                           return wrapped("[" + number + "] " + button.title(), width);
                       },
                       [&](vx::Switch& control) {
                           const std::string number = numbered(control, name());
                           return wrapped("[" + number + (control.on() ? "] on" : "] off"), width);
                       },
                       [&](vx::ScrollView& scroll) {
                           Block content = container(scroll, width, next);
                           tellMeasures(scroll, content.size());
                           return content;
                       },
                       [&](vx::View& view) { return container(view, width, next); }});
}

std::size_t TextPainter::lettersOf(const vx::GridPlan::Length& length) const {
    return letters(length.share ? length.value * root_->width() : length.value);
}

std::string TextPainter::numbered(vx::View& view, std::string name) {
    controls_.push_back({view.weak_from_this(), std::move(name)});
    return std::to_string(controls_.size());
}

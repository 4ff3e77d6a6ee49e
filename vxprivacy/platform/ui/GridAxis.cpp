// One axis of the grid plan. The links put the children in order; one walk forward and one backward
// tell how many stand before and after each; from that follow its tracks.

#include "vxprivacy/platform/ui/GridAxis.h"

#include <algorithm>
#include <cstdint>
#include <ranges>
#include <utility>

namespace vx {

namespace {

using Alignment = GridPlan::Alignment;

// What the links say of each child.
struct Node {
    std::size_t rank = 0;   // children before it, at most
    std::size_t height = 0; // children after it, at most
    bool fromStart = false; // held to the container's start, if through others
    bool toEnd = false;
    std::optional<double> gapBefore; // to the child before it
    bool hasNext = false;
};

class Arrangement {
public:
    explicit Arrangement(const GridAxis& axis)
        : axis_(axis), nodes_(axis.children.size()), links_(axis.links) {
        std::ranges::sort(links_, {}, &GridAxis::Link::before);
    }

    std::optional<GridAxis::Result> result() {
        if (!sort())
            return {};
        for (std::size_t child : order_)
            goForward(child);
        for (std::size_t child : std::views::reverse(order_))
            goBackward(child);
        countTracks();
        place();
        return std::move(result_);
    }

private:
    auto linksFrom(std::size_t child) const {
        return std::ranges::equal_range(links_, child, {}, &GridAxis::Link::before);
    }

    // Topologically, children first to last; false when they run in a circle.
    bool sort() {
        std::vector<std::size_t> waiting(nodes_.size());
        for (const auto& link : links_)
            ++waiting[link.after];
        for (std::size_t child = 0; child < nodes_.size(); ++child)
            if (waiting[child] == 0)
                order_.push_back(child);
        for (std::size_t next = 0; next < order_.size(); ++next)
            for (const auto& link : linksFrom(order_[next]))
                if (--waiting[link.after] == 0)
                    order_.push_back(link.after);
        return order_.size() == nodes_.size();
    }

    void goForward(std::size_t child) {
        Node& node = nodes_[child];
        node.fromStart |= axis_.children[child].start.has_value();
        for (const auto& link : linksFrom(child)) {
            Node& next = nodes_[link.after];
            next.rank = std::max(next.rank, node.rank + 1);
            next.fromStart |= node.fromStart;
            next.gapBefore = std::max(next.gapBefore.value_or(0), link.gap);
        }
    }

    void goBackward(std::size_t child) {
        Node& node = nodes_[child];
        node.toEnd |= axis_.children[child].end.has_value();
        for (const auto& link : linksFrom(child)) {
            node.height = std::max(node.height, nodes_[link.after].height + 1);
            node.toEnd |= nodes_[link.after].toEnd;
            node.hasNext = true;
        }
    }

    static bool hangsOnEnd(const Node& node) { return !node.fromStart && node.toEnd; }

    bool isLoose(std::size_t child) const {
        const Node& node = nodes_[child];
        return !axis_.children[child].start && !axis_.children[child].end && !node.gapBefore &&
               !node.hasNext;
    }

    void countTracks() {
        std::size_t head = 0;
        for (std::size_t child = 0; child < nodes_.size(); ++child) {
            const Node& node = nodes_[child];
            result_.loose.push_back(isLoose(child));
            if (hangsOnEnd(node))
                result_.tail = std::max(result_.tail, node.height + 1);
            else if (!result_.loose[child])
                head = std::max(head, node.rank + 1);
        }
        result_.tracks = std::max<std::size_t>(head + result_.tail, 1);
    }

    void place() {
        result_.places.resize(nodes_.size());
        for (std::size_t child : std::views::reverse(order_))
            placeChild(child);
        for (std::size_t child = 0; child < nodes_.size(); ++child)
            followCentre(child);
    }

    // After the children that follow it, up to whose start it reaches.
    void placeChild(std::size_t child) {
        const Node& node = nodes_[child];
        const GridAxis::Child& rules = axis_.children[child];
        GridPlan::Place& place = result_.places[child];
        place.first = hangsOnEnd(node) ? result_.tracks - 1 - node.height : node.rank;
        place.first = std::min(place.first, result_.tracks - 1);
        place.last = place.first + 1;
        if (result_.loose[child]) {
            place.first = 0;
            place.last = result_.tracks;
        } else if (node.hasNext) {
            std::size_t next = result_.tracks;
            for (const auto& link : linksFrom(child))
                next = std::min(next, result_.places[link.after].first);
            place.last = std::max(place.last, next);
        } else if (rules.end) {
            place.last = result_.tracks;
            place.after = *rules.end;
        }
        place.before = node.gapBefore.value_or(rules.start.value_or(0));
        place.size = rules.size;
        place.alignment = alignment(rules, node);
    }

    static Alignment alignment(const GridAxis::Child& rules, const Node& node) {
        const bool atStart = rules.start || node.gapBefore;
        const bool atEnd = rules.end || node.hasNext;
        if (rules.asLargeAsContainer || (atStart && atEnd && !rules.size.exact))
            return Alignment::Stretch;
        if (rules.centred && !(atStart && atEnd))
            return Alignment::Centre;
        return atEnd && !atStart ? Alignment::End : Alignment::Start;
    }

    // A child of which only the middle is known stands where the one stands that it follows.
    void followCentre(std::size_t child) {
        const auto& other = axis_.children[child].centredOn;
        if (!result_.loose[child] || !other || result_.loose[*other])
            return;
        result_.places[child].first = result_.places[*other].first;
        result_.places[child].last = result_.places[*other].last;
        result_.loose[child] = false;
    }

    const GridAxis& axis_;
    std::vector<Node> nodes_;
    std::vector<GridAxis::Link> links_; // by `before`
    std::vector<std::size_t> order_;
    GridAxis::Result result_;
};

} // namespace

std::optional<GridAxis::Result> GridAxis::arrange() const {
    return Arrangement(*this).result();
}

} // namespace vx

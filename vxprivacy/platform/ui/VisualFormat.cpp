// From the parts of a visual-format string to constraints: looks up the views and metrics that it
// names.

#include "vxprivacy/platform/ui/VisualFormat.h"

#include <string>
#include <utility>

#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/ui/VisualFormatSyntax.h"

namespace vx {

namespace {

using Attribute = LayoutConstraint::Attribute;
using Predicate = VisualFormatSyntax::Predicate;
using Operand = VisualFormatSyntax::Operand;

struct Axis {
    Attribute start, end, size;
};

constexpr Axis kHorizontal = {Attribute::Leading, Attribute::Trailing, Attribute::Width};
constexpr Axis kVertical = {Attribute::Top, Attribute::Bottom, Attribute::Height};

// Turns the parts of one string into constraints; leaves at the first unknown name.
class Resolver {
public:
    Resolver(const VisualFormatSyntax& syntax, int options, const MetricsDictionary& metrics,
             const ViewsDictionary& views)
        : syntax_(syntax), axis_(syntax.vertical ? kVertical : kHorizontal), options_(options),
          metrics_(metrics), views_(views) {}

    std::vector<LayoutConstraint> resolve() {
        if (syntax_.items.empty())
            return {};
        items_.reserve(syntax_.items.size());
        for (const auto& item : syntax_.items)
            items_.push_back(item.isSuperview() ? nullptr : view(item.name, item.place));
        resolveSuperview();
        constraints_.reserve(syntax_.predicates.size());
        auto predicate = syntax_.predicates.begin();
        for (std::size_t i = 0; i < items_.size(); ++i) {
            for (std::size_t size = 0; size < syntax_.items[i].sizes; ++size)
                addSize(i, *predicate++);
            for (std::size_t gap = 0; gap < syntax_.items[i].gaps; ++gap)
                addGap(i, *predicate++);
        }
        addAlignment();
        return std::move(constraints_);
    }

private:
    [[noreturn]] static void fail(std::string reason, std::size_t place) {
        throw VisualFormatError{std::move(reason), place};
    }

    View* view(std::string_view name, std::size_t place) const {
        const auto* found = views_.find(name);
        if (!found || !*found)
            fail("unknown view " + std::string(name), place);
        return found->get();
    }

    // "|" stands for the superview of the view beside it.
    void resolveSuperview() {
        for (std::size_t i : {std::size_t{0}, items_.size() - 1}) {
            if (items_[i])
                continue;
            View* parent = items_[i == 0 ? 1 : i - 1]->superview();
            if (!parent)
                fail("the view has no superview", syntax_.items[i].place);
            items_[i] = parent;
        }
    }

    bool isSuperview(std::size_t i) const { return syntax_.items[i].isSuperview(); }

    double constant(const Operand& operand, std::size_t place) const {
        if (const double* number = std::get_if<double>(&operand))
            return *number;
        const std::string_view name = std::get<std::string_view>(operand);
        const double* metric = metrics_.find(name);
        if (!metric)
            fail("unknown metric " + std::string(name), place);
        return *metric;
    }

    LayoutConstraint begin(const Predicate& predicate, std::size_t place) const {
        LayoutConstraint constraint;
        constraint.relation = predicate.relation;
        if (predicate.priority)
            constraint.priority = static_cast<float>(constant(*predicate.priority, place));
        return constraint;
    }

    void addSize(std::size_t i, const Predicate& predicate) {
        const std::size_t place = syntax_.items[i].place;
        LayoutConstraint constraint = begin(predicate, place);
        constraint.firstItem = items_[i];
        constraint.firstAttribute = axis_.size;
        const auto* name = std::get_if<std::string_view>(&predicate.object);
        if (name && !metrics_.contains(*name)) {
            constraint.secondItem = view(*name, place);
            constraint.secondAttribute = axis_.size;
        } else {
            constraint.constant = constant(predicate.object, place);
            constraint.metric = name != nullptr;
        }
        constraints_.push_back(constraint);
    }

    // The later item's edge = the earlier item's edge + gap, so that a gap is never negative.
    void addGap(std::size_t i, const Predicate& predicate) {
        LayoutConstraint constraint = begin(predicate, syntax_.items[i].place);
        constraint.firstItem = items_[i + 1];
        constraint.firstAttribute = isSuperview(i + 1) ? axis_.end : axis_.start;
        constraint.secondItem = items_[i];
        constraint.secondAttribute = isSuperview(i) ? axis_.start : axis_.end;
        constraint.constant = constant(predicate.object, syntax_.items[i].place);
        constraints_.push_back(constraint);
    }

    void addAlignment() {
        for (auto [option, attribute] : {std::pair(kAlignAllCentreX, Attribute::CentreX),
                                         std::pair(kAlignAllCentreY, Attribute::CentreY)})
            if (options_ & option)
                alignAll(attribute);
    }

    void alignAll(Attribute attribute) {
        View* previous = nullptr;
        for (std::size_t i = 0; i < items_.size(); ++i) {
            if (isSuperview(i))
                continue;
            if (previous) {
                LayoutConstraint constraint = begin({}, 0);
                constraint.firstItem = items_[i];
                constraint.firstAttribute = attribute;
                constraint.secondItem = previous;
                constraint.secondAttribute = attribute;
                constraints_.push_back(constraint);
            }
            previous = items_[i];
        }
    }

    const VisualFormatSyntax& syntax_;
    const Axis axis_;
    const int options_;
    const MetricsDictionary& metrics_;
    const ViewsDictionary& views_;
    std::vector<View*> items_; // the superview in place of "|"
    std::vector<LayoutConstraint> constraints_;
};

void refuse(std::string_view format, const VisualFormatError& error) {
    VXLogger::sharedInstance().logMessage(
        formatted("Visual format \"%@\", character %d: %@",
                  {format, static_cast<std::int32_t>(error.place), error.reason}),
        kLogProblem);
}

} // namespace

VisualFormat constraintsWithVisualFormat(std::string_view format, int options,
                                         const MetricsDictionary& metrics,
                                         const ViewsDictionary& views) {
    VisualFormat made{std::string(format), options, {}};
    const auto parsed = parseVisualFormat(format);
    try {
        if (const auto* syntax = std::get_if<VisualFormatSyntax>(&parsed))
            made.constraints = Resolver(*syntax, options, metrics, views).resolve();
        else
            refuse(format, std::get<VisualFormatError>(parsed));
    } catch (const VisualFormatError& error) {
        refuse(format, error);
    }
    return made;
}

} // namespace vx

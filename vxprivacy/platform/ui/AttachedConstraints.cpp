#include "vxprivacy/platform/ui/AttachedConstraints.h"

#include <utility>

namespace vx {

namespace {

// Most views have no more; for them alone as much memory is taken as is needed.
constexpr std::size_t kFew = 16;

} // namespace

std::vector<AttachedFormat> AttachedConstraints::formats() const {
    std::vector<AttachedFormat> formats;
    std::string_view texts = texts_;
    for (const auto& [length, constraints, options] : formats_) {
        formats.push_back({texts.substr(0, length), options, constraints});
        texts.remove_prefix(length);
    }
    return formats;
}

void AttachedConstraints::add(const VisualFormat& format) {
    const auto& added = format.constraints;
    if (added.empty())
        return;
    if (constraints_.size() + added.size() <= kFew)
        constraints_.reserve(constraints_.size() + added.size());
    constraints_.insert(constraints_.end(), added.begin(), added.end());
    formats_.push_back({static_cast<std::uint32_t>(format.text.size()),
                        static_cast<std::uint32_t>(added.size()), format.options});
    texts_ += format.text;
}

bool AttachedConstraints::remove(const std::function<bool(const LayoutConstraint&)>& chosen) {
    auto next = constraints_.begin();
    auto kept = next;
    for (Format& format : formats_)
        for (auto left = std::exchange(format.constraints, 0); left > 0; --left, ++next)
            if (!chosen(*next)) {
                *kept++ = *next;
                ++format.constraints;
            }
    if (kept == next)
        return false;
    constraints_.erase(kept, next);
    removeEmptyFormats();
    return true;
}

void AttachedConstraints::removeEmptyFormats() {
    std::size_t place = 0;
    for (const Format& format : formats_)
        if (format.constraints == 0)
            texts_.erase(place, format.length);
        else
            place += format.length;
    std::erase_if(formats_, [](const Format& format) { return format.constraints == 0; });
}

} // namespace vx

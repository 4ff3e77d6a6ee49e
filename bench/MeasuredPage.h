#pragma once

#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

#include "vxprivacy/hosts/web/WebSurface.h"

namespace vx::bench {

/// A page of a surface, and the events that it sends.
class MeasuredPage {
public:
    /// `surface` must outlive this.
    explicit MeasuredPage(web::WebSurface& surface);

    // The element that begins last before `text`, and the one that begins first after it.
    std::string elementBefore(std::string_view text) const;
    std::string elementAfter(std::string_view text) const;

    std::string tap(const std::string& element) const { return dispatch("tap", element); }
    /// An event that says nothing: the answer is what has changed since.
    std::string update() const { return dispatch("nothing", ""); }

private:
    std::string dispatch(const char* what, const std::string& element) const;

    web::WebSurface& surface_;
    std::string markup_;
    std::string id_;
};

/// Taps on `element`; the patch's size is in the counter "bytes".
void measureTaps(benchmark::State& state, const MeasuredPage& page, const std::string& element);

} // namespace vx::bench

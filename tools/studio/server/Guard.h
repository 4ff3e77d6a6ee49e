#pragma once

#include <functional>
#include <string>

#include <httplib.h>

namespace vx::tools::studio {

/// Keeps strangers out of the page's server: other sites in the user's browser, names that were
/// made to resolve to this machine, and requests that change something without the token of this
/// run.
class Guard {
public:
    Guard();

    /// Makes `server` refuse what must be refused, before any of its routes sees it, and send the
    /// headers that keep the page to itself. `port` is asked at each request.
    void protect(httplib::Server& server, std::function<int()> port) const;

    /// 32 hexadecimal digits, new in every run.
    const std::string& token() const { return token_; }

private:
    std::string token_;
};

} // namespace vx::tools::studio

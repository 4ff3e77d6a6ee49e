#include "tests/services/BeaconUsers.h"

namespace vx::services::test {

std::set<std::string> beaconUsers(tests::LocalServer& collector) {
    constexpr std::string_view before = R"("vxpid":")";
    std::set<std::string> users;
    for (const httplib::Request& request : collector.requests()) {
        if (request.method != "POST")
            continue;
        const std::size_t start = request.body.find(before) + before.size();
        users.insert(request.body.substr(start, request.body.find('"', start) - start));
    }
    return users;
}

} // namespace vx::services::test

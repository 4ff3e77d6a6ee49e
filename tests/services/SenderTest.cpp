#include "tests/services/SenderTest.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include "vxprivacy/platform/core/VXNotifications.h"

namespace vx::services::test {

void SenderTest::send(World& world, const std::string& url, const std::string& body) {
    world.services.platform().notifications.post(
        {std::string(kVXNotification_HTTPRequest), nullptr,
         Notification::UserInfo{{std::string(kVXUserInfo_URLKey), url},
                                {std::string(kVXUserInfo_POSTData), body}}});
}

std::int64_t SenderTest::inFile(const std::string& query) const {
    SQLite::Database file(store.string(), SQLite::OPEN_READWRITE, 1000);
    return file.execAndGet(query).getInt64();
}

std::vector<std::string> SenderTest::bodies(LocalServer& server) {
    std::vector<std::string> bodies;
    for (const httplib::Request& request : server.requests())
        bodies.push_back(request.body);
    return bodies;
}

} // namespace vx::services::test

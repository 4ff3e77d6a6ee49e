#include "tools/system/BoundedServer.h"

#include <string>

#include <strings.h>
#include <sys/socket.h>

#include "tools/system/ConnectionStream.h"
#include "tools/system/Descriptor.h"

namespace vx::tools::system {

namespace {

constexpr int kBacklog = 512; // the library's is 5: a crowd would keep others out for seconds

void refuse(ConnectionStream& stream, const std::string& status, const std::string& reason) {
    const std::string body = "{\"error\": \"" + reason + "\"}\n";
    const std::string answer = "HTTP/1.1 " + status +
                               "\r\nConnection: close\r\nContent-Type: application/json"
                               "\r\nContent-Length: " +
                               std::to_string(body.size()) + "\r\n\r\n" + body;
    stream.write(answer.data(), answer.size());
}

} // namespace

BoundedServer::BoundedServer() {
    new_task_queue = [this] { // called as it begins to listen
        ::listen(svr_sock_, kBacklog);
        return threads_ = new ConnectionThreads; // the library's to free
    };
}

bool BoundedServer::process_and_close_socket(socket_t socket) {
    const Descriptor closed(socket);
    ConnectionThreads::Connection connection(*threads_, socket);
    ConnectionStream stream(connection);
    const auto setUp = [&](httplib::Request& request) {
        request.ranges.clear();      // a thousand of them would be put together in memory
        if (request.method == "PRI") // of HTTP/2; the library would read its body whole
            request.method.clear();
        if (strcasecmp(request.get_header_value("Transfer-Encoding").c_str(), "chunked") == 0)
            stream.expectChunks();
    };
    bool isClosed = false;
    switch (stream.readHead()) {
    case ConnectionStream::Head::Whole:
        process_request(stream, true, isClosed, setUp);
        break;
    case ConnectionStream::Head::TooLong:
        refuse(stream, "431 Request Header Fields Too Large",
               "the head of a request has 64 KiB at most");
        break;
    case ConnectionStream::Head::TooSlow:
        refuse(stream, "408 Request Timeout", "the head of a request has 10 seconds to arrive");
        break;
    case ConnectionStream::Head::None:
        return false;
    }
    stream.finish();
    return true;
}

} // namespace vx::tools::system

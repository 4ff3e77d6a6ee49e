#include "tools/studio/shared/Routes.h"

#include <exception>
#include <optional>
#include <utility>

#include "tools/studio/shared/Answers.h"

namespace vx::tools::studio {

namespace {

std::string inWords(std::size_t bytes) {
    return bytes % (1u << 20) == 0 ? std::to_string(bytes >> 20) + " MiB"
                                   : std::to_string(bytes >> 10) + " KiB";
}

// The library takes no more than 8 KiB of the content type that curl gives a body unasked, and
// waits for the end of a body of which no length is said, such as that of a plain "curl -X POST".
std::optional<std::string> readBody(const httplib::Request& request,
                                    const httplib::ContentReader& read, std::size_t most,
                                    httplib::Response& response) {
    std::string body;
    if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding"))
        return body;
    bool tooLong = false;
    const bool whole = read([&](const char* data, std::size_t size) {
        tooLong = size > most - body.size();
        if (!tooLong)
            body.append(data, size);
        return !tooLong;
    });
    if (whole)
        return body;
    if (tooLong || response.status == 413) // the latter by the length announced
        answerError(response, 413, {"a body has " + inWords(most) + " at most here"});
    else
        answerError(response, 400,
                    {"the body is cut short, or not chunked or packed as its headers say"});
    return {};
}

// Reads it to its end, so that its sender hears the answer.
void refuseForm(const httplib::ContentReader& read, httplib::Response& response) {
    read([](const httplib::MultipartFormData&) { return true; },
         [](const char*, std::size_t) { return true; });
    answerError(response, 415, {"post the text itself, not a form"});
}

void refuseMethod(const httplib::Request& request, httplib::Response& response,
                  const char* allowed) {
    response.set_header("Allow", allowed);
    answerError(response, 405, {request.path + " takes " + allowed + ", not " + request.method});
}

std::string problemWith(const httplib::Request& request, int status) {
    switch (status) {
    case 400:
        return "this is no request that HTTP/1.1 knows, or a line of its head has more than 8 KiB";
    case 404:
        return "nothing answers " + request.method + " " + request.path;
    case 413:
        return "the request is too long";
    case 414:
        return "the address is too long";
    default:
        return "the request cannot be answered";
    }
}

} // namespace

void addGet(httplib::Server& server, const std::string& path, httplib::Server::Handler answer) {
    server.Get(path, std::move(answer));
    server.Post(path,
                [](const httplib::Request& request, httplib::Response& response,
                   const httplib::ContentReader&) { refuseMethod(request, response, "GET"); });
}

void addPost(httplib::Server& server, const std::string& path, std::size_t most, TakeBody take) {
    server.Post(path, [most, take = std::move(take)](const httplib::Request& request,
                                                     httplib::Response& response,
                                                     const httplib::ContentReader& read) {
        if (request.is_multipart_form_data())
            refuseForm(read, response);
        else if (const auto body = readBody(request, read, most, response))
            take(request, *body, response);
    });
    server.Get(path, [](const httplib::Request& request, httplib::Response& response) {
        refuseMethod(request, response, "POST");
    });
}

void refuseOthers(httplib::Server& server) {
    // The library would read, and unpack, all of a body before it finds that nobody takes it.
    const auto nobody = [](const httplib::Request&, httplib::Response& response,
                           const httplib::ContentReader&) { response.status = 404; };
    server.Post(".*", nobody);
    server.Put(".*", nobody);
    server.Patch(".*", nobody);
    server.Delete(".*", nobody);
    server.set_payload_max_length(kLargestBody);
    server.set_error_handler([](const httplib::Request& request, httplib::Response& response) {
        if (!response.has_header("Content-Type")) // nobody has said more
            answerError(response, response.status, {problemWith(request, response.status)});
    });
    server.set_exception_handler(
        [](const httplib::Request&, httplib::Response& response, const std::exception_ptr& thrown) {
            try {
                std::rethrow_exception(thrown);
            } catch (const std::exception& error) { // a file, a pipe or a process
                answerError(response, 500, {error.what()});
            }
        });
}

} // namespace vx::tools::studio

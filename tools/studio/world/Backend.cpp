// The development backend's routes: privacy configuration, vendor list, consent collector.

#include "tools/studio/world/Backend.h"

#include <functional>
#include <utility>

#include "tools/studio/shared/Answers.h"
#include "tools/studio/shared/EventStream.h"
#include "tools/studio/shared/Json.h"
#include "tools/studio/shared/OriginCheck.h"
#include "tools/studio/shared/Routes.h"

namespace vx::tools::studio {

namespace {

constexpr const char* kCollector = "/privacy-consent/";
constexpr std::size_t kLongestBeacon = 1u << 20;

std::string entityTag(const std::string& document) {
    return '"' + std::to_string(std::hash<std::string>{}(document)) + '"';
}

void answerDocument(const std::string& document, const httplib::Request& request,
                    httplib::Response& response) {
    const std::string tag = entityTag(document);
    response.set_header("ETag", tag);
    response.set_header("Cache-Control", "no-cache");
    if (request.get_header_value("If-None-Match") == tag)
        response.status = 304;
    else
        response.set_content(document, "application/json"); // compressed when the client takes it
}

} // namespace

Backend::Backend(std::int32_t siteID, std::int32_t privacyID, ServedVendorLists vendorLists,
                 EventStream& events)
    : configurationPath_("/mobile/" + std::to_string(siteID) + "/" + std::to_string(privacyID) +
                         "/privacy.json"),
      vendorLists_(std::move(vendorLists)), events_(events),
      server_([this](httplib::Server& server) { addRoutes(server); }) {}

bool Backend::start(int port) {
    return server_.start(port) || server_.start(0);
}

void Backend::publish(std::shared_ptr<const std::string> document) {
    const std::lock_guard lock(mutex_);
    document_ = std::move(document);
}

std::shared_ptr<const std::string> Backend::published() const {
    const std::lock_guard lock(mutex_);
    return document_;
}

void Backend::addRoutes(httplib::Server& server) {
    server.set_pre_routing_handler(
        [this](const httplib::Request& request, httplib::Response& response) {
            return turnAway(checkOrigin(request, server_.port()), response);
        });
    addGet(server, configurationPath_,
           [this](const httplib::Request& request, httplib::Response& response) {
               answerDocument(*published(), request, response);
           });
    addGet(server, "/v([23])/([^/]+)",
           [this](const httplib::Request& request, httplib::Response& response) {
               answerVendorList(request, response);
           });
    addPost(
        server, kCollector, kLongestBeacon,
        [this](const httplib::Request&, const std::string& beacon, httplib::Response& response) {
            collect(beacon);
            response.set_content("{}", "application/json");
        });
    refuseOthers(server);
    // Before the answer goes out, so that it stands before what the answer causes. What other sites
    // ask for is left out: they could fill the timeline.
    server.set_post_routing_handler(
        [this](const httplib::Request& request, httplib::Response& response) {
            if (!checkOrigin(request, server_.port()))
                events_.append("request", request.method + " " + request.target + " \u2192 " +
                                              std::to_string(response.status));
        });
}

void Backend::answerVendorList(const httplib::Request& request, httplib::Response& response) const {
    const auto& list = request.matches[1] == "3" ? vendorLists_.format3 : vendorLists_.format2;
    const auto document = list.documents.find(request.matches[2]);
    if (document == list.documents.end())
        response.status = 404;
    else
        answerDocument(document->second, request, response);
}

void Backend::collect(const std::string& text) {
    const bool isShown =
        text.size() <= EventStream::kLongestEntry; // or taking it apart is for nothing
    const Result<Json> beacon = isShown ? parsed(text) : Problem{"too long"};
    events_.setState("beacons", {{"arrived", ++arrived_}}); // also those that leave the timeline
    events_.append({{"kind", "beacon"},
                    {"title", std::string("Beacon arrived at ") + kCollector},
                    {"text", text},
                    {"body", beacon ? *beacon : Json(text)}});
}

} // namespace vx::tools::studio

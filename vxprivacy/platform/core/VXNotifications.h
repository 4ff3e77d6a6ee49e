#pragma once

#include <string_view>

// Names of the core library's notifications, of the entries of their user information and of its
// variables. Tag SDKs and senders that an application brings know these texts: never change one.
//
// All notifications of the engine are posted in the middle of what caused them. What is saved by
// then can already be read; it is durable a little later, when the save returns.

namespace vx {

/// Consent was given, or given consent was restored at start-up: the tag SDK starts. The saved
/// entries come along as `kVXUserInfo_POSTData`; without entries there is no user information.
inline constexpr std::string_view kVXNotification_StartingTheSDK = "VXNotification_StartingTheSDK";
/// Consent was refused, or a refusal was restored at start-up: the tag SDK stops. No user
/// information.
inline constexpr std::string_view kVXNotification_StoppingTheSDK = "VXNotification_StoppingTheSDK";
/// A JSON body is to be posted over HTTP. All three entries below come along. The engine asks once
/// and awaits no answer; who sends it sees to retries.
inline constexpr std::string_view kVXNotification_HTTPRequest = "VXNotification_HTTPRequest";
/// A newer document changes something that concerns consent. Posted under this name followed
/// directly by the file's name ("VXNotification_ConfigurationChangedprivacy"). Its user information
/// says what is to be done about it.
inline constexpr std::string_view kVXNotification_ConfigurationChanged =
    "VXNotification_ConfigurationChanged";

/// With an HTTP request: its body, UTF-8. With the start notification: the saved entries,
/// "&key=value" each.
inline constexpr std::string_view kVXUserInfo_POSTData = "VXUserInfo_POSTData";
/// With an HTTP request: the address to post to.
inline constexpr std::string_view kVXUserInfo_URLKey = "VXUserInfo_URLKey";
/// With an HTTP request: the name under which its sender may file the response. Nobody here reads
/// responses.
inline constexpr std::string_view kVXUserInfo_ResponseKey = "VXUserInfo_ResponseKey";

/// The core variable that holds the user agent. Where it is absent, beacons say "(null)".
inline constexpr std::string_view kVXPredefinedVariable_UserAgent =
    "kVXPredefinedVariable_UserAgent";
/// The core variable that holds the identifier of this installation. A beacon names it when the
/// application gave no user; the services make a random one.
inline constexpr std::string_view kVXPredefinedVariable_SDKID = "kVXPredefinedVariable_SDKID";

} // namespace vx

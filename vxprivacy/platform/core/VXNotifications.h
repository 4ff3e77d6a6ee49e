#pragma once

#include <string_view>

// Names of the core library's notifications, of the entries of their user information and of its
// variables.

namespace vx {

/// Consent was given: the tag SDK starts. The saved entries come along as `kVXUserInfo_POSTData`
/// when there are any.
inline constexpr std::string_view kVXNotification_StartingTheSDK = "VXNotification_StartingTheSDK";
/// Consent was refused: the tag SDK stops. No user information.
inline constexpr std::string_view kVXNotification_StoppingTheSDK = "VXNotification_StoppingTheSDK";
/// A JSON body is to be posted; the entries below say what and where to. No answer is awaited.
inline constexpr std::string_view kVXNotification_HTTPRequest = "VXNotification_HTTPRequest";
/// Followed directly by a file's name in the notifications that the file posts.
inline constexpr std::string_view kVXNotification_ConfigurationChanged =
    "VXNotification_ConfigurationChanged";

/// With an HTTP request: its body. With the start notification: the saved entries, "&key=value".
inline constexpr std::string_view kVXUserInfo_POSTData = "VXUserInfo_POSTData";
/// With an HTTP request: the address to post to.
inline constexpr std::string_view kVXUserInfo_URLKey = "VXUserInfo_URLKey";
/// The name under which the core library may file the response.
inline constexpr std::string_view kVXUserInfo_ResponseKey = "VXUserInfo_ResponseKey";

/// The core variable that holds the user agent.
inline constexpr std::string_view kVXPredefinedVariable_UserAgent =
    "kVXPredefinedVariable_UserAgent";
/// Identifier of this installation, made by the tag SDK.
inline constexpr std::string_view kVXPredefinedVariable_SDKID = "kVXPredefinedVariable_SDKID";

} // namespace vx

#include <string>

#include "vxprivacy/c/Module.h"
#include "vxprivacy/c/Texts.h"
#include "vxprivacy/c/vxprivacy.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"

using namespace vx::c;

namespace {

vx_asking asking() {
    if (!vx::VXPrivacyAPI::shouldDisplayPrivacyCenter())
        return VX_ASK_NOT;
    if (!vx::VXPrivacyAPI::isConsentAlreadyGiven())
        return VX_ASK_FIRST_TIME;
    return vx::VXMobilePrivacy::sharedInstance().consentExpired() ? VX_ASK_OUTDATED
                                                                  : VX_ASK_CHANGED;
}

// A started module, which may be asked from within a call of the application's too.
vx_module& known(vx_module* module) {
    vx_module& askedOne = asked(module);
    require(askedOne.started, VX_WRONG_STATE);
    return askedOne;
}

double numberOf(vx_state_number which, const vx::services::Status& status) {
    switch (which) {
    case VX_CONSENT_STATE:
        return vx::VXMobilePrivacy::sharedInstance().privacyState();
    case VX_LAST_SAVED:
        return static_cast<double>(vx::VXPrivacyAPI::getLastTimeConsentWasSaved());
    case VX_PENDING_SINCE:
        return static_cast<double>(status.pendingSince.value_or(0));
    case VX_WAITING_BEACONS:
        return static_cast<double>(status.waitingBeacons);
    case VX_OLDEST_BEACON:
        return static_cast<double>(status.oldestBeacon.value_or(0));
    default:
        throw Misuse{VX_INVALID_ARGUMENT};
    }
}

std::string documentProblems(const vx::services::Status& status) {
    std::string lines;
    for (const auto& document : status.documents)
        if (!document.problem.empty())
            lines += document.name + ": " + document.problem + '\n';
    return lines;
}

std::string problemOf(vx_problem which, const vx::services::Status& status) {
    switch (which) {
    case VX_STORE_PROBLEM:
        return status.storeProblem;
    case VX_NETWORK_PROBLEM:
        return status.networkProblem;
    case VX_DOCUMENT_PROBLEMS:
        return documentProblems(status);
    default:
        throw Misuse{VX_INVALID_ARGUMENT};
    }
}

} // namespace

vx_result vx_must_ask(vx_module* module, vx_asking* place) {
    return guarded([&] {
        known(module);
        outOf(place) = asking();
    });
}

vx_result vx_accept_all(vx_module* module) {
    return guarded([&] {
        started(module);
        vx::VXMobilePrivacy::sharedInstance().acceptAllConsent();
    });
}

vx_result vx_refuse_all(vx_module* module) {
    return guarded([&] {
        started(module);
        vx::VXMobilePrivacy::sharedInstance().refuseAllConsent();
    });
}

vx_result vx_category_accepted(vx_module* module, int category, int* accepted) {
    return guarded([&] {
        known(module);
        outOf(accepted) = vx::VXPrivacyAPI::isCategoryAccepted(category);
    });
}

vx_result vx_vendor_accepted(vx_module* module, int vendor, int* accepted) {
    return guarded([&] {
        known(module);
        outOf(accepted) = vx::VXPrivacyAPI::isVendorAccepted(vendor);
    });
}

vx_result vx_stored_text(vx_module* module, const char* key, size_t key_length, char** text,
                         size_t* length) {
    return guarded([&] {
        const auto stored = known(module).store().get(textIn(key, key_length));
        if (stored)
            return textOut(*stored, text, length);
        outOf(length);
        outOf(text) = nullptr;
        *length = 0;
    });
}

vx_result vx_state(vx_module* module, vx_state_number which, double* number) {
    return guarded([&] { outOf(number) = numberOf(which, known(module).services().status()); });
}

vx_result vx_problem_text(vx_module* module, vx_problem which, char** text, size_t* length) {
    return guarded(
        [&] { textOut(problemOf(which, known(module).services().status()), text, length); });
}

#include "tools/studio/application/TCStringView.h"

#include <utility>

#include "tools/tc/FindingsJSON.h"
#include "tools/tc/ModelJSON.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"

namespace vx::tools::studio {

namespace {

Json textOf(const Json& entries) {
    for (const Json& entry : entries)
        if (entry[0] == "IABTCF_TCString")
            return entry[1];
    return {};
}

Json findingsIn(const std::string& text) {
    tc::CheckLists lists;
    if (const auto file = configurationFile(kVXVendorListConfiguration))
        lists.vendors = services::tcf::VendorList::of(file->getJSONDictionary());
    return tc::asJSON(tc::check(text, lists));
}

} // namespace

TCStringView::TCStringView(const std::string& before)
    : before_(before.empty() ? Json() : tc::decodedAsJSON(before)) {}

const Json& TCStringView::state(const Json& entries) {
    const Json text = textOf(entries);
    if (text == (now_.is_null() ? Json() : now_["text"]))
        return state_;
    if (!now_.is_null())
        before_ = std::move(now_);
    now_ = text.is_null() ? Json() : tc::decodedAsJSON(text.get<std::string>());
    state_ = now_;
    if (!state_.is_null())
        state_["before"] = before_;
    if (!state_.is_null() && state_.contains("model"))
        state_["findings"] = findingsIn(state_["text"].get<std::string>());
    return state_;
}

} // namespace vx::tools::studio

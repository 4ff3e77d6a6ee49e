#include "tools/tc/FindingsJSON.h"

namespace vx::tools::tc {

nlohmann::ordered_json asJSON(const std::vector<Finding>& findings) {
    auto array = nlohmann::ordered_json::array();
    for (const Finding& finding : findings) {
        auto& object = array.emplace_back();
        object = {{"rule", finding.rule}, {"field", finding.field}};
        if (finding.bits)
            object["bits"] = {finding.bits->first, finding.bits->second};
        object["what"] = finding.what;
        object["source"] = finding.source;
    }
    return array;
}

} // namespace vx::tools::tc

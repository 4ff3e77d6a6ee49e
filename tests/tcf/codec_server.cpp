// Encodes and decodes TC strings for the tests in JavaScript: for each line of standard input,
// {"encode":MODEL} or {"decode":TEXT}, one line {"text":...}, {"model":...} or {"error":...}.

#include <iostream>
#include <string>

#include "tools/tc/ModelJSON.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Encoder.h"

namespace {

using namespace vx::services::tcf;
using JSON = nlohmann::ordered_json;

JSON encoded(const JSON& json) {
    const auto model = vx::tools::tc::modelIn(json);
    if (const auto* fault = std::get_if<vx::tools::tc::JSONFault>(&model))
        return {{"error", fault->path + " " + fault->why}};
    return {{"text", encode(std::get<TCModel>(model))}};
}

JSON decoded(const std::string& text) {
    const auto model = decode(text);
    if (const auto* error = std::get_if<TCError>(&model))
        return {
            {"error", error->field + ", bit " + std::to_string(error->bit) + ": " + error->why}};
    return {{"model", vx::tools::tc::asJSON(std::get<TCModel>(model))}};
}

} // namespace

int main() {
    std::ios::sync_with_stdio(false);
    for (std::string line; std::getline(std::cin, line);) {
        const JSON request = JSON::parse(line);
        const JSON answer = request.contains("encode")
                                ? encoded(request["encode"])
                                : decoded(request["decode"].get<std::string>());
        std::cout << answer.dump() << std::endl;
    }
}

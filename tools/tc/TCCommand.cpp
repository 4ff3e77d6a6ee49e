// The subcommand tc: decodes a TC string, or encodes a JSON document as one.

#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/system/Input.h"
#include "tools/tc/ModelJSON.h"
#include "tools/tc/ModelTable.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Encoder.h"

namespace vx::tools {

namespace {

using services::tcf::TCError;
using services::tcf::TCModel;

constexpr std::size_t kLargestModel = 8 << 20; // bytes of JSON
constexpr int kNotWellFormed = 1;

struct Arguments {
    std::string input;
    bool json = false;
};

[[noreturn]] void fail(const std::string& why, int status) {
    std::cerr << "vxprivacy tc: " << why << '\n';
    throw CLI::RuntimeError(status);
}

std::string read(const std::string& name, std::size_t most) {
    system::Input input(name);
    auto text = input.read(most);
    if (!text)
        fail("cannot read " + input.title(), kUnusableInput);
    return *std::move(text);
}

std::string stringIn(const Arguments& arguments) {
    if (arguments.input != "-")
        return arguments.input;
    std::string text = read("-", services::tcf::kLongestString);
    while (text.ends_with('\n') || text.ends_with('\r'))
        text.pop_back();
    return text;
}

void decode(const Arguments& arguments) {
    const auto decoded = services::tcf::decode(stringIn(arguments));
    if (const auto* error = std::get_if<TCError>(&decoded))
        fail(error->field + ", bit " + std::to_string(error->bit) + ": " + error->why,
             kNotWellFormed);
    const auto& model = std::get<TCModel>(decoded);
    if (arguments.json)
        std::cout << tc::asJSON(model).dump(2) << '\n';
    else
        tc::printTable(model, std::cout);
}

nlohmann::ordered_json parse(const std::string& text) {
    try {
        return nlohmann::ordered_json::parse(text);
    } catch (const nlohmann::json::parse_error& error) {
        fail("byte " + std::to_string(error.byte) + ": this is no JSON", kNotWellFormed);
    }
}

void encode(const Arguments& arguments) {
    const std::string text = read(arguments.input, kLargestModel);
    if (text.size() > kLargestModel)
        fail("the file is larger than " + std::to_string(kLargestModel) + " bytes", kNotWellFormed);
    const auto model = tc::modelIn(parse(text));
    if (const auto* fault = std::get_if<tc::JSONFault>(&model))
        fail((fault->path.empty() ? "the document" : fault->path) + " " + fault->why,
             kNotWellFormed);
    std::cout << services::tcf::encode(std::get<TCModel>(model)) << '\n';
}

// The options of decoding, which is also what `command` does where none of its own is named.
std::shared_ptr<Arguments> addDecodeOptions(CLI::App& command) {
    auto arguments = std::make_shared<Arguments>();
    command.add_option("STRING", arguments->input, "The TC string; \"-\": on standard input");
    command.add_flag("--json", arguments->json, "Print it as JSON, which encode takes");
    return arguments;
}

void addDecode(CLI::App& app) {
    CLI::App* command = app.add_subcommand("decode", "Print what a TC string says");
    const auto arguments = addDecodeOptions(*command);
    command->get_option("STRING")->required();
    command->callback([arguments] { decode(*arguments); });
}

void addEncode(CLI::App& app) {
    CLI::App* command = app.add_subcommand("encode", "Print the TC string of a JSON document");
    auto arguments = std::make_shared<Arguments>();
    command->add_option("FILE", arguments->input, "The document; \"-\": standard input")
        ->required();
    command->callback([arguments] { encode(*arguments); });
}

} // namespace

void addTC(CLI::App& app) {
    CLI::App* command =
        app.add_subcommand("tc", "Read and write the IAB's TC strings, version 2 of the framework");
    command->require_subcommand(0, 1);
    addDecode(*command);
    addEncode(*command);
    const auto arguments = addDecodeOptions(*command);
    command->callback([command, arguments] {
        if (!command->get_subcommands().empty())
            return;
        if (arguments->input.empty())
            throw CLI::RequiredError("STRING, decode or encode");
        decode(*arguments);
    });
    command->footer("The exit status is 0 when it was done, 1 when the string or the document is "
                    "not well-formed, and 2 when the input cannot be read.");
}

} // namespace vx::tools

// The subcommand tc: decodes TC strings, encodes JSON documents as some, and checks them.

#include <iostream>
#include <memory>
#include <string>
#include <variant>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/tc/CheckCommand.h"
#include "tools/tc/CommandInput.h"
#include "tools/tc/ModelJSON.h"
#include "tools/tc/ModelTable.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Encoder.h"

namespace vx::tools {

namespace {

using namespace tc;
using services::tcf::TCError;
using services::tcf::TCModel;

constexpr std::size_t kLargestModel = 8 << 20; // bytes of JSON

struct Arguments {
    std::string input;
    std::string lines; // instead: a file of inputs, one a line
    bool json = false;
};

std::string explained(const TCError& error) {
    return error.field + ", bit " + std::to_string(error.bit) + ": " + error.why;
}

void decodeString(const Arguments& arguments) {
    const auto decoded = services::tcf::decode(stringOf(arguments.input));
    if (const auto* error = std::get_if<TCError>(&decoded))
        fail(explained(*error), kNotWellFormed);
    const auto& model = std::get<TCModel>(decoded);
    if (arguments.json)
        std::cout << asJSON(model).dump(2) << '\n';
    else
        printTable(model, std::cout);
}

bool decodeLine(const std::string& line) {
    const auto decoded = services::tcf::decode(line);
    const auto* error = std::get_if<TCError>(&decoded);
    std::cout << (error ? nlohmann::ordered_json{{"error", explained(*error)}}
                        : asJSON(std::get<TCModel>(decoded)))
                     .dump()
              << '\n';
    return !error;
}

void decode(const Arguments& arguments) {
    if (arguments.lines.empty())
        decodeString(arguments);
    else
        forEachLine(arguments.lines, decodeLine);
}

// The string of a document, or why there is none.
std::variant<std::string, JSONFault> encoded(const std::string& document) {
    nlohmann::ordered_json json;
    try {
        json = nlohmann::ordered_json::parse(document);
    } catch (const nlohmann::json::parse_error& error) {
        return JSONFault{"byte " + std::to_string(error.byte) + ":", "this is no JSON"};
    }
    const auto model = modelIn(json);
    if (const auto* fault = std::get_if<JSONFault>(&model))
        return JSONFault{fault->path.empty() ? "the document" : fault->path, fault->why};
    return services::tcf::encode(std::get<TCModel>(model));
}

void encodeDocument(const Arguments& arguments) {
    const std::string text = readInput(arguments.input, kLargestModel);
    if (text.size() > kLargestModel)
        fail("the file is larger than " + std::to_string(kLargestModel) + " bytes", kNotWellFormed);
    const auto made = encoded(text);
    if (const auto* error = std::get_if<JSONFault>(&made))
        fail(error->path + ' ' + error->why, kNotWellFormed);
    std::cout << std::get<std::string>(made) << '\n';
}

// An empty line for a document without a string.
void encodeLines(const Arguments& arguments) {
    forEachLine(arguments.lines, [number = 0](const std::string& line) mutable {
        ++number;
        const auto made = encoded(line);
        const auto* error = std::get_if<JSONFault>(&made);
        if (error)
            std::cerr << "vxprivacy tc: line " << number << ": " << error->path << ' ' << error->why
                      << '\n';
        std::cout << (error ? "" : std::get<std::string>(made)) << '\n';
        return !error;
    });
}

CLI::Option* addLinesOption(CLI::App& command, Arguments& arguments) {
    return command.add_option("--lines", arguments.lines,
                              "Instead, a file with one on each line; \"-\": standard input. What "
                              "is printed is one a line too");
}

// The options of decoding, which is also what `command` does where none of its own is named.
std::shared_ptr<Arguments> addDecodeOptions(CLI::App& command) {
    auto arguments = std::make_shared<Arguments>();
    command.add_option("STRING", arguments->input, "The TC string; \"-\": on standard input");
    addLinesOption(command, *arguments);
    command.add_flag("--json", arguments->json, "Print it as JSON, which encode takes");
    return arguments;
}

void addDecode(CLI::App& app) {
    CLI::App* command = app.add_subcommand("decode", "Print what a TC string says");
    const auto arguments = addDecodeOptions(*command);
    command->callback([arguments] {
        if (arguments->input.empty() == arguments->lines.empty())
            throw CLI::RequiredError("STRING or --lines");
        decode(*arguments);
    });
}

void addEncode(CLI::App& app) {
    CLI::App* command = app.add_subcommand("encode", "Print the TC string of a JSON document");
    auto arguments = std::make_shared<Arguments>();
    command->add_option("FILE", arguments->input, "The document; \"-\": standard input");
    addLinesOption(*command, *arguments);
    command->callback([arguments] {
        if (arguments->input.empty() == arguments->lines.empty())
            throw CLI::RequiredError("FILE or --lines");
        if (arguments->lines.empty())
            encodeDocument(*arguments);
        else
            encodeLines(*arguments);
    });
}

} // namespace

void addTC(CLI::App& app) {
    CLI::App* command =
        app.add_subcommand("tc", "Read and write the IAB's TC strings, version 2 of the framework");
    command->require_subcommand(0, 1);
    addDecode(*command);
    addEncode(*command);
    tc::addCheck(*command);
    const auto arguments = addDecodeOptions(*command);
    command->callback([command, arguments] {
        if (!command->get_subcommands().empty())
            return;
        if (arguments->input.empty() == arguments->lines.empty())
            throw CLI::RequiredError("STRING, decode, encode or check");
        decode(*arguments);
    });
    command->footer(
        "The exit status is 0 when it was done, 1 when a string or document is not "
        "well-formed, or breaks a\nrule that check knows, and 2 when the input cannot be "
        "read.");
}

} // namespace vx::tools

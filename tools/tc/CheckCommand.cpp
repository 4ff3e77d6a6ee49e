#include "tools/tc/CheckCommand.h"

#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/tc/Check.h"
#include "tools/tc/CommandInput.h"
#include "tools/tc/FindingsJSON.h"

namespace vx::tools::tc {

namespace {

constexpr std::size_t kLargestList = 64 << 20; // bytes of JSON

struct CheckArguments {
    std::string input;
    std::string lines;
    std::string vendorList;
    std::string cmpList;
    bool json = false;
};

JSONValue documentIn(const std::string& file) {
    std::string error = "it is no object";
    JSONValue document = JSONValue::parse(readInput(file, kLargestList), &error);
    if (!document.isObject())
        fail(file + " is no list: " + error, kUnusableInput);
    return document;
}

CheckLists listsOf(const CheckArguments& arguments) {
    CheckLists lists;
    if (!arguments.vendorList.empty())
        lists.vendors = services::tcf::VendorList::of(documentIn(arguments.vendorList));
    if (lists.vendors && lists.vendors->version == 0)
        fail(arguments.vendorList + " is no vendor list: it has no version", kUnusableInput);
    if (!arguments.cmpList.empty())
        lists.cmps = cmpListOf(documentIn(arguments.cmpList));
    if (lists.cmps && lists.cmps->empty())
        fail(arguments.cmpList + " is no list of CMPs: it has none", kUnusableInput);
    return lists;
}

std::string bitsOf(const Finding& finding) {
    if (!finding.bits)
        return "";
    const auto& [first, last] = *finding.bits;
    return first == last ? ", bit " + std::to_string(first)
                         : ", bits " + std::to_string(first) + " to " + std::to_string(last);
}

void print(const std::vector<Finding>& findings) {
    for (const Finding& finding : findings)
        std::cout << finding.field << bitsOf(finding) << ": " << finding.what << " ["
                  << finding.rule << "]\n    " << finding.source << '\n';
}

void checkString(const CheckArguments& arguments) {
    const auto findings = check(stringOf(arguments.input), listsOf(arguments));
    if (arguments.json)
        std::cout << asJSON(findings).dump(2) << '\n';
    else if (findings.empty())
        std::cout << "No rule is broken.\n";
    else
        print(findings);
    if (!findings.empty())
        throw CLI::RuntimeError(kNotWellFormed);
}

void checkLines(const CheckArguments& arguments) {
    const CheckLists lists = listsOf(arguments);
    forEachLine(arguments.lines, [&, number = 0](const std::string& line) mutable {
        const auto findings = check(line, lists);
        ++number;
        if (arguments.json) {
            std::cout << asJSON(findings).dump() << '\n';
        } else if (!findings.empty()) {
            std::cout << "Line " << number << '\n';
            print(findings);
        }
        return findings.empty();
    });
}

} // namespace

void addCheck(CLI::App& app) {
    CLI::App* command =
        app.add_subcommand("check", "Say which rules of the framework in force a TC string breaks");
    auto arguments = std::make_shared<CheckArguments>();
    auto* input =
        command->add_option("STRING", arguments->input, "The TC string; \"-\": on standard input");
    auto* lines = command->add_option("--lines", arguments->lines,
                                      "Instead, a file with a string on each line; \"-\": standard "
                                      "input");
    lines->excludes(input);
    command->add_option("--gvl", arguments->vendorList,
                        "The vendor list that the string was made with");
    command->add_option("--cmps", arguments->cmpList, "The IAB's list of CMPs");
    command->add_flag("--json", arguments->json, "Print the findings as JSON, of lines one a line");
    command->callback([arguments, input, lines] {
        if (!*input && !*lines)
            throw CLI::RequiredError("STRING or --lines");
        if (*lines)
            checkLines(*arguments);
        else
            checkString(*arguments);
    });
}

} // namespace vx::tools::tc

#include <string>

#include "tools/lint/Checks.h"

namespace vx::tools::lint {

namespace {

bool isBlank(const Node* text) {
    return text && text->is(Node::Type::String) &&
           text->text.find_first_not_of(" \t\r\n") == std::string::npos;
}

} // namespace

void checkTexts(const Node& document, Findings& findings) {
    for (const Node* row : rowsOf(document))
        if (const Node* name = row->member("name"); isBlank(name))
            findings.add(Severity::Error, valueOf(*name),
                         {"The name is blank.",
                          "The row has no title, and nobody can tell what its switch decides.",
                          "Say in a word or two what the choice is about."});
    const Node* information = document.member("information");
    if (const Node* content = information ? information->member("content") : nullptr;
        isBlank(content) && !rowsOf(document).empty())
        findings.add(Severity::Warning, valueOf(*content),
                     {"\"content\" is blank.", "The privacy center begins with an empty space.",
                      "Say what the privacy center is for, in a sentence or two."});
}

} // namespace vx::tools::lint

#include "vxprivacy/hosts/web/Markup.h"

#include <algorithm>
#include <cstddef>

namespace vx::web {

namespace {

void appendEscaped(std::string& out, std::string_view text) {
    while (true) {
        const std::size_t end =
            std::min(text.find_first_of(std::string_view("&<>\"'\0", 6)), text.size());
        out.append(text.substr(0, end));
        if (end == text.size())
            return;
        switch (text[end]) {
        case '&':
            out.append("&amp;");
            break;
        case '<':
            out.append("&lt;");
            break;
        case '>':
            out.append("&gt;");
            break;
        case '"':
            out.append("&quot;");
            break;
        case '\'':
            out.append("&#39;");
            break;
        default: // no page holds a null character
            out.append("\uFFFD");
        }
        text.remove_prefix(end + 1);
    }
}

} // namespace

Markup& Markup::open(std::string_view tag) {
    text_.append("<").append(tag);
    return *this;
}

Markup& Markup::attribute(std::string_view name, std::string_view value) {
    text_.append(" ").append(name).append("=\"");
    appendEscaped(text_, value);
    text_.append("\"");
    return *this;
}

Markup& Markup::flag(std::string_view name) {
    text_.append(" ").append(name);
    return *this;
}

Markup& Markup::close() {
    text_.append(">");
    return *this;
}

Markup& Markup::text(std::string_view text) {
    appendEscaped(text_, text);
    return *this;
}

Markup& Markup::end(std::string_view tag) {
    text_.append("</").append(tag).append(">");
    return *this;
}

} // namespace vx::web

// Finds out where each value of a JSON text stands, while the reader says what it is.

#include "tools/lint/TreeBuilder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vx::tools::lint {

namespace {

constexpr std::size_t kDeepest = 1024; // levels; the module reads no deeper

// The text as the reader gets it; counts what was taken.
class CountingIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(std::string_view::iterator at, std::size_t& taken) : at_(at), taken_(&taken) {}
    reference operator*() const { return *at_; }
    CountingIterator& operator++() {
        ++at_;
        ++*taken_;
        return *this;
    }
    CountingIterator operator++(int) {
        const CountingIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const CountingIterator& other) const { return at_ == other.at_; }

private:
    std::string_view::iterator at_;
    std::size_t* taken_;
};

// "[...] parse error at line 1, column 2: syntax error while parsing value - invalid literal; last
// read: 'x'; expected ..." without what the finding says itself and what was read.
std::string reasonIn(std::string message) {
    if (const std::size_t start = message.find(" - "); start != std::string::npos)
        message.erase(0, start + 3);
    else if (const std::size_t code = message.find("] "); code != std::string::npos)
        message.erase(0, code + 2);
    if (const std::size_t read = message.find("; last read: '"); read != std::string::npos) {
        const std::size_t next = message.rfind("'; expected");
        message.erase(read, next == std::string::npos ? next : next + 1 - read);
    }
    return message;
}

} // namespace

std::optional<Fault> TreeBuilder::build() {
    const CountingIterator begin(text_.begin(), read_);
    const CountingIterator end(text_.end(), read_);
    nlohmann::json::sax_parse(begin, end, this);
    return fault_;
}

// Where the token begins that the reader took last.
std::size_t TreeBuilder::takeToken() {
    const std::size_t start = text_.find_first_not_of(" \t\r\n,:\xEF\xBB\xBF", tokenEnd_);
    tokenEnd_ = read_;
    return std::min(start, text_.size());
}

Node& TreeBuilder::add(Node::Type type) {
    Node& node = nodes_.emplace_back();
    node.type = type;
    node.offset = node.keyOffset = takeToken();
    if (container_) {
        node.parent = container_;
        node.index = container_->children.size();
        container_->children.push_back(&node);
        if (container_->is(Node::Type::Object)) {
            node.key = std::move(key_);
            node.keyOffset = keyOffset_;
        }
    }
    return node;
}

// The reader takes one byte behind a number, which can only end a container or separate values.
bool TreeBuilder::addNumber() {
    Node& node = add(Node::Type::Number);
    const std::size_t end = text_.find_first_not_of("0123456789+-.eE", node.offset);
    tokenEnd_ = std::min(end, text_.size());
    node.text = text_.substr(node.offset, tokenEnd_ - node.offset);
    return true;
}

bool TreeBuilder::open(Node::Type type) {
    container_ = &add(type);
    if (++depth_ > kDeepest)
        fault_ = {"nested more than 1024 levels deep", container_->offset};
    return !fault_;
}

bool TreeBuilder::close() {
    container_ = const_cast<Node*>(container_->parent); // one of `nodes_`
    --depth_;
    tokenEnd_ = std::max(tokenEnd_, read_);
    return true;
}

bool TreeBuilder::null() {
    add(Node::Type::Null);
    return true;
}

bool TreeBuilder::boolean(bool) {
    add(Node::Type::Boolean);
    return true;
}

bool TreeBuilder::number_integer(std::int64_t) {
    return addNumber();
}

bool TreeBuilder::number_unsigned(std::uint64_t) {
    return addNumber();
}

bool TreeBuilder::number_float(double, const std::string& digits) {
    addNumber();
    if (digits.find_first_of(".eE") == std::string::npos)
        fault_ = {"a whole number of more than 64 bits", nodes_.back().offset};
    return !fault_;
}

bool TreeBuilder::string(std::string& value) {
    add(Node::Type::String).text = std::move(value);
    return true;
}

bool TreeBuilder::binary(nlohmann::json::binary_t&) {
    return false; // no JSON text holds one
}

bool TreeBuilder::start_object(std::size_t) {
    return open(Node::Type::Object);
}

bool TreeBuilder::key(std::string& name) {
    keyOffset_ = takeToken();
    key_ = std::move(name);
    return true;
}

bool TreeBuilder::end_object() {
    return close();
}

bool TreeBuilder::start_array(std::size_t) {
    return open(Node::Type::Array);
}

bool TreeBuilder::end_array() {
    return close();
}

bool TreeBuilder::parse_error(std::size_t position, const std::string&,
                              const std::exception& error) {
    const std::size_t offset = position > 0 ? position - 1 : 0; // it counts what it has read
    fault_ = {reasonIn(error.what()), std::min(offset, text_.size()), takeToken()};
    return false;
}

} // namespace vx::tools::lint

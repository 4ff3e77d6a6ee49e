#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "tools/lint/Node.h"

namespace vx::tools::lint {

/// Builds the nodes of a JSON text while nlohmann-json reads it, of which it is the SAX handler.
///
/// The reader says what it found, not where; but it takes the text byte by byte, and between two
/// tokens there is nothing but white space and punctuation: the next token begins behind those.
class TreeBuilder {
public:
    TreeBuilder(std::string_view text, std::deque<Node>& nodes) : text_(text), nodes_(nodes) {}

    /// Reads the text. With a fault the nodes are incomplete.
    std::optional<Fault> build();

    // Called by the reader; false ends the reading.
    bool null();
    bool boolean(bool value);
    bool number_integer(std::int64_t value);
    bool number_unsigned(std::uint64_t value);
    bool number_float(double value, const std::string& digits);
    bool string(std::string& value);
    bool binary(nlohmann::json::binary_t& value);
    bool start_object(std::size_t size);
    bool key(std::string& name);
    bool end_object();
    bool start_array(std::size_t size);
    bool end_array();
    bool parse_error(std::size_t position, const std::string& token, const std::exception& error);

private:
    std::size_t takeToken();
    Node& add(Node::Type type);
    bool addNumber();
    bool open(Node::Type type);
    bool close();

    std::string_view text_;
    std::deque<Node>& nodes_;
    std::size_t read_ = 0;      // bytes that the reader has taken
    std::size_t tokenEnd_ = 0;  // behind the token before
    Node* container_ = nullptr; // the innermost open one
    std::size_t depth_ = 0;
    std::string key_;
    std::size_t keyOffset_ = 0;
    std::optional<Fault> fault_;
};

} // namespace vx::tools::lint

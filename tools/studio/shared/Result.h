#pragma once

#include <string>
#include <utility>
#include <variant>

namespace vx::tools::studio {

/// Why something was not done: one line for the user to read.
struct Problem {
    std::string text;
    bool isConflict = false; ///< with what somebody else did meanwhile
};

/// What came of something: a value, or the problem that is in its way.
template <class Value>
class [[nodiscard]] Result {
public:
    Result(Value value) : outcome_(std::move(value)) {}
    Result(Problem problem) : outcome_(std::move(problem)) {}

    explicit operator bool() const { return std::holds_alternative<Value>(outcome_); }

    // Only of one that came about.
    Value& operator*() { return std::get<Value>(outcome_); }
    const Value& operator*() const { return std::get<Value>(outcome_); }
    Value* operator->() { return &std::get<Value>(outcome_); }
    const Value* operator->() const { return &std::get<Value>(outcome_); }

    // Only of one that did not.
    const Problem& problem() const { return std::get<Problem>(outcome_); }

private:
    std::variant<Value, Problem> outcome_;
};

} // namespace vx::tools::studio

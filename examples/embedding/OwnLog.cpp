#include <iostream>

#include "vxprivacy/services/core/Services.h"

namespace {

class Log : public vx::Logger {
    void log(std::string_view message, int level) override {
        if (level >= vx::kLogProblem)
            std::clog << "privacy: " << message << '\n';
    }
};

} // namespace

void runWithLog() {
    Log log;
    vx::services::Services services({.store = "consent/choices.sqlite", .logger = &log});
}

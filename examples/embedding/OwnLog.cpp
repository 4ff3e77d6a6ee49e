#include "services/core/Services.h"

#include <iostream>

namespace {

class Log : public vx::Logger {
    void log(std::string_view message, int level) override {
        if (level >= 4)
            std::clog << "privacy: " << message << '\n';
    }
};

} // namespace

void runWithLog() {
    Log log;
    vx::services::Services services({.store = "consent/choices.sqlite", .logger = &log});
}

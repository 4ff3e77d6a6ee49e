#include "tools/studio/application/ApplicationLoop.h"

#include <chrono>
#include <memory>
#include <string>

#include <unistd.h>

#include "tools/studio/application/StudioReport.h"
#include "tools/studio/application/WatchedApplication.h"
#include "tools/studio/shared/Protocol.h"
#include "tools/system/LineReader.h"
#include "tools/system/WakeUp.h"

namespace vx::tools::studio {

namespace {

constexpr std::chrono::milliseconds kTick{500}; // for what depends on the time alone

class ApplicationLoop {
public:
    void run() {
        system::LineReader input(STDIN_FILENO);
        while (!input.ended()) {
            if (wakeUp_.waitFor(STDIN_FILENO, kTick))
                input.read();
            if (application_)
                application_->poll();
            bool isReported = false;
            while (const auto line = input.next())
                isReported = take(*line);
            if (application_ && !isReported)
                application_->reportState();
        }
    }

private:
    // Reports how things stand then; false when the line is no command.
    bool take(const std::string& line) {
        const Result<Json> json = parsed(line);
        if (!json || !json->is_object())
            return false;
        const Command command = commandIn(*json);
        const Reply reply = perform(command);
        application_->reportState();
        report({{"kind", kind::kDone}, {"id", command.id}, {"reply", asJSON(reply)}});
        return true;
    }

    Reply perform(const Command& command) {
        if (application_)
            return application_->perform(command);
        application_ = std::make_unique<WatchedApplication>(launchIn(command.argument), wakeUp_);
        return application_->world();
    }

    const system::WakeUp wakeUp_;
    std::unique_ptr<WatchedApplication> application_; // from the first command on
};

} // namespace

void runApplication() {
    ApplicationLoop().run();
}

} // namespace vx::tools::studio

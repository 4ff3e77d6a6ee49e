#include "vxprivacy/services/core/Log.h"

#include <string>

#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

namespace vx::services {

namespace {

constexpr std::size_t kFileSize = 1 << 20;
constexpr std::size_t kOlderFiles = 3;

// Messages quote documents, servers and stores: none of these begins a line of its own or moves a
// terminal's cursor.
std::string inOneLine(std::string_view message) {
    std::string line;
    for (const char c : message) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n')
            line += "\\n";
        else if (byte < ' ' || byte == 0x7f)
            line += spdlog::fmt_lib::format("\\x{:02x}", byte);
        else
            line += c;
    }
    return line;
}

} // namespace

Log::Log(int level, const std::optional<std::filesystem::path>& file)
    : level_(level), logger_(std::make_shared<spdlog::logger>(
                         "vxprivacy", std::make_shared<spdlog::sinks::stderr_sink_mt>())) {
    logger_->flush_on(spdlog::level::info);
    logger_->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %n %v");
    if (!file)
        return;
    try {
        auto sink = std::make_shared<spdlog::sinks::rotating_file_sink_mt>(file->string(),
                                                                           kFileSize, kOlderFiles);
        sink->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %n %v");
        logger_->sinks().push_back(std::move(sink));
    } catch (const spdlog::spdlog_ex& problem) {
        log(std::string("No log file: ") + problem.what(), kLogProblem);
    }
}

void Log::log(std::string_view message, int level) {
    if (level >= level_)
        logger_->log(level >= kLogProblem ? spdlog::level::err : spdlog::level::info, "[{}] {}",
                     level, inOneLine(message));
}

} // namespace vx::services

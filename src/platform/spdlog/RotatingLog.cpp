#include "platform/spdlog/RotatingLog.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/ringbuffer_sink.h>
#include <spdlog/sinks/rotating_file_sink.h>

#include <filesystem>
#include <optional>

#include "platform/Files.h"
#include "platform/VisibleText.h"

namespace velmoor::rotating {
namespace {

constexpr const char* kPattern = "%Y-%m-%d %H:%M:%S.%e  %L  %v";

spdlog::level::level_enum LevelOf(LogLevel level) {
  switch (level) {
    case LogLevel::traffic:
      return spdlog::level::debug;
    case LogLevel::information:
      return spdlog::level::info;
    case LogLevel::warning:
      return spdlog::level::warn;
  }
  return spdlog::level::info;
}

// The log tells what a project holds, so nobody but its owner reads it, and it is written to no
// file that a link or a second name leads to: a throw leaves the file closed.
spdlog::file_event_handlers OwnersAlone() {
  spdlog::file_event_handlers handlers;
  handlers.before_open = [](const spdlog::filename_t& path) {
    namespace fs = std::filesystem;
    const fs::file_status status = fs::symlink_status(path);
    if (!fs::exists(status)) return;
    if (!fs::is_regular_file(status) || fs::hard_link_count(path) > 1) {
      throw FileError(path + ": it is no file of the log");
    }
  };
  handlers.after_open = [](const spdlog::filename_t& path, std::FILE* /*unused*/) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write, ignored);
  };
  return handlers;
}

}  // namespace

struct RotatingLog::Parts {
  std::shared_ptr<spdlog::sinks::ringbuffer_sink_st> recent =
      std::make_shared<spdlog::sinks::ringbuffer_sink_st>(kRecent);
  spdlog::logger logger{"velmoor", recent};
};

RotatingLog::RotatingLog(const std::string& directory, std::size_t largest)
    : parts_(std::make_unique<Parts>()) {
  spdlog::logger& logger = parts_->logger;
  try {
    std::filesystem::create_directories(directory);
    const std::string path = JoinPath(directory, "velmoor.log");
    logger.sinks().push_back(std::make_shared<spdlog::sinks::rotating_file_sink_st>(
        path, largest, kOlderFiles, false, OwnersAlone()));
    path_ = path;
  } catch (const std::exception&) {
    path_.clear();
  }
  logger.set_pattern(kPattern);
  logger.set_level(spdlog::level::info);
  // After a crash the last lines are those that matter.
  logger.flush_on(spdlog::level::debug);
  // A full disk must not write to the terminal at each entry.
  logger.set_error_handler([](const std::string&) {});
}

RotatingLog::~RotatingLog() = default;

void RotatingLog::Write(LogLevel level, std::string_view subject, std::string_view text) {
  constexpr std::size_t kColumn = 9;
  std::string entry(subject);
  if (entry.size() < kColumn) entry.resize(kColumn, ' ');
  parts_->logger.log(LevelOf(level), entry + " " + VisibleText(text));
}

bool RotatingLog::KeepsTraffic() const {
  return parts_->logger.should_log(spdlog::level::debug);
}

void RotatingLog::SetKeepsTraffic(bool keeps) {
  parts_->logger.set_level(keeps ? spdlog::level::debug : spdlog::level::info);
}

std::vector<std::string> RotatingLog::Recent() const {
  std::vector<std::string> entries = parts_->recent->last_formatted();
  for (std::string& entry : entries) {
    while (!entry.empty() && entry.back() == '\n') entry.pop_back();
  }
  return entries;
}

}  // namespace velmoor::rotating

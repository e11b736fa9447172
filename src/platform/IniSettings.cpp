#include "platform/IniSettings.h"

#include <chrono>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "platform/Bounds.h"
#include "platform/Files.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::string_view kSection = "[Velmoor]";
constexpr std::size_t kMostEntry = bounds::kSettings / 16;

// How long another program may be writing to the file.
constexpr std::chrono::milliseconds kLockLimit{2000};
constexpr std::chrono::milliseconds kLook{5};

[[noreturn]] void Refuse(const std::string& reason) {
  throw std::runtime_error("The settings cannot be written to " + reason);
}

// None where there is no file. Nothing: it is larger than this program makes it. Throws FileError.
std::optional<std::vector<std::string>> ReadLines(const Files& files, const std::string& path) {
  if (!files.Exists(path)) return std::vector<std::string>();
  if (files.SizeOf(path) > bounds::kSettings) return std::nullopt;
  std::vector<std::string> lines;
  std::istringstream text(files.ReadAll(path));
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

// The place of the name's value in the line; npos where the line is not the name's.
std::size_t ValueIn(std::string_view line, std::string_view name) {
  const std::size_t equals = line.find('=');
  const bool own = equals != std::string_view::npos && Trim(line.substr(0, equals)) == name;
  return own ? equals + 1 : std::string_view::npos;
}

// A value is one line: a line break or "\" in it is written behind a "\".
std::string Escaped(std::string_view value) {
  std::string text;
  for (const char character : value) {
    if (character == '\\') {
      text += "\\\\";
    } else if (character == '\n') {
      text += "\\n";
    } else if (character != '\r' && character != '\0') {
      text += character;
    }
  }
  return text;
}

std::string Unescaped(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool marked = text[i] == '\\' && i + 1 < text.size();
    if (marked) ++i;
    value += marked && text[i] == 'n' ? '\n' : text[i];
  }
  return value;
}

std::unique_ptr<FileLock> AwaitLock(Files& files, const std::string& path) {
  const auto deadline = std::chrono::steady_clock::now() + kLockLimit;
  for (;;) {
    std::unique_ptr<FileLock> lock = files.Lock(path);
    if (lock) return lock;
    if (std::chrono::steady_clock::now() > deadline) {
      throw FileError(path + ": another program holds it");
    }
    std::this_thread::sleep_for(kLook);
  }
}

}  // namespace

std::optional<std::string> IniSettings::Read(std::string_view name) const {
  try {
    const auto lines = ReadLines(files_, path_);
    for (const std::string& line : lines.value_or(std::vector<std::string>())) {
      const std::size_t value = ValueIn(line, name);
      if (value != std::string::npos) return Unescaped(Trim(std::string_view(line).substr(value)));
    }
  } catch (const FileError&) {
    // A store that cannot be read has no values.
  }
  return std::nullopt;
}

void IniSettings::Write(std::string_view name, std::string_view value) {
  try {
    files_.MakeDirectories(GetFileDirectory(path_));
    const std::unique_ptr<FileLock> lock = AwaitLock(files_, path_ + ".lock");
    // Whoever may read it can read the names of projects: a new one is its owner's alone, and a
    // replacement has the permissions of what it replaces.
    if (!files_.Exists(path_)) (void)files_.Begin(path_, {});
    files_.WriteDurably(path_, With(name, value));
  } catch (const FileError& error) {
    Refuse(error.what());
  }
}

std::string IniSettings::With(std::string_view name, std::string_view value) const {
  std::optional<std::vector<std::string>> read = ReadLines(files_, path_);
  const std::string entry = std::string(name) + "=" + Escaped(value);
  if (!read || entry.size() > kMostEntry) Refuse(path_ + ": they would be too large");
  std::vector<std::string> lines = std::move(*read);
  if (lines.empty()) lines.emplace_back(kSection);
  bool found = false;
  for (std::string& line : lines) {
    if (found || ValueIn(line, name) == std::string::npos) continue;
    line = entry;
    found = true;
  }
  if (!found) lines.push_back(entry);
  std::string bytes;
  for (const std::string& line : lines) bytes += line + "\n";
  return bytes;
}

}  // namespace velmoor

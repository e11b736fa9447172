#include "platform/posix/IniSettings.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "platform/Bounds.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {
namespace {

constexpr std::string_view kSection = "[Velmoor]";
constexpr std::size_t kMostEntry = bounds::kSettings / 16;

[[noreturn]] void Refuse(const std::string& path, int error = errno) {
  throw std::runtime_error("The settings cannot be written to " + path + ": " +
                           std::strerror(error));
}

// Nothing: the file is larger than this program makes it.
std::optional<std::vector<std::string>> ReadLines(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(bounds::kSettings + 1, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  if (bytes.size() > bounds::kSettings) return std::nullopt;
  std::vector<std::string> lines;
  std::istringstream text(bytes);
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

void MakeDirectory(const std::string& directory) {
  if (directory.empty() || ::mkdir(directory.c_str(), 0700) == 0 || errno == EEXIST) return;
  if (errno != ENOENT) Refuse(directory);
  MakeDirectory(GetFileDirectory(directory));
  if (::mkdir(directory.c_str(), 0700) != 0 && errno != EEXIST) Refuse(directory);
}

void WriteWhole(const std::string& path, const std::string& bytes) {
  const std::string temporary = path + ".new";
  FileDescriptor file(
      ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!file.IsValid()) Refuse(path);
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t count = ::write(file.Get(), bytes.data() + written, bytes.size() - written);
    if (count < 0 && errno != EINTR) Refuse(path);
    if (count > 0) written += static_cast<std::size_t>(count);
  }
  if (::fsync(file.Get()) != 0 || ::rename(temporary.c_str(), path.c_str()) != 0) Refuse(path);
}

}  // namespace

std::string IniSettings::DefaultPath() {
  std::string directory;
  if (const char* const configured = std::getenv("XDG_CONFIG_HOME");
      configured != nullptr && *configured == '/') {
    directory = configured;
  } else {
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') {
      const passwd* const user = ::getpwuid(::getuid());
      home = user == nullptr ? "/" : user->pw_dir;
    }
    directory = JoinPath(home, ".config");
  }
  return JoinPath(directory, "velmoor/velmoor.ini");
}

std::optional<std::string> IniSettings::Read(std::string_view name) const {
  for (const std::string& line : ReadLines(path_).value_or(std::vector<std::string>())) {
    const std::size_t value = ValueIn(line, name);
    if (value != std::string::npos) return Unescaped(Trim(std::string_view(line).substr(value)));
  }
  return std::nullopt;
}

void IniSettings::Write(std::string_view name, std::string_view value) {
  MakeDirectory(GetFileDirectory(path_));
  const FileDescriptor lock(::open((path_ + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!lock.IsValid() || ::flock(lock.Get(), LOCK_EX) != 0) Refuse(path_);

  std::optional<std::vector<std::string>> read = ReadLines(path_);
  const std::string entry = std::string(name) + "=" + Escaped(value);
  if (!read || entry.size() > kMostEntry) Refuse(path_, EFBIG);
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
  WriteWhole(path_, bytes);
}

}  // namespace velmoor::posix

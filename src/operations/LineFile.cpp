#include "operations/LineFile.h"

#include <algorithm>

#include "link/BaudRates.h"
#include "platform/Files.h"
#include "platform/KeyedText.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {
namespace {

using Kind = KeyedNode::Kind;

class Reader {
 public:
  explicit Reader(const std::string& path) : path_(path), folder_(GetFileDirectory(path)) {}

  LineFile Read(const std::string& text) {
    try {
      const KeyedNode root = world().keyedTexts->Read(text);
      if (root.Find("port") == nullptr) AddFault(1, "The line has no port");
      for (const KeyedEntry& entry : root.entries) TakeEntry(entry);
      if (line_.axes.empty()) AddFault(1, "The line has no axes: [axis.0] and so on");
    } catch (const KeyedTextError& error) {
      AddFault(error.Line(), error.what());
    }
    if (!faults_.empty()) throw LineFileError(faults_);
    std::ranges::sort(line_.axes, {}, &LineAxis::address);
    return line_;
  }

 private:
  void AddFault(int line, const std::string& words) {
    faults_ +=
        (faults_.empty() ? "" : "\n") + path_ + ":" + NumberText(line) + ": " + VisibleText(words);
  }

  void TakeEntry(const KeyedEntry& entry) {
    if (entry.key == "port") {
      line_.port = TextOf(entry);
    } else if (entry.key == "baud") {
      TakeRate(entry.value);
    } else if (entry.key == "axis" && entry.value.kind == Kind::table) {
      for (const KeyedEntry& axis : entry.value.entries) TakeAxis(axis);
    } else if (entry.key == "watch" && entry.value.kind == Kind::table) {
      line_.watch =
          ReadWatchSettings(entry.value, folder_,
                            [this](int line, const std::string& words) { AddFault(line, words); });
    } else {
      AddFault(entry.value.line, "'" + entry.key + "' is none of port, baud, axis and watch");
    }
  }

  std::string TextOf(const KeyedEntry& entry) {
    if (entry.value.kind == Kind::text && !entry.value.text.empty()) return entry.value.text;
    AddFault(entry.value.line, entry.key + " takes a text in quotes");
    return {};
  }

  void TakeRate(const KeyedNode& value) {
    const auto rate = value.kind == Kind::whole ? ParseWhole(value.text) : std::nullopt;
    const bool known = rate && std::ranges::find(kBaudRates, *rate) != kBaudRates.end();
    if (known) {
      line_.bitsPerSecond = static_cast<std::int32_t>(*rate);
    } else {
      AddFault(value.line, "baud takes a speed of the amplifier, 9600 to 38400");
    }
  }

  void TakeAxis(const KeyedEntry& entry) {
    const std::string address = UpperCase(entry.key);
    if (address.size() != 1 || !ParseHex(address) || entry.value.kind != Kind::table) {
      AddFault(entry.value.line, "'" + entry.key + "' is no axis: [axis.0] to [axis.F]");
      return;
    }
    LineAxis axis{.address = address};
    for (const KeyedEntry& each : entry.value.entries) {
      if (each.key == "name") {
        axis.name = TextOf(each);
      } else if (each.key == "project") {
        const std::string project = TextOf(each);
        axis.project = project.starts_with('/') ? project : JoinPath(folder_, project);
      } else {
        AddFault(each.value.line, "'" + each.key + "' is none of name and project");
      }
    }
    if (std::ranges::find(line_.axes, address, &LineAxis::address) != line_.axes.end()) {
      AddFault(entry.value.line, "axis " + address + " is named twice");
    }
    line_.axes.push_back(axis);
  }

  std::string path_, folder_, faults_;
  LineFile line_;
};

}  // namespace

std::string NameOfLine(const std::string& path) {
  constexpr std::string_view kEnding = ".toml";
  const std::string title = GetFileTitle(path);
  return title.ends_with(kEnding) ? DropRight(title, kEnding.size()) : title;
}

LineFile ReadLineFile(const std::string& path) {
  return Reader(path).Read(world().files->ReadAll(path));
}

void WriteLineFile(const std::string& path, const LineFile& line) {
  const std::string folder = JoinPath(GetFileDirectory(path), "");
  std::string text = "# The axes on one serial line.\nport = " + QuotedText(line.port) +
                     "\nbaud = " + NumberText(line.bitsPerSecond) + "\n";
  for (const LineAxis& axis : line.axes) {
    text += "\n[axis." + axis.address + "]\nname = " + QuotedText(axis.name) + "\n";
    if (axis.project.empty()) continue;
    const bool within = axis.project.starts_with(folder);
    text += "project = " + QuotedText(within ? axis.project.substr(folder.size()) : axis.project) +
            "\n";
  }
  world().files->WriteDurably(path, text);
}

}  // namespace velmoor

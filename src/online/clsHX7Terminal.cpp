#include "online/clsHX7Terminal.h"

#include <string_view>
#include <vector>

#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {
namespace {

bool WriteLines(const std::string& prefix, const std::string& path,
                const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return Trapped(prefix, [&] {
    world().files->WriteDurably(path, text);
    return true;
  });
}

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    const std::string_view line = Trim(text.substr(0, end));
    // An empty line would go out as a line of its own, which nothing answers.
    if (!line.empty()) lines.emplace_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

}  // namespace

clsHX7Terminal::clsHX7Terminal() : frm_(*this) {
  connections_ += frm_.Closed.Connect([this] { frm_TerminalClosed(); });
  connections_ += frm_.CommunicationDown.Connect([this] { CommunicationDown.Raise(); });
}

bool clsHX7Terminal::Show_Terminal() {
  ReadFromRegistryTerminalSettings();
  frm_.SetAppearance(appearance_);
  return frm_.Show(FormMode::modeless);
}

void clsHX7Terminal::frm_TerminalClosed() {
  appearance_ = frm_.Appearance();
  Trapped("Main.TerminalClose: ", [this] {
    WriteToRegistryTerminalSettings();
    return true;
  });
  TerminalClosed.Raise();
}

bool clsHX7Terminal::SaveLogToFile(const std::string& strFilePath) {
  return WriteLines("clsTerminal.SaveLogToFile: ", strFilePath, frm_.Log());
}

bool clsHX7Terminal::SaveScriptToFile(const std::string& strFilePath) {
  return WriteLines("clsTerminal.SaveScriptToFile: ", strFilePath, frm_.Script());
}

bool clsHX7Terminal::OpenScriptFile(const std::string& strFilePath) {
  return Trapped("clsTerminal.OpenScriptFile: ", [&] {
    frm_.SetScript(LinesOf(world().files->ReadAll(strFilePath)));
    return true;
  });
}

}  // namespace velmoor

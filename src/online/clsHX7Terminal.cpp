#include "online/clsHX7Terminal.h"

#include <vector>

#include "online/TerminalScript.h"
#include "platform/Files.h"
#include "platform/Trapped.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {
namespace {

bool WriteLines(const std::string& prefix, const std::string& path,
                const std::vector<std::string>& lines) {
  return Trapped(prefix, [&] {
    world().files->WriteDurably(path, TextOfLines(lines));
    return true;
  });
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
  // What the amplifier answered may be shown by a terminal again.
  std::vector<std::string> lines = frm_.Log();
  for (std::string& line : lines) line = VisibleText(line);
  return WriteLines("clsTerminal.SaveLogToFile: ", strFilePath, lines);
}

bool clsHX7Terminal::SaveScriptToFile(const std::string& strFilePath) {
  return WriteLines("clsTerminal.SaveScriptToFile: ", strFilePath, frm_.Script());
}

bool clsHX7Terminal::OpenScriptFile(const std::string& strFilePath) {
  return Trapped("clsTerminal.OpenScriptFile: ", [&] {
    frm_.SetScript(ScriptLines(world().files->ReadAll(strFilePath)));
    return true;
  });
}

}  // namespace velmoor

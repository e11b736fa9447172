// The project's handle on the terminal window: its appearance in the settings, its files.
#pragma once

#include <string>

#include "online/TerminalAppearance.h"
#include "online/frmTerminal.h"
#include "platform/Event.h"

namespace velmoor {

class clsHX7Terminal {
 public:
  clsHX7Terminal();

  // Opens with the appearance that the settings hold. False: it could not, of which the user was
  // told.
  bool Show_Terminal();
  void BringToFront() { frm_.BringToFront(); }
  void Unload_Terminal() { frm_.Unload(); }

  void ReadFromRegistryTerminalSettings() { appearance_ = ReadTerminalAppearance(); }
  void WriteToRegistryTerminalSettings() { WriteTerminalAppearance(appearance_); }
  [[nodiscard]] const TerminalAppearance& Appearance() const { return appearance_; }

  // A line of text for each line of the log or of the script memory. False after a failure, of
  // which the user was told.
  bool SaveLogToFile(const std::string& strFilePath);
  bool SaveScriptToFile(const std::string& strFilePath);
  // Replaces the script memory; a file that cannot be read leaves it. Lines are trimmed, empty ones
  // left out.
  bool OpenScriptFile(const std::string& strFilePath);

  Event<> TerminalClosed;
  Event<> CommunicationDown;  // the terminal lost the line

 private:
  void frm_TerminalClosed();

  TerminalAppearance appearance_;
  frmTerminal frm_;
  Connections connections_;
};

}  // namespace velmoor

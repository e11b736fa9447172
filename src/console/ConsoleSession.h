// The session of the console program: the same objects as the main window's, without windows.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "platform/Event.h"
#include "project/SessionState.h"

namespace velmoor {

class ConsoleSession final : public SessionState {
 public:
  // Puts itself in force as gMainForm until destroyed. `progress` gets a line that is rewritten
  // during transfers; null: none. Transfers stop between two rows where `ends` says so.
  explicit ConsoleSession(
      SerialPort& comm, std::ostream* progress = nullptr, bool (*ends)() = [] { return false; });
  ~ConsoleSession() override;

  [[nodiscard]] bool StopProcedure() const override {
    return SessionState::StopProcedure() || ends_();
  }

  // Builds the catalogue's working copy for `strMotorSize` watts and reads it. False after a
  // failure, of which the user was told.
  bool Start(const std::string& strMotorSize);
  // Opens the project; false after a critical message.
  bool Open(const std::string& fileName);
  [[nodiscard]] clsHX7Project& project() { return *clsProject; }

  // Goes online on COM1 at the session's axis. False after an exclamation headed by `failure`.
  bool GoOnline(const std::string& failure);
  void GoOffline();
  // Waits until the amplifier answers again after a restart, and goes offline.
  void WaitForRestart();
  [[nodiscard]] std::string ServoModel() const { return clsHelix7->ServoModel(); }

 private:
  void ShowProgress(const std::string& text);
  void EndProgress();

  std::ostream* progress_;
  bool (*ends_)();
  std::size_t progressWidth_ = 0;
  std::string lastProgress_;
  Connections connections_;
};

}  // namespace velmoor

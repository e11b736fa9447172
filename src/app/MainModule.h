// The process entry: one instance, the order of a start, and its end.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "app/frmMain.h"
#include "platform/Events.h"
#include "platform/UnhandledError.h"

namespace velmoor {

// Whether the second time lies 60 * `iSeconds` seconds behind the first, by minute and second
// alone.
[[nodiscard]] bool ElapsedNSeconds(const std::array<WallTime, 2>& dTime, std::int16_t iSeconds);

class MainModule {
 public:
  // `comm` and `instance` must outlive the object. `commandLine` is what stands behind the
  // program's name.
  MainModule(SerialPort& comm, SingleInstance& instance, std::string commandLine)
      : comm_(comm), instance_(instance), strCommandLine(std::move(commandLine)) {}
  ~MainModule();
  MainModule(const MainModule&) = delete;
  MainModule& operator=(const MainModule&) = delete;

  // Decides whether this process runs at all, and starts the session. True: the main window is up,
  // and Closed tells when it is gone. False: the process ends.
  bool Main();
  // The main window is gone.
  Event<> Closed;
  // The last resort for an error that no procedure handled: what moves is stopped, a report is
  // written, and the user chooses. The end of the program is that of its main window, questions
  // included; an error within all this is told in a box, and the program goes on.
  ErrorChoice HandleUnhandledError(const UnhandledError& error);
  // For a signal that ends the process: what moves is stopped and switched off first, and then
  // nothing stays behind that a closing would have taken away, but for work that is not saved.
  // Nothing is shown or asked, nothing is thrown, and nothing but the end of the process may
  // follow.
  void LeaveAtOnce();
  // Releases the session. Runs at the latest with the end of the object.
  void Terminate();

 private:
  bool StartNewInstance();
  void HandleExistingInstance();
  [[nodiscard]] bool CheckRequiredFiles(std::string& strErrorFile) const;
  void BuildSession();
  void OpenFirstProject();
  void MakeSafe();
  // The command line without quotes around it, as an absolute name; empty when there is none.
  [[nodiscard]] std::string CommandLineFile() const;

  SerialPort& comm_;
  bool handlesError_ = false;
  SingleInstance& instance_;
  std::string strCommandLine;
  std::string strRequiredCatalogPath;
  std::unique_ptr<frmMain> form_;
  Connections connections_;
};

}  // namespace velmoor

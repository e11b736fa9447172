// A session without a window, for the benchmarks.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "platform/Files.h"
#include "project/SessionState.h"

namespace velmoor {

class BenchSession final : public SessionState {
 public:
  explicit BenchSession(SerialPort& comm) : SessionState(comm) { gMainForm = this; }
  ~BenchSession() override { ReleaseObjects(); }
  void Start() {
    StartHelix7();
    BuildDatabase("400");
    SetDBAndTables();
    GetComboLists();
    GetAlarmDefinitions();
  }
  void Open(const std::string& path) {
    clsProject.reset();
    clsProject = std::make_unique<clsHX7Project>();
    clsProject->SetWorkingDirectory(GetFileDirectory(path));
    std::string strError;
    if (!clsProject->OpenProject(path, GetFileTitle(path), strError)) {
      throw std::runtime_error(strError);
    }
  }
  void GoOnline() {
    if (clsHelix7->GoOnline(false) != kSuccess) throw std::runtime_error("nothing answers");
    blnIsOnline = true;
  }
  clsHX7Project& project() { return *clsProject; }
};

}  // namespace velmoor

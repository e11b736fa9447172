// The window of the log: the newest entries of this session, followed as they come, and the way to
// the file, which goes further back. It changes nothing.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "layouts/frmLog.h"
#include "windows/Window.h"

namespace velmoor {

class frmLog final : public WindowOf<layouts::frmLog>, private ReadOnlyGridSource {
 protected:
  void FormLoad() override;
  void FormUnload() override { tmrLook_.reset(); }

 private:
  struct Entry {
    std::string time;
    std::string text;
    bool isWarning = false;
  };
  [[nodiscard]] static Entry Parted(const std::string& line);
  // Shows what passes the filter, and the newest of it unless the user looks at an older one.
  void Look(bool always);
  void cmdFile_Click();
  [[nodiscard]] int Rows() const override { return static_cast<int>(shown_.size()) + 1; }
  [[nodiscard]] int Columns() const override { return 2; }
  [[nodiscard]] std::string Text(int row, int column) const override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

  std::vector<std::string> lines_;  // as the log has them
  std::vector<Entry> shown_;
  std::unique_ptr<Timer> tmrLook_;  // while the window is open
};

}  // namespace velmoor

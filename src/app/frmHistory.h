// The window with the transfers between the project and its amplifiers: when, what, with which
// result, and what each has changed. It blocks while it is open; comparing a state with the project
// and sending it back are the main window's.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "layouts/frmHistory.h"
#include "operations/TransferHistory.h"
#include "project/ProjectCompare.h"
#include "windows/Window.h"

namespace velmoor {

// A state of an entry; `after`: what the transfer has brought.
struct HistoryChoice {
  const HistoryEntry* entry = nullptr;
  bool after = false;
};

class frmHistory final : public WindowOf<layouts::frmHistory>, private ReadOnlyGridSource {
 public:
  struct Actions {
    std::function<void(const HistoryChoice& choice, const std::string& path)> compare;
    // True: it was sent, and the history has an entry more.
    std::function<bool(const HistoryChoice& choice)> sendBack;
  };
  // Of that project file. Throws FileError.
  frmHistory(const std::string& project, Actions actions);

 protected:
  void FormLoad() override;

 private:
  // The lower table.
  class Changes final : public ReadOnlyGridSource {
   public:
    std::vector<ProjectDifference> values;

    [[nodiscard]] int Rows() const override { return static_cast<int>(values.size()) + 1; }
    [[nodiscard]] int Columns() const override;
    [[nodiscard]] std::string Text(int row, int column) const override;
  };

  // The upper one, the newest first.
  [[nodiscard]] int Rows() const override {
    return static_cast<int>(history_.Entries().size()) + 1;
  }
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

  [[nodiscard]] const HistoryEntry& At(int row) const;
  // Nothing in it: there is no entry.
  [[nodiscard]] HistoryChoice Chosen() const;
  [[nodiscard]] std::string PathOf(const HistoryChoice& choice) const;
  void ShowAll();
  void ShowEntry();
  void OfferState();
  void SendBack();

  std::string project_;
  Actions actions_;
  TransferHistory history_;
  Changes changes_;
};

}  // namespace velmoor

// The base of every window that edits a tool's rows in a grid: Apply, OK and Cancel, the dirty and
// the not-committed state, and the question on leaving.
//
// A window never writes the database: it raises events and its tool commits.
#pragma once

#include <optional>
#include <string>

#include "windows/Window.h"

namespace velmoor {

class GridWindow : public Window {
 public:
  // Opens the window under `caption`. Modal ones return when they have closed. False when the form
  // cannot be had, of which the user was told.
  bool Show(const std::string& caption, FormMode mode);
  // Closes without a question; what was not committed stays in the tool's rows.
  void Unload();

  // The user changed something since the last transfer.
  [[nodiscard]] bool IsDirty() const { return blnIsDirty_; }
  void SetIsDirty(bool dirty) { blnIsDirty_ = dirty; }
  // The grid holds values that were not accepted yet; enables Apply.
  [[nodiscard]] bool NotCommitted() const { return blnNotCommitted_; }
  void SetNotCommitted(bool notCommitted);

  virtual void RefreshGrid();

  // Told by a handler of ChangeAccepted that could not store: the window stays as it was, open and
  // not committed.
  void CommitFailed() { commitFailed_ = true; }

  Event<> ChangeAccepted;  // Apply or OK
  Event<> ChangeCanceled;

 protected:
  using Window::Window;

  void FormLoad() override;
  void FormActivate() override { SetApplyButton(); }
  void FormQueryUnload(bool& cancel) override;
  // What the window holds can be committed as it is; else Apply stays off, and the window says why.
  [[nodiscard]] virtual bool MayApply() const { return true; }
  // The last checks before a commit, with their words. True: it may be committed.
  virtual bool MayCommit() { return true; }

  // Accepts what the grid holds, as Apply does. False: refused, and nothing was accepted.
  bool Commit();
  // An edit changed a value.
  void MarkEdited();
  [[nodiscard]] Grid& grid() const {
    (void)form();  // a window that has closed has none
    return *grid_;
  }
  // The layouts have vsFG, cmdApply, cmdOK and cmdCancel.
  template <typename Ui>
  void Take(const Ui& ui) {
    grid_ = &ui.vsFG;
    cmdApply_ = &ui.cmdApply;
    cmdOK_ = &ui.cmdOK;
    cmdCancel_ = &ui.cmdCancel;
  }

 private:
  void cmdOK_Click();
  void SetApplyButton();

  std::string caption_;
  Grid* grid_ = nullptr;  // as the buttons, of the open form
  Button* cmdApply_ = nullptr;
  Button* cmdOK_ = nullptr;
  Button* cmdCancel_ = nullptr;
  bool blnIsDirty_ = false;
  bool blnNotCommitted_ = false;
  bool commitFailed_ = false;
  bool closingWithoutQuestion_ = false;
};

}  // namespace velmoor

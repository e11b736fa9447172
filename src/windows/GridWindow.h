// The base of every window that edits a tool's rows in a grid: Apply, OK and Cancel, the dirty and
// the not-committed state, and the question on leaving.
//
// A window never writes the database: it raises events and its tool commits.
#pragma once

#include <optional>
#include <string>

#include "windows/Window.h"

namespace velmoor {

// What a window's buttons ask of the session above it.
enum class WindowRequest { upload, download, compare, save, rehearse, tryIt };

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
  // Accepts what was not accepted yet, as Apply does. False: refused; the window stays as it was.
  bool CommitPending();
  // Ends an open edit. False: it was refused.
  bool EndEdit() { return !IsOpen() || grid().FinishEdit(); }

  // Told by a handler of ChangeAccepted that could not store: the window stays as it was, open and
  // not committed.
  void CommitFailed() { commitFailed_ = true; }

  Event<> ChangeAccepted;  // Apply or OK
  Event<> ChangeCanceled;
  Event<WindowRequest> Requested;

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
  // What the grid shows.
  [[nodiscard]] virtual const GridSource& Cells() const = 0;
  // A key in the grid. Enter goes down and Tab to the next cell that can be edited, with Shift
  // back, behind the end of an open edit. Ctrl+S saves the project from a window that blocks the
  // menu too.
  virtual void OnKey(KeyEvent& key);
  virtual void cmdDownload_Click() { Requested.Raise(WindowRequest::download); }
  [[nodiscard]] Grid& grid() const {
    (void)form();  // a window that has closed has none
    return *grid_;
  }
  // The layouts have vsFG, cmdApply, cmdOK and cmdCancel, and those of tools that are transferred
  // by themselves cmdUpload and cmdDownload.
  template <typename Ui>
  void Take(const Ui& ui) {
    grid_ = &ui.vsFG;
    cmdApply_ = &ui.cmdApply;
    cmdOK_ = &ui.cmdOK;
    cmdCancel_ = &ui.cmdCancel;
    if constexpr (requires { ui.cmdUpload; }) {
      connections_ +=
          ui.cmdUpload.Click.Connect([this] { Requested.Raise(WindowRequest::upload); });
      connections_ += ui.cmdDownload.Click.Connect([this] { cmdDownload_Click(); });
    }
  }

 private:
  void cmdOK_Click();
  void SetApplyButton();
  void GoTo(int row, int column);
  void GoDown(int by);
  void GoOn(int by);

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

// The base of every window that edits a tool's rows in a grid: Apply, OK and Cancel, the dirty and
// the not-committed state, and the question on leaving.
//
// Owned by its tool for as long as the tool lives; the form exists only while the window is open. A
// window never writes the database: it raises events and its tool commits.
#pragma once

#include <memory>
#include <string>

#include "platform/Event.h"
#include "platform/Form.h"

namespace velmoor {

class GridWindow {
 public:
  virtual ~GridWindow();
  GridWindow(const GridWindow&) = delete;
  GridWindow& operator=(const GridWindow&) = delete;

  // Opens the window under `caption`. Modal ones return when they have closed. False when the form
  // cannot be had, of which the user was told.
  bool Show(const std::string& caption, FormMode mode);
  // Closes without a question; what was not committed stays in the tool's rows.
  void Unload();
  void BringToFront();
  [[nodiscard]] bool IsOpen() const { return form_ != nullptr; }
  // It takes the keyboard.
  [[nodiscard]] bool IsActive() const;

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
  Event<> Closed;

 protected:
  // `formName` is the layout's, with the controls vsFG, cmdApply, cmdOK and cmdCancel.
  explicit GridWindow(std::string formName) : formName_(std::move(formName)) {}

  // Binds the form's other controls; runs once each time the window opens.
  virtual void FormLoad() = 0;
  // The window came to the front.
  virtual void FormActivate() {}
  // What the window holds can be committed as it is; else Apply stays off, and the window says why.
  [[nodiscard]] virtual bool MayApply() const { return true; }
  // The last checks before a commit, with their words. True: it may be committed.
  virtual bool MayCommit() { return true; }

  // Accepts what the grid holds, as Apply does. False: refused, and nothing was accepted.
  bool Commit();
  // An edit changed a value.
  void MarkEdited();
  [[nodiscard]] Form& form() { return *form_; }
  [[nodiscard]] Grid& grid() { return form_->grid("vsFG"); }
  Connections connections_;  // of the open form; cleared as it closes

 private:
  void cmdApply_Click();
  void cmdOK_Click();
  void OnQueryUnload(bool& cancel);
  void OnUnloaded();
  void SetApplyButton();

  std::string formName_;
  std::unique_ptr<Form> form_;
  bool blnIsDirty_ = false;
  bool blnNotCommitted_ = false;
  bool commitFailed_ = false;
  bool closingWithoutQuestion_ = false;
};

}  // namespace velmoor

// The parameter tool pattern: what the six parameter tools share.
//
// A tool is a list of rows over the project's parameter store, with its rules, its window and its
// way to the amplifier. It holds no value but the edits of its window that were not applied yet. A
// concrete tool is its choice of rows and its few overrides.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "link/ResultCode.h"
#include "platform/Database.h"
#include "platform/Event.h"
#include "platform/Form.h"
#include "project/data/ParameterStore.h"
#include "session/Project.h"
#include "session/Session.h"
#include "tools/Column.h"

namespace velmoor {

class ParameterGridWindow;
struct ParameterRow;

class ParameterToolBase : public SisterTool {
 public:
  // ---- rows, from 1, in the catalogue's order

  // Chooses the rows anew, after the store was opened.
  void TakeRows();
  [[nodiscard]] std::int16_t RowsInArray() const;
  // The row of a parameter, or 0.
  [[nodiscard]] int FindRow(std::string_view strPn) const;
  [[nodiscard]] const Parameter& ParameterOf(int row) const;
  // What the row shows: an edit where there is one, else what the project holds.
  [[nodiscard]] virtual std::string Text(int row, Column column) const;
  // The row's value was edited, or has still to go to the amplifier.
  [[nodiscard]] bool IsMarked(int row) const;
  // Everything that checks, tips and reports need to know of a row.
  [[nodiscard]] virtual ParameterRow Describe(int row) const;
  // The initial value of the amplifier, as the row would show it; empty where the catalogue has
  // none.
  [[nodiscard]] std::string DefaultText(int row) const;
  [[nodiscard]] bool IsDefault(int row) const;
  // What the amplifier held when it was asked last, as the row would show it; nothing where that is
  // what the project holds, or it was not asked.
  [[nodiscard]] std::optional<std::string> OtherInAmplifier(int row) const;
  // The catalogue's sentence or two about the row's parameter.
  [[nodiscard]] const std::string& Help(int row) const;

  // The tool has changed something that the amplifier does not have.
  [[nodiscard]] virtual bool IsDirty() const { return store_.IsMarkedBy(tool_); }
  // Marked rows, whichever tool has marked them.
  [[nodiscard]] std::int16_t GetNumberOfNewRows() const;

  // ---- edits that were not applied yet

  // Takes a checked text as the row's value. The text that the project shows is no edit.
  void EditValue(int row, const std::string& text);
  void TakeEdit(const std::string& strPn, const std::string& text) override;
  [[nodiscard]] std::optional<std::string> EditOf(const std::string& strPn) const override;
  // The parameters whose edit a limit has replaced when the units changed; asked once.
  [[nodiscard]] std::vector<std::string> TakeLimitedEdits() {
    return std::exchange(limitedEdits_, {});
  }
  [[nodiscard]] bool HoldsEdits() const { return !edits_.empty(); }
  // Nothing for a row that is not edited.
  [[nodiscard]] std::optional<std::string> EditOf(int row) const;
  // Puts back an earlier state of a row's edit.
  void PutBackEdit(int row, const std::optional<std::string>& edit);
  // Stores what was edited, all or nothing, as Apply does. False: nothing was stored, of which the
  // user was told, and the edits stay.
  bool AcceptEdits();

  // ---- the tool's window
  [[nodiscard]] ParameterGridWindow& Window() { return *frm_; }
  // Closes the window without a question.
  void UnloadWindow();

  // ---- the amplifier

  // Reads every row into what the store holds apart until a commit.
  bool Upload();
  // Sends every row that the tool sends at all.
  virtual bool DownloadWhole() { return DownloadRows(true); }

  // ---- events
  Event<> Applied;                                // accepted changes were saved
  Event<> Closed;                                 // the window closed
  Event<const std::string&> Status;               // "Download Complete" and the like
  Event<std::int16_t, std::int16_t> Downloading;  // count, total; before each parameter sent
  Event<std::int16_t, std::int16_t> Uploading;    // row, total; before each parameter read
  Event<> EditStateChanged;                       // what the Edit menu may offer has changed

 protected:
  // `className` heads the boxes about trapped errors: "clsFlexibleIO". The store must outlive the
  // tool.
  ParameterToolBase(ParameterStore& store, Tool tool, std::string className);

  // Follows the window's events from now on. The window is a member of the tool.
  void AttachWindow(ParameterGridWindow& frm);
  bool ShowWindow(const std::string& caption, FormMode mode);
  // Shows the edits of the end switches that a sister's window holds.
  void TakeSharedEdits(const SisterTool& sister);
  void RefreshWindow();
  virtual bool frm_PropertiesChangeAccepted();
  void frm_PropertiesChangeCanceled();

  // Whether the tool has a row for that parameter.
  [[nodiscard]] virtual bool Takes(const ParameterDefinition& definition) const = 0;

  // ---- transfer hooks

  // With `blnOverRide`, every row goes that the tool sends at all; else those that are marked.
  bool DownloadRows(bool blnOverRide);
  [[nodiscard]] virtual std::string ValueToSend(const std::string& /*strPn*/,
                                                const std::string& controllerValue) const {
    return controllerValue;
  }
  virtual void BeforeSend(const std::string& /*strPn*/, const std::string& /*value*/) {}
  virtual void SendFailed(const std::string& /*strPn*/) {}

  [[nodiscard]] std::string Prefix(std::string_view procedure) const;
  [[nodiscard]] ParameterStore& Store() { return store_; }
  [[nodiscard]] const ParameterStore& Store() const { return store_; }

 private:
  struct Transfer;
  void OnStoreChanged();
  void CarryEdits();
  bool UploadRow(int row);
  bool DownloadRow(Transfer& transfer, int row);
  bool SendRow(Transfer& transfer, const Parameter& parameter);

  ParameterStore& store_;
  Tool tool_;
  std::string className_;
  std::vector<int> rows_;             // places in the store, in its order
  std::map<int, std::string> edits_;  // by row
  Units editUnits_;                   // of the edits
  std::vector<std::string> limitedEdits_;
  ParameterGridWindow* frm_ = nullptr;
  Connections connections_;
};

// "Pn803" is asked for as "803" on the wire.
[[nodiscard]] std::string WireNumber(std::string_view strPn);
// Cuts a heading at its units: "Speed (mm/sec)" to "Speed".
void TrimCurrentUnits(std::string& strText);

}  // namespace velmoor

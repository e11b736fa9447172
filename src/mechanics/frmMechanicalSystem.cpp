#include "mechanics/frmMechanicalSystem.h"

#include <algorithm>
#include <array>

#include "link/clsHX7Helix7.h"
#include "mechanics/RescalePreview.h"
#include "mechanics/SystemSchematic.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "platform/World.h"
#include "project/data/MachineUnits.h"
#include "session/Session.h"

namespace velmoor {
namespace {

enum GridColumn { parameter = 0, description, value, unit, columns };

// Halves, checksum and packed digits are the amplifier's form of what other rows show.
bool IsShown(std::string_view name) {
  static constexpr std::array<std::string_view, 7> kHidden{"Pn829", "Pn82A",   "Pn82E",  "Pn82F",
                                                           "Pn830", "Pn82E.2", "Pn82E.3"};
  return std::find(kHidden.begin(), kHidden.end(), name) == kHidden.end();
}

}  // namespace

frmMechanicalSystem::frmMechanicalSystem(const ParameterStore& store) : store_(store) {
  for (int row = 1; row <= MachineEdit::Rows(); ++row) {
    if (IsShown(MachineEdit::NameOf(row))) shown_.push_back(row);
  }
  Restart();
}

void frmMechanicalSystem::Restart() {
  edit_ = std::make_unique<MachineEdit>(store_);
}

void frmMechanicalSystem::FormLoad() {
  GridWindow::FormLoad();
  Restart();
  std::vector<std::string> systems, encoders;
  for (std::int32_t index = 0; index < 5; ++index) {
    systems.push_back(MechanicalSystemFromIndex(index));
  }
  for (std::int32_t index = 0; index < 3; ++index) {
    encoders.push_back(NumberText(EncoderCountFromIndex(index)));
  }
  ui().cmbSystem.SetItems(systems);
  ui().cmbEncoder.SetItems(encoders);
  ui().chkEGRCommitted.SetEnabled(false);
  ui().cmbEncoder.SetEnabled(false);
  grid().Bind(this);
  results_.Take(edit_->Figures(), edit_->Description());
  ui().vsResults.Bind(&results_);
  ui().vsResults.SetRowsInSight(results_.Rows() - 1);
  ui().vsResults.SetColumnShare(0);
  connections_ += grid().ValidateEdit.Connect([this](GridEdit& edit) { vsFG_ValidateEdit(edit); });
  connections_ += grid().AfterEdit.Connect([this](int, int) { ShowEdit(); });
  connections_ +=
      grid().Tip.Connect([this](int row, int, std::string& tip) { vsFG_Tip(row, tip); });
  connections_ += ui().cmbSystem.Click.Connect([this] { cmbSystem_Click(); });
  connections_ += ui().cmbEncoder.Click.Connect([this] { cmbEncoder_Click(); });
  connections_ += ui().cmdGetEncoder.Click.Connect([this] { cmdGetEncoder_Click(); });
  // The encoder is what the motor has: changing it by hand takes a step of its own.
  connections_ += ui().cmdEncoder.Click.Connect([this] { ui().cmbEncoder.SetEnabled(true); });
  ShowEverything();
}

// ---- the grid

int frmMechanicalSystem::Rows() const {
  return static_cast<int>(shown_.size()) + 1;
}

int frmMechanicalSystem::Columns() const {
  return columns;
}

std::string frmMechanicalSystem::NameAt(int row) const {
  return std::string(MachineEdit::NameOf(shown_.at(static_cast<std::size_t>(row) - 1)));
}

std::string frmMechanicalSystem::Text(int row, int column) const {
  static const char* const kHeadings[] = {"Parameter", "Description", "Value", "Unit"};
  if (row == 0) return kHeadings[column];
  const int at = shown_.at(static_cast<std::size_t>(row) - 1);
  const Column cells[] = {Column::name, Column::description, Column::value, Column::unit};
  return edit_->Text(at, cells[column]);
}

// The edit has taken the value while it was checked.
void frmMechanicalSystem::SetText(int /*row*/, int /*column*/, const std::string& /*text*/) {}

CellTraits frmMechanicalSystem::Traits(int row, int column) const {
  CellTraits traits;
  if (row == 0) return traits;
  const std::string name = NameAt(row);
  if (edit_->IsMarked(shown_.at(static_cast<std::size_t>(row) - 1))) {
    traits.bold = true;
    traits.mark = CellMark::stripe;
  }
  traits.locked = column == value && (name == "Pn202" || name == "Pn203");
  traits.editable = column == value && !traits.locked;
  if (traits.editable && name == "Pn82E.1") SetComboList(traits, "seconds|minutes");
  if (traits.editable && name == "Pn82E.0") SetComboList(traits, "cm|mm|inch|ft|deg|rad");
  return traits;
}

void frmMechanicalSystem::vsFG_ValidateEdit(GridEdit& edit) {
  const bool stands = Trapped("frmMechanicalSystem.vsFG_ValidateEdit: ", [&] {
    if (!TakeEdit(NameAt(edit.row), edit.text)) return false;
    edit.text = Text(edit.row, value);
    return true;
  });
  edit.cancel = !stands;
}

bool frmMechanicalSystem::TakeEdit(const std::string& name, const std::string& text) {
  const MachineCheck check = edit_->SetValue(name, text);
  switch (check.kind) {
    case MachineCheck::Kind::accepted:
      return true;
    case MachineCheck::Kind::restore:
      ShowExclamation(check.words);
      return false;
    case MachineCheck::Kind::ask:
      if (!AskYesNo(check.words)) {
        // Nothing is accepted; the user goes on in the same cell.
        world().events->Post([this, alive = std::weak_ptr<int>(alive_)] {
          if (!alive.expired() && IsOpen()) grid().BeginEdit();
        });
      }
      return false;
    case MachineCheck::Kind::whole:
      // Others may be typed before the machine is one again: Apply waits for that.
      if (!AskYesNo(check.words)) return true;
      edit_->TakeBack();
      return false;
  }
  return false;
}

void frmMechanicalSystem::ShowEdit() {
  const std::string corrected = edit_->NewlyCorrected();
  SetNotCommitted(edit_->IsDirty());
  ShowEverything();
  if (!corrected.empty()) ShowExclamation(corrected);
}

bool frmMechanicalSystem::MayApply() const {
  return edit_->Figures().valid;
}

void frmMechanicalSystem::vsFG_Tip(int row, std::string& tip) const {
  if (row < 1) return;
  const int at = shown_.at(static_cast<std::size_t>(row) - 1);
  const std::string name = NameAt(row);
  const std::string limits = ": Minimum value is " + edit_->MinimumText(at) +
                             "; Maximum value is " + edit_->MaximumText(at);
  if (name == "Pn82B") {
    tip = "N1 - Gear Ratio Output Rev." + limits;
  } else if (name == "Pn82C") {
    tip = "N2 - Gear Ratio Input Rev." + limits;
  } else if (name == "Pn82E.1") {
    tip = "Time Base: Choose between Seconds or Minutes";
  } else if (name == "Pn82E.0") {
    tip = Text(row, description);
  } else {
    tip = Text(row, description) + limits;
  }
}

// ---- choices

void frmMechanicalSystem::AfterChoice(const MachineCheck& check) {
  if (!check.Accepted()) ShowExclamation(check.words);
  ShowEdit();
}

void frmMechanicalSystem::cmbSystem_Click() {
  const int index = ui().cmbSystem.ListIndex();
  if (index >= 0) AfterChoice(edit_->SetSystem(index));
}

void frmMechanicalSystem::cmbEncoder_Click() {
  const int index = ui().cmbEncoder.ListIndex();
  if (index >= 0) AfterChoice(edit_->SetEncoder(index));
}

void frmMechanicalSystem::cmdGetEncoder_Click() {
  std::int32_t count = 0;
  if (gMainForm->Helix7()->GetEncoderResolution(count) != kSuccess) {
    ShowExclamation("Error reading resolution from encoder!");
    return;
  }
  const std::int32_t index = EncoderIndexOf(count);
  if (index < 0) {
    ShowExclamation("The encoder has " + NumberText(count) +
                    " lines, which the list does not hold.");
    return;
  }
  AfterChoice(edit_->SetEncoder(index));
}

// ---- commit

bool frmMechanicalSystem::MayCommit() {
  bool may = false;
  const bool done = Trapped("Error committing data!\r", [&] {
    const MachineFigures figures = edit_->Figures();
    if (edit_->IsDirty() && !figures.valid) {
      ShowExclamation(figures.reason);
      return true;
    }
    const std::string question = edit_->CommitQuestion();
    may = question.empty() || AskOkCancel(question);
    if (may) may = RescalePreview::AskFor(edit_->Wanted());
    if (!may) {
      ShowInformation("Commit data change has been canceled.");
      return true;
    }
    const std::string information = edit_->CommitInformation();
    if (!information.empty()) ShowInformation(information);
    return true;
  });
  return done && may;
}

void frmMechanicalSystem::Committed() {
  Restart();
  if (IsOpen()) ShowEverything();
}

void frmMechanicalSystem::StoreChanged() {
  if (IsOpen()) ShowEverything();
}

// ---- what the user sees

void frmMechanicalSystem::ShowEverything() {
  ui().cmbSystem.SetListIndex(edit_->Description().machine.system);
  SetEncoderComboList();
  ui().chkEGRCommitted.SetValue(!edit_->EGRDirty());
  grid().Refresh();
  ShowFigures();
  ShowSchematic();
}

void frmMechanicalSystem::SetEncoderComboList() {
  ui().cmbEncoder.SetListIndex(EncoderIndexOf(edit_->Description().machine.encoderCount));
}

void frmMechanicalSystem::ShowFigures() {
  const MachineFigures figures = edit_->Figures();
  results_.Take(figures, edit_->Description());
  ui().vsResults.Refresh();
  ui().lblFigures.SetText(figures.reason);
  ui().lblFigures.SetTone(Tone::alarm);
}

void frmMechanicalSystem::ShowSchematic() {
  const MachineDescription description = edit_->Description();
  const Machine& machine = description.machine;
  ui().picSystem.SetShapes(
      kSchematicWidth, kSchematicHeight,
      SystemSchematic(machine.system,
                      {"N1 = " + NumberText(machine.n1), "N2 = " + NumberText(machine.n2),
                       NumberText(machine.encoderCount) + " lines",
                       SystemMeasureDescription(machine.system) + " = " + edit_->Value("Pn82F.0") +
                           " " + description.distanceUnits}));
}

}  // namespace velmoor

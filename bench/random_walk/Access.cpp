#include "random_walk/Access.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/data/Schema.h"

namespace velmoor::walk {
namespace {

constexpr const char* kPreview = "frmRescalePreview";
constexpr const char* kComparison = "frmCompare";

bool IsExpected(const std::string& failure) {
  return failure.find(std::string(kPreview) + " was not shown") != std::string::npos ||
         failure.find(std::string(kComparison) + " was not shown") != std::string::npos;
}

}  // namespace

const WindowKind& KindNamed(std::string_view word) {
  for (const WindowKind& kind : kWindows) {
    if (kind.word == word) return kind;
  }
  throw std::logic_error("no window is named " + std::string(word));
}

int NameColumn(Look look) {
  return look == Look::parameters ? 1 : 0;
}

int ValueColumn(Look look) {
  return look == Look::parameters ? 3 : look == Look::machine ? 2 : 1;
}

std::unique_ptr<Database> BreakingDatabases::Open(const std::string& path,
                                                  std::string_view password,
                                                  DatabaseAccess access) {
  if (access == DatabaseAccess::readWrite && countdown_ > 0 && --countdown_ == 0) {
    broke = true;
    throw DatabaseError(DatabaseError::Kind::full, "The disk is full");
  }
  return real_.Open(path, password, access);
}

Access::Access(std::string folder)
    : folder_(std::move(folder)), wiring_(campaign::WireInProcess()) {
  program_ = std::make_unique<campaign::Program>(wiring_->Port(), folder_);
  World& adapters = program_->Desktop().world;
  databases_ = std::make_unique<BreakingDatabases>(*adapters.databases);
  adapters.databases = databases_.get();
  ReadLimits();
}

// The program goes while its databases are still there.
Access::~Access() {
  program_.reset();
}

void Access::ReadLimits() {
  using schema::Definition;
  const auto database = OpenForReading(gMainForm->THDatabasePath());
  const auto records = database->OpenTable(gMainForm->ParametersTable());
  for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
    const std::string pn = records->Text(Definition::kUserConstant);
    // Lists and digits have limits of another kind.
    const std::string list = records->Text(Definition::kDecDataId);
    const std::string digits = records->Text(Definition::kNibbleDataId);
    const bool plain = (list.empty() || list == "0") && (digits.empty() || digits == "0");
    if (!plain) continue;
    limits_[pn] = {std::atol(records->Text(Definition::kMin).c_str()),
                   std::atol(records->Text(Definition::kMax).c_str())};
  }
}

// ---- as the user

HeadlessForm* Access::Find(const WindowKind& kind) const {
  for (Form* const form : program_->Desktop().forms.Shown()) {
    if (form->Name() != kind.form || !form->Caption().starts_with(kind.caption)) continue;
    return dynamic_cast<HeadlessForm*>(form);
  }
  return nullptr;
}

const WindowKind* Access::Blocking() const {
  for (const WindowKind& kind : kWindows) {
    if (kind.modal && Find(kind) != nullptr) return &kind;
  }
  return nullptr;
}

bool Access::Choose(const std::string& command) {
  headless::HeadlessForms& forms = program_->Desktop().forms;
  headless::HeadlessMainWindow& window = forms.Main();
  if (forms.InputBlocked() || !window.command(command).Enabled() ||
      !window.command(command).Visible()) {
    return false;
  }
  window.Choose(command);
  return true;
}

int Access::RowOf(const WindowKind& kind, HeadlessForm& form, const std::string& row) {
  const HeadlessGrid& grid = form.grid("vsFG");
  if (grid.Source() == nullptr) return 0;
  if (kind.look == Look::table) {
    const int number = std::atoi(row.c_str());
    return number < grid.Source()->Rows() ? number : 0;
  }
  for (int at = 1; at < grid.Source()->Rows(); ++at) {
    if (grid.Source()->Text(at, NameColumn(kind.look)) == row) return grid.RowHidden(at) ? 0 : at;
  }
  return 0;
}

std::string Access::TextAt(HeadlessForm& form, int row, int column) {
  return form.grid("vsFG").Source()->Text(row, column);
}

std::map<std::string, std::string> Access::Cells(const WindowKind& kind, HeadlessForm& form) {
  std::map<std::string, std::string> cells;
  const GridSource& source = *form.grid("vsFG").Source();
  for (int row = 1; row < source.Rows(); ++row) {
    for (int column = ValueColumn(kind.look); column < source.Columns(); ++column) {
      if (kind.look != Look::table && column != ValueColumn(kind.look)) continue;
      cells[std::to_string(row) + " " + std::to_string(column)] = source.Text(row, column);
    }
  }
  if (kind.word == "tuning") {
    cells["notch"] = form.checkBox("chkNotchFilter").Value() ? "on" : "off";
    // The box gives its number the plain form when it is left.
    const std::string typed = form.textBox("txtNotchFilterFrequency").Text();
    const auto number = ParseWhole(typed);
    cells["frequency"] = number ? NumberText(*number) : typed;
  }
  if (kind.look == Look::machine) {
    cells["system"] = form.comboBox("cmbSystem").Text();
    cells["encoder"] = form.comboBox("cmbEncoder").Text();
  }
  return cells;
}

bool Access::CanApply(HeadlessForm& form) {
  return form.button("cmdApply").Enabled();
}

bool Access::Undo(const WindowKind& kind, bool redo) {
  HeadlessForm* const form = Find(kind);
  if (form == nullptr) return false;
  if (kind.modal) {
    form->PressKey("vsFG", {.code = redo ? 'Y' : 'Z', .ctrl = true});
    return true;
  }
  return Choose(redo ? "mnuEditRedo" : "mnuEditUndo");
}

void Access::PutOnClipboard(const std::string& text) {
  program_->Desktop().clipboard.SetText(text);
}

void Access::NextFile(const std::string& path) {
  program_->Desktop().dialogs.answers.emplace_back(path);
}

// ---- what the user is told

void Access::Begin(bool refuses) {
  End();
  program_->user.texts.clear();
  program_->user.failures = 0;
  program_->user.refuses = [refuses](const std::string& text) {
    // The walk knows every change of the machine by its own steps.
    return refuses || text.find("communications manually") != std::string::npos ||
           text.find("The connected motor is not") != std::string::npos;
  };
  preview.clear();
  comparisonShown = false;
  Within(kPreview, [this, refuses](HeadlessForm& form) {
    const GridSource& source = *form.grid("vsFG").Source();
    for (int row = 1; row < source.Rows(); ++row) {
      preview.push_back(
          {source.Text(row, 0), source.Text(row, 1), source.Text(row, 2), source.Text(row, 4)});
    }
    form.Press(refuses ? "cmdCancel" : "cmdOK");
  });
  Within(kComparison, [this](HeadlessForm& form) {
    comparisonShown = true;
    form.Press("cmdCancel");
  });
}

void Access::Refuse(const std::string& part) {
  const auto before = program_->user.refuses;
  program_->user.refuses = [before, part](const std::string& text) {
    return before(text) || text.find(part) != std::string::npos;
  };
}

void Access::End() {
  program_->Desktop().forms.Verify();
  std::erase_if(program_->unforeseen, IsExpected);
}

std::string Access::BoxesText() const {
  std::string all;
  for (const std::string& text : Boxes()) all += " [" + text + "]";
  return all;
}

std::vector<std::string> Access::TakeUnforeseen() {
  return std::exchange(program_->unforeseen, {});
}

void Access::Within(const char* form, headless::HeadlessForms::Script script) {
  program_->Desktop().forms.OnShow(form, std::move(script));
}

void Access::PressStop() {
  headless::HeadlessForms& forms = program_->Desktop().forms;
  if (forms.IsOpen("frmDialogStop")) forms.Get("frmDialogStop").Press("cmdStop");
}

}  // namespace velmoor::walk

#include "random_walk/Examiner.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>

#include "random_walk/MachineOracle.h"

namespace velmoor::walk {
namespace {

constexpr long kMost = 99999999;

bool IsParameter(const FileRow& row) {
  return row.Name().starts_with("PRM");
}
bool IsStep(const FileRow& row) {
  return row.Name().starts_with("POST");
}
bool IsZone(const FileRow& row) {
  return row.Name().starts_with("ZONENT");
}

std::string Quoted(const std::string& text) {
  return "'" + text + "'";
}

}  // namespace

Records ReadRecords(const std::string& path) {
  Records records;
  for (FileRow& row : campaign::ReadRows(path)) {
    const std::string name = row.Name();
    records.emplace(name, std::move(row));
  }
  return records;
}

std::string RecordName(const std::string& pn) {
  return "PRM" + pn.substr(2);
}

HeldMachine MachineIn(const Records& records) {
  const auto value = [&records](const char* name) { return records.at(name).values[0]; };
  const std::string selections = value("PRM82E");
  const auto digit = [&selections](std::size_t at) { return selections.at(at) - '0'; };
  HeldMachine machine;
  machine.resolution = std::atoi(value("PRM82D").c_str());
  machine.system = digit(1);
  machine.encoder = kEncoders.at(static_cast<std::size_t>(digit(0)));
  machine.time = digit(2) == 1 ? "minutes" : "seconds";
  machine.units = kUnits.at(static_cast<std::size_t>(digit(3)));
  const std::string bits = value("PRM82F") + value("PRM830");
  machine.measure =
      std::bit_cast<float>(static_cast<std::uint32_t>(std::strtoull(bits.c_str(), nullptr, 10)));
  return machine;
}

// ---- the records in themselves

void Examiner::CheckLimits(const FileRow& row, std::size_t field, long low, long high) {
  const auto count = Number(row.values[field]);
  if (!count || *count < low || *count > high) {
    Blame("limits", row.questions[field] + " is " + Quoted(row.values[field]) + ", shown as " +
                        Quoted(row.shown[field]) + "; its counts go from " + std::to_string(low) +
                        " to " + std::to_string(high));
  }
}

void Examiner::CheckUnits(const FileRow& row, std::size_t field, Kind kind,
                          const HeldMachine& machine) {
  std::string shown = row.shown[field];
  std::string value = row.values[field];
  if (field == 0 && IsStep(row) && shown.size() > 2 && (shown[0] == 'A' || shown[0] == 'I')) {
    if (value.substr(0, 2) != shown.substr(0, 2)) {
      Blame("forms", row.Name() + " shows " + Quoted(shown) + " and sends " + Quoted(value));
    }
    shown.erase(0, 2);
    value.erase(0, std::min<std::size_t>(2, value.size()));
  }
  if (!Number(shown)) {
    if (shown != value) {
      Blame("forms",
            row.questions[field] + " shows " + Quoted(shown) + " and sends " + Quoted(value));
    }
    return;
  }
  if (!Means(shown, machine.Factor(kind), value)) {
    Blame("forms", row.questions[field] + " shows " + Quoted(shown) + " and is " + Quoted(value) +
                       " counts at resolution " + std::to_string(machine.resolution) + ", " +
                       machine.time);
  }
  const auto was = before_->find(row.Name());
  const bool fresh = was == before_->end() || was->second.shown[field] != row.shown[field];
  if (fresh && PlacesOf(shown) != machine.resolution) {
    Blame("places", row.questions[field] + " shows " + Quoted(shown) + " at resolution " +
                        std::to_string(machine.resolution));
  }
}

void Examiner::CheckParameter(const FileRow& row, const HeldMachine& machine) {
  const std::string pn = "Pn" + row.Name().substr(3);
  const Kind kind = KindOf(pn);
  if (kind != Kind::plain) CheckUnits(row, 0, kind, machine);
  const auto limits = access_.Limits().find(pn);
  // Halves of longer numbers are no numbers of their own.
  const bool half = pn == "Pn829" || pn == "Pn82A" || pn == "Pn82F" || pn == "Pn830";
  if (limits == access_.Limits().end() || half) return;
  CheckLimits(row, 0, limits->second.low, limits->second.high);
  if (row.values[0] != std::to_string(std::atol(row.values[0].c_str()))) {
    Blame("forms", row.Name() + " sends the text " + Quoted(row.values[0]));
  }
}

void Examiner::CheckStep(const FileRow& row, const HeldMachine& machine) {
  const bool blank = row.shown[0].empty();
  for (const std::string& each : row.shown) {
    if (each.empty() != blank) return Blame("forms", row.Name() + " is half filled");
  }
  if (blank) return;
  CheckUnits(row, 0, Kind::distance, machine);
  CheckUnits(row, 1, Kind::speed, machine);
  CheckUnits(row, 2, Kind::distance, machine);
  CheckUnits(row, 3, Kind::speed, machine);
  CheckLimits(row, 1, 0, kMost);
  if (row.shown[2] != "-") CheckLimits(row, 2, -kMost, kMost);
  CheckLimits(row, 3, 0, kMost);
}

void Examiner::Forms(const Records& before, const Records& records) {
  before_ = &before;
  const HeldMachine machine = MachineIn(records);
  for (const auto& [name, row] : records) {
    if (row.mark != "0" && row.mark != "1") Blame("forms", name + " has the mark " + row.mark);
    if (IsParameter(row)) {
      CheckParameter(row, machine);
    } else if (IsStep(row)) {
      CheckStep(row, machine);
    } else {
      const Kind kind = IsZone(row) ? Kind::distance : Kind::speed;
      for (std::size_t field = 0; field < row.shown.size(); ++field) {
        if (row.shown[field].empty() && row.values[field].empty()) continue;
        CheckUnits(row, field, kind, machine);
        CheckLimits(row, field, IsZone(row) ? -kMost : 0, kMost);
      }
    }
  }
}

// ---- the windows

void Examiner::CheckMachineWindow(HeadlessForm& form, const Records& records) {
  const HeldMachine machine = MachineIn(records);
  const auto differs = [this](const std::string& what, const std::string& shown,
                              const std::string& file) {
    if (shown != file) {
      Blame("window", "machine, " + what + ": the window shows " + Quoted(shown) +
                          ", the file has " + Quoted(file));
    }
  };
  differs("system", form.comboBox("cmbSystem").Text(), SystemName(machine.system));
  differs("encoder", form.comboBox("cmbEncoder").Text(), machine.encoder);
  const GridSource& source = *form.grid("vsFG").Source();
  for (int row = 1; row < source.Rows(); ++row) {
    const std::string pn = source.Text(row, NameColumn(Look::machine));
    const std::string shown = source.Text(row, ValueColumn(Look::machine));
    const auto record = records.find(RecordName(pn));
    if (pn == "Pn82E.0") differs(pn, shown, machine.units);
    if (pn == "Pn82E.1") differs(pn, shown, machine.time);
    if (pn == "Pn82F.0" && static_cast<float>(std::atof(shown.c_str())) != machine.measure) {
      differs(pn, shown, std::to_string(machine.measure));
    }
    if (record != records.end()) differs(pn, shown, record->second.shown[0]);
  }
}

namespace {

// What the file has for a cell of a table's window; null where the window alone knows it.
const std::string* FileText(const Records& records, const WindowKind& kind, int row, int column) {
  const std::string number = std::to_string(row - 1);
  const std::string name = kind.word == "index"  ? "POST" + number
                           : kind.word == "zone" ? "ZONENT" + number
                                                 : "JSPDT" + number;
  const FileRow& record = records.at(name);
  // The index table's first column is the label, which no amplifier knows.
  const int field = kind.word == "index" ? column - 2 : column - 1;
  const bool known = field >= 0 && field < static_cast<int>(record.shown.size());
  return known ? &record.shown[static_cast<std::size_t>(field)] : nullptr;
}

}  // namespace

void Examiner::CheckWindow(const WindowKind& kind, HeadlessForm& form, const Records& records,
                           const std::set<std::string>& pending) {
  const GridSource& source = *form.grid("vsFG").Source();
  const auto differs = [&](const std::string& what, const std::string& shown,
                           const std::string& file) {
    if (shown == file) return;
    Blame("window", std::string(kind.word) + ", " + what + ": the window shows " + Quoted(shown) +
                        ", the file has " + Quoted(file));
  };
  for (int row = 1; row < source.Rows(); ++row) {
    if (kind.look == Look::parameters) {
      const std::string pn = source.Text(row, NameColumn(kind.look));
      const auto record = records.find(RecordName(pn));
      if (pending.contains(pn) || record == records.end()) continue;
      differs(pn, source.Text(row, ValueColumn(kind.look)), record->second.shown[0]);
    } else {
      // A label that moves takes the steps along that name it.
      if (kind.word == "index" ? !pending.empty() : pending.contains(std::to_string(row))) continue;
      for (int column = 1; column < source.Columns(); ++column) {
        const std::string* const file = FileText(records, kind, row, column);
        if (file != nullptr) {
          differs("row " + std::to_string(row), source.Text(row, column), *file);
        }
      }
    }
  }
  if (kind.word == "tuning" && pending.empty()) {
    const bool on = records.at("PRM408").shown[0].ends_with("1");
    differs("notch", form.checkBox("chkNotchFilter").Value() ? "on" : "off", on ? "on" : "off");
    differs("frequency", form.textBox("txtNotchFilterFrequency").Text(),
            records.at("PRM409").shown[0]);
  }
}

void Examiner::Windows(const Records& records, const Pending& pending) {
  for (const WindowKind& kind : kWindows) {
    HeadlessForm* const form = access_.Find(kind);
    if (form == nullptr) continue;
    const auto own = pending.find(kind.word);
    std::set<std::string> edited = own == pending.end() ? std::set<std::string>() : own->second;
    if (kind.look == Look::machine) {
      if (edited.empty()) CheckMachineWindow(*form, records);
      continue;
    }
    // Two rows that two windows show follow each other before any Apply.
    for (const char* const sister : {"flexibleio", "overtravel"}) {
      const auto other = pending.find(sister);
      if (other == pending.end()) continue;
      for (const char* const pn : {"Pn80C", "Pn80D"}) {
        if (other->second.contains(pn)) edited.insert(pn);
      }
    }
    CheckWindow(kind, *form, records, edited);
  }
}

// ---- the amplifier and the project file

void Examiner::Amplifier(const Records& records, campaign::Rows which, const char* when) {
  std::vector<FileRow> rows;
  for (const auto& [name, row] : records) rows.push_back(row);
  const auto wrong = campaign::Untruths(rows, access_.Line(), exempt_, which);
  if (wrong.empty()) return;
  std::string text = std::string(when) + ": " + wrong.front();
  if (wrong.size() > 1) text += " and " + std::to_string(wrong.size() - 1) + " more";
  Blame(which == campaign::Rows::all ? "transfer" : "amplifier", text);
}

void Examiner::TakeAsSaved() {
  saved_ = ReadRecords(access_.ProjectFile());
  savedAt_ = std::filesystem::last_write_time(access_.ProjectFile());
}

void Examiner::Saved() {
  const auto writtenAt = std::filesystem::last_write_time(access_.ProjectFile());
  if (writtenAt == savedAt_) return;
  savedAt_ = writtenAt;
  Records now = ReadRecords(access_.ProjectFile());
  for (const auto& [name, row] : now) {
    const FileRow& was = saved_.at(name);
    // A download may bring the marks that it cleared.
    if (row.shown != was.shown || row.values != was.values) {
      Blame("saved", name + " is " + Quoted(row.shown[0]) + " in the project file, and " +
                         Quoted(was.shown[0]) + " was saved");
    }
  }
  saved_ = std::move(now);
}

bool Examiner::IsAllSaved(const Records& records) const {
  return std::ranges::all_of(records, [this](const auto& entry) {
    const auto saved = saved_.find(entry.first);
    return saved != saved_.end() && saved->second.shown == entry.second.shown &&
           saved->second.values == entry.second.values && saved->second.mark == entry.second.mark;
  });
}

// ---- changes

void Examiner::Unchanged(const Records& before, const Records& after, const MayChange& may,
                         const char* when) {
  for (const auto& [name, row] : after) {
    const auto was = before.find(name);
    if (may(name)) continue;
    if (was == before.end()) {
      Blame("typed", std::string(when) + " made " + name);
    } else if (row.shown != was->second.shown || row.values != was->second.values) {
      std::size_t field = 0;
      while (row.shown[field] == was->second.shown[field] &&
             row.values[field] == was->second.values[field]) {
        ++field;
      }
      Blame("typed", std::string(when) + " made " + row.questions[field] + " " +
                         Quoted(row.shown[field]) + " (" + row.values[field] + ") of " +
                         Quoted(was->second.shown[field]) + " (" + was->second.values[field] + ")");
    }
  }
}

}  // namespace velmoor::walk

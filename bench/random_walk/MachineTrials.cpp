#include "random_walk/MachineTrials.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <stdexcept>
#include <utility>

#include "fault_campaign/Program.h"
#include "fault_campaign/Truth.h"
#include "fault_campaign/Wiring.h"
#include "platform/headless/HeadlessWorld.h"
#include "random_walk/Literal.h"
#include "random_walk/MachineOracle.h"
#include "random_walk/RandomMachine.h"
#include "random_walk/Shell.h"

namespace velmoor::walk {
namespace {

struct Limits {
  const char* pn;
  long low, high;  // counts
};
constexpr std::array<Limits, 12> kUnitRows{{{"Pn81B", -99999999, 99999999},
                                            {"Pn81C", -99999999, 99999999},
                                            {"Pn81D", -99999999, 99999999},
                                            {"Pn81E", 1, 99999999},
                                            {"Pn81F", 1, 99999999},
                                            {"Pn820", 1, 99999999},
                                            {"Pn821", 0, 99999},
                                            {"Pn822", 1, 99999},
                                            {"Pn825", 1, 99999999},
                                            {"Pn826", 1, 99999999},
                                            {"Pn827", 1, 99999999},
                                            {"Pn828", -99999999, 99999999}}};

struct Record {
  std::string shown, count;
  bool marked = false;
};
using Records = std::map<std::string, Record>;

Records ReadParameters(const std::string& path) {
  Records records;
  for (const campaign::FileRow& row : campaign::ReadRows(path)) {
    if (!row.Name().starts_with("PRM")) continue;
    records["Pn" + row.Name().substr(3)] = {row.shown[0], row.values[0], row.IsMarked()};
  }
  return records;
}

std::string OneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return text;
}

bool Says(const std::string& said, const Judgement& judgement) {
  return std::ranges::any_of(judgement.words, [&said](const std::string& words) {
    return said.find(words) != std::string::npos;
  });
}

// ---- what is in the file

std::string Quoted(const std::string& text) {
  return "'" + text + "'";
}

void CheckUnitRow(std::vector<std::string>& wrong, const Limits& limits, const Record& before,
                  const Record& after, const TypedMachine& from, const TypedMachine& to) {
  const ExpectedRow expected =
      AfterChange(limits.pn, {before.shown, before.count}, from, to, limits.low, limits.high);
  const std::string name = limits.pn;
  if (!expected.texts.empty() && std::ranges::count(expected.texts, after.shown) == 0) {
    wrong.push_back(name + " shows " + Quoted(after.shown) + " instead of " +
                    Quoted(expected.texts.front()));
  }
  if (!expected.count.empty() && expected.count != after.count) {
    wrong.push_back(name + " is " + after.count + " counts instead of " + expected.count);
  }
  const long double factor = FactorFor(KindOf(name), std::atoi(to.resolution.c_str()), to.time);
  if (!Means(after.shown, factor, after.count)) {
    wrong.push_back(name + " shows " + Quoted(after.shown) + " and is " + after.count + " counts");
  }
  const long count = std::atol(after.count.c_str());
  if (count < limits.low || count > limits.high) {
    wrong.push_back(name + " is " + after.count + " counts, outside its limits");
  }
  if (before.count != after.count && !after.marked) wrong.push_back(name + " is not marked");
}

std::vector<std::string> CheckFile(const Records& before, const Records& after,
                                   const Judgement& judgement, const TypedMachine& from,
                                   const TypedMachine& to) {
  std::vector<std::string> wrong;
  for (const auto& [pn, value] : judgement.records) {
    const Record& record = after.at(pn);
    if (record.count != value || record.shown != value) {
      wrong.push_back(pn + " is " + Quoted(record.count) + ", shown as " + Quoted(record.shown) +
                      ", instead of " + Quoted(value));
    }
    if (before.at(pn).count != value && !record.marked) wrong.push_back(pn + " is not marked");
  }
  for (const Limits& limits : kUnitRows) {
    CheckUnitRow(wrong, limits, before.at(limits.pn), after.at(limits.pn), from, to);
  }
  const bool rotary = after.at("Pn81A").shown.starts_with("Rotary");
  if (rotary != IsRotary(to.system)) wrong.push_back("Pn81A is " + after.at("Pn81A").shown);
  return wrong;
}

void Blame(TrialReport& report, const std::string& doing, const std::vector<std::string>& wrong) {
  if (wrong.empty()) return;
  std::string text = doing;
  for (const std::string& each : wrong) text += (text.size() == doing.size() ? ": " : "; ") + each;
  report.faults.push_back(text);
}

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// ---- velmoorctl

// A project, and the machine that it holds.
struct Held {
  std::string path;
  TypedMachine machine;
};

std::vector<std::string> CheckShown(Shell& shell, const std::string& path,
                                    const Judgement& judgement) {
  std::vector<std::string> wrong;
  if (shell.Run({"show", path, "system"}) != 0) wrong.emplace_back("the machine cannot be shown");
  const std::pair<const char*, long> expected[] = {{"A", judgement.a},
                                                   {"B", judgement.b},
                                                   {"lowest resolution", judgement.low},
                                                   {"highest resolution", judgement.high}};
  for (const auto& [name, value] : expected) {
    if (shell.Shown(name) == std::to_string(value)) continue;
    wrong.push_back(std::string(name) + " is told as " + Quoted(shell.Shown(name)) +
                    " instead of " + std::to_string(value));
  }
  return wrong;
}

std::vector<std::string> SetByOneCommand(Shell& shell, Held& held, const TypedMachine& machine,
                                         const Judgement& judgement) {
  const Records before = ReadParameters(held.path);
  std::vector<std::string> words{"set", held.path, "--yes"};
  for (const std::string& word : machine.Assignments()) words.push_back(word);
  const int status = shell.Run(words);
  const std::string said = OneLine(shell.err.str());
  const Records after = ReadParameters(held.path);
  if (status == 0 && judgement.valid) {
    const TypedMachine from = std::exchange(held.machine, machine);
    std::vector<std::string> wrong = CheckFile(before, after, judgement, from, machine);
    const std::vector<std::string> shown = CheckShown(shell, held.path, judgement);
    wrong.insert(wrong.end(), shown.begin(), shown.end());
    return wrong;
  }
  if (judgement.valid) return {"refused: " + said};
  if (status == 0) return {"taken, though: " + judgement.words.front()};
  std::vector<std::string> wrong;
  if (!Says(said, judgement)) {
    wrong.push_back("refused with \"" + said + "\" instead of \"" + judgement.words.front() + "\"");
  }
  for (const auto& [pn, record] : after) {
    if (record.count != before.at(pn).count) wrong.push_back(pn + " changed in a refusal");
  }
  return wrong;
}

Held MakeProject(Shell& shell, const std::string& path) {
  std::filesystem::remove(path);
  if (shell.Run({"new", path}) != 0) throw std::runtime_error("no project: " + shell.err.str());
  return {path, TypedMachine()};
}

}  // namespace

TrialReport RunConsoleTrials(const std::string& folder, std::uint64_t seed, int machines) {
  const auto start = std::chrono::steady_clock::now();
  std::mt19937_64 random(seed);
  Shell shell(folder);
  TrialReport report;
  Held other = MakeProject(shell, folder + "/other.spj");
  for (; report.machines < machines; ++report.machines) {
    const TypedMachine machine = RandomMachine(random);
    const Judgement judgement = Judge(machine);
    if (judgement.doubtful) {
      ++report.doubtful;
      continue;
    }
    const std::size_t blamed = report.faults.size();
    Held fresh = MakeProject(shell, folder + "/new.spj");
    Blame(report, "set " + machine.Text() + " on a new project",
          SetByOneCommand(shell, fresh, machine, judgement));
    const std::string from = other.machine.Text();
    Blame(report, "set " + machine.Text() + " over " + from,
          SetByOneCommand(shell, other, machine, judgement));
    if (!judgement.valid) continue;
    ++report.valid;
    if (report.faults.size() == blamed) ++report.entered;
  }
  report.seconds = SecondsSince(start);
  return report;
}

// ---- the window

namespace {

using headless::HeadlessForm;

constexpr int kName = 0;
constexpr int kValue = 2;

void TypeInto(HeadlessForm& form, const std::string& pn, const std::string& text) {
  const GridSource& source = *form.grid("vsFG").Source();
  for (int row = 1; row < source.Rows(); ++row) {
    if (source.Text(row, kName) == pn) (void)form.EditCell("vsFG", row, kValue, text);
  }
}

void TypeMachine(HeadlessForm& form, const TypedMachine& machine, std::mt19937_64& random) {
  std::array<int, 8> order{0, 1, 2, 3, 4, 5, 6, 7};
  std::ranges::shuffle(order, random);
  for (const int cell : order) {
    switch (cell) {
      case 0:
        form.Select("cmbSystem", SystemName(machine.system));
        break;
      case 1:
        form.Press("cmdEncoder");
        form.Select("cmbEncoder", machine.encoder);
        break;
      case 2:
        TypeInto(form, "Pn82F.0", machine.measure);
        break;
      case 3:
        TypeInto(form, "Pn82B", machine.n1);
        break;
      case 4:
        TypeInto(form, "Pn82C", machine.n2);
        break;
      case 5:
        TypeInto(form, "Pn82D", machine.resolution);
        break;
      case 6:
        TypeInto(form, "Pn82E.0", machine.units);
        break;
      default:
        TypeInto(form, "Pn82E.1", machine.time);
        break;
    }
  }
}

// True where the window took the machine and closed.
bool EnterInWindow(campaign::Program& program, const TypedMachine& machine,
                   std::mt19937_64& random) {
  headless::HeadlessForms& forms = program.Desktop().forms;
  bool taken = false;
  program.user.texts.clear();
  forms.OnShow("frmMechanicalSystem", [&](HeadlessForm& form) {
    TypeMachine(form, machine, random);
    forms.OnShow("frmRescalePreview", [](HeadlessForm& preview) { preview.Press("cmdOK"); });
    form.Press("cmdOK");
    // The window is gone with its OK.
    taken = !forms.IsOpen("frmMechanicalSystem");
    if (!taken) form.Press("cmdCancel");
  });
  forms.Main().Choose("mnuToolsMechanicalSystem");
  forms.Verify();
  // A preview that was not needed is no fault.
  std::erase_if(program.unforeseen, [](const std::string& text) {
    return text.find("frmRescalePreview was not shown") != std::string::npos;
  });
  return taken;
}

}  // namespace

TrialReport RunWindowTrials(const std::string& folder, std::uint64_t seed, int machines) {
  const auto start = std::chrono::steady_clock::now();
  std::mt19937_64 random(seed);
  TrialReport report;
  const auto wiring = campaign::WireInProcess();
  campaign::Program program(wiring->Port(), folder);
  // Who types a whole machine keeps what was typed until all of it stands there.
  program.user.refuses = [](const std::string& text) {
    return text.find("Restore previous value?") != std::string::npos;
  };
  const std::string file = folder + "/campaign.tmp";
  TypedMachine held;
  for (; report.machines < machines; ++report.machines) {
    const TypedMachine machine = RandomValidMachine(random);
    const Judgement judgement = Judge(machine);
    ++report.valid;
    const Records before = ReadParameters(file);
    const std::string doing = "window: " + machine.Text() + " over " + held.Text();
    if (!EnterInWindow(program, machine, random)) {
      std::string said = "refused:";
      for (const std::string& text : program.user.texts) said += " [" + text + "]";
      Blame(report, doing, {said});
      continue;
    }
    std::vector<std::string> wrong =
        CheckFile(before, ReadParameters(file), judgement, held, machine);
    wrong.insert(wrong.end(), program.unforeseen.begin(), program.unforeseen.end());
    program.unforeseen.clear();
    if (wrong.empty()) ++report.entered;
    Blame(report, doing, wrong);
    held = machine;
  }
  report.seconds = SecondsSince(start);
  return report;
}

}  // namespace velmoor::walk

#include "random_walk/TextTrials.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>

#include "console/ConsoleSession.h"
#include "console/SystemCommand.h"
#include "platform/Csv.h"
#include "platform/Numbers.h"
#include "project/SetParameters.h"
#include "project/data/Schema.h"
#include "random_walk/RandomMachine.h"
#include "random_walk/Shell.h"
#include "tables/TableCsv.h"
#include "tools/ParameterRules.h"

namespace velmoor::walk {
namespace {

// Characters that mean something to one of the forms that a label goes through.
constexpr const char* kLetters[] = {"a",      "B",      "7",      " ", ",", ";", "\"", "'",
                                    "#",      "=",      "{",      "}", "[", "]", "\\", ".",
                                    "\u00e4", "\u00df", "\u20ac", "-", "+", ":"};
constexpr const char* kNobodyTypes[] = {"two\nlines",
                                        "a\r\nb",
                                        "tab\there",
                                        "\x07",
                                        "END",
                                        "a|b",
                                        "a label of more than sixteen characters",
                                        "\u202eturned"};

class RandomProject {
 public:
  RandomProject(std::mt19937_64& random, Shell& shell) : random_(random), shell_(shell) {}

  // Throws std::runtime_error where it cannot be filled.
  void Fill(const std::string& path, bool asFound) {
    {
      ConsoleSession session(shell_.Port(), notes_);
      if (!session.Start("30") || !session.Open(path)) throw std::runtime_error(notes_.str());
      Describe(session.project());
      TypeParameters(session.project());
      TypeTables(session.project());
      session.project().Save();
    }
    if (asFound) LeaveAsFound(path);
  }

 private:
  int Below(int count) { return static_cast<int>(random_() % static_cast<std::uint64_t>(count)); }
  template <typename Range>
  std::string OneOf(const Range& range) {
    return std::string(range[static_cast<std::size_t>(Below(static_cast<int>(std::size(range))))]);
  }

  void Describe(clsHX7Project& project) {
    std::vector<Assignment> machine{{"motor", OneOf(std::vector<std::string>{"30", "100", "400"})}};
    if (Below(5) > 0) {
      for (const std::string& word : RandomValidMachine(random_).Assignments()) {
        const std::size_t equals = word.find('=');
        machine.emplace_back(word.substr(0, equals), word.substr(equals + 1));
      }
    }
    if (!SetSystem(project, machine)) throw std::runtime_error("the machine is refused");
  }

  void TypeParameters(clsHX7Project& project) {
    const clsHX7Editor& editor = project.Editor();
    std::vector<std::string> assignments;
    const int share = 1 + Below(10);
    for (int row = 1; row <= editor.RowsInArray(); ++row) {
      const ParameterRow described = editor.Describe(row);
      if (Below(10) >= share || !LockedReason(described.name).empty()) continue;
      const std::string text = ValueFor(project, described);
      const bool taken = CheckParameter(project, ParameterWindow::editor, described, text).accepted;
      if (taken) assignments.push_back(described.name + "=" + text);
    }
    if (!SetParameters(project, assignments).empty()) {
      throw std::runtime_error("parameters are refused");
    }
  }

  std::string ValueFor(const Project& project, const ParameterRow& row) {
    if (!row.list.empty()) {
      std::vector<std::string> items(1);
      for (const char c : row.list) {
        if (c == '|') {
          items.emplace_back();
        } else {
          items.back() += c;
        }
      }
      return OneOf(items);
    }
    if (row.nibble != nullptr) {
      std::string digits;
      for (int digit = 3; digit >= 0; --digit) {
        const int values = row.nibble->digits[static_cast<std::size_t>(digit)].use_bit;
        digits += HexText(static_cast<std::uint32_t>(values > 0 ? Below(values) : 0));
      }
      return digits;
    }
    const double low = ParseFloat(MinimumText(project, row)).value_or(0);
    const double high = ParseFloat(MaximumText(project, row)).value_or(0);
    const double share = static_cast<double>(Below(1000001)) / 1000000;
    const bool inUnits = MinimumText(project, row) != row.minimum;
    return FixedText(low + (high - low) * share * share, inUnits ? project.Resolution() : 0);
  }

  std::string Label(int step) {
    std::string label = NumberText(step);
    for (int i = Below(12); i > 0; --i) label += OneOf(kLetters);
    return label;
  }

  void TypeTables(clsHX7Project& project) {
    std::string index = CsvLine(
        {"step", "label", "position", "speed", "rdst", "rspd", "pout", "event", "loop", "next"});
    const int steps = Below(3) == 0 ? 128 : Below(20);
    std::vector<std::string> labels;
    for (int step = 1; step <= steps; ++step) labels.emplace_back(Trim(Label(step)));
    for (int step = 1; step <= steps; ++step) index += Step(step, labels);
    const auto speed = [this] { return NumberText(Below(9000)) + "." + NumberText(Below(99)); };
    std::string zone = "zone,lower,upper\n";
    std::string jog = "jog,speed\n";
    for (int row = 0; row < 32; ++row) {
      if (Below(3) == 0) zone += CsvLine({NumberText(row), "-" + speed(), speed()});
      if (row < 16 && Below(3) == 0) jog += CsvLine({NumberText(row), speed()});
    }
    const bool taken = ImportCsv(project, project.Position(), index).empty() &&
                       ImportCsv(project, project.Zone(), zone).empty() &&
                       ImportCsv(project, project.Jog(), jog).empty();
    // What the machine's units leave no room for is refused as a whole.
    if (taken && !(project.Position().ChangeAccepted() && project.Zone().ChangeAccepted() &&
                   project.Jog().ChangeAccepted())) {
      throw std::runtime_error("tables are refused");
    }
  }

  std::string Step(int step, const std::vector<std::string>& labels) {
    const std::string next = Below(4) == 0 ? "END" : OneOf(labels);
    const std::string& own = labels[static_cast<std::size_t>(step) - 1];
    return CsvLine({NumberText(step), own,
                    OneOf(std::vector<std::string>{"A+", "A-", "I+", "I-"}) + NumberText(Below(90)),
                    NumberText(Below(90)), Below(2) == 0 ? "-" : NumberText(Below(90)),
                    NumberText(Below(90)), OneOf(std::vector<std::string>{":::::", "ANZ:A"}),
                    OneOf(std::vector<std::string>{"IT0", "T500", "SEL3T20", "DT1", ":T0"}),
                    NumberText(1 + Below(99999)), next == own ? "END" : next});
  }

  // As another program, or an upload, leaves records in a file.
  void LeaveAsFound(const std::string& path) {
    const auto file = OpenForWriting(path);
    const auto put = [](RowSet& row, std::string_view field, const std::string& text) {
      row.Edit();
      row.Set(field, text);
      row.Update();
    };
    using schema::Position;
    const auto steps = file->OpenTable(Position::kTable, Position::kId);
    for (steps->MoveFirst(); !steps->AtEnd(); steps->MoveNext()) {
      if (steps->Text(Position::kSpeed).empty()) continue;
      if (Below(8) == 0) put(*steps, Position::kLabel, OneOf(kNobodyTypes));
      if (Below(8) == 0) put(*steps, Position::kEvent, "SEL9T1");
    }
    using schema::Parameters;
    const auto rows = file->OpenTable(Parameters::kTable);
    for (const char* const name : {"Pn50A", "Pn104", "Pn202", "Pn100", "Pn000", "Pn819"}) {
      if (Below(2) == 0 || !rows->FindFirst(Parameters::kPn, name)) continue;
      const std::string value = NumberText(1000 + Below(8999));
      put(*rows, Parameters::kControllerValue, value);
      put(*rows, Parameters::kValue, value);
    }
    file->Commit();
  }

  std::mt19937_64& random_;
  Shell& shell_;
  std::ostringstream notes_;
};

std::string WithoutMarks(const std::string& csv) {
  std::string text;
  std::istringstream lines(csv);
  for (std::string line; std::getline(lines, line);) {
    text += line.substr(0, line.rfind(',')) + "\n";
  }
  return text;
}

// The first lines in which they differ.
std::string Difference(const std::string& first, const std::string& second) {
  std::istringstream a(first), b(second);
  for (std::string one, other; std::getline(a, one);) {
    if (!std::getline(b, other) || one != other) return one + " | " + other;
  }
  return "a line more";
}

// What is wrong with `copy`, into which the text of `project` was put; empty: nothing.
std::string Compare(Shell& shell, const std::string& project, const std::string& copy,
                    const std::string& text) {
  if (shell.Run({"import-text", copy, text, "--yes"}) != 0) return "refused: " + shell.err.str();
  if (shell.Run({"diff", project, copy}) != 0 || std::ranges::count(shell.out.str(), '\n') != 1) {
    return "other values: " + shell.out.str();
  }
  for (const char* const part : {"index", "zone", "jog"}) {
    (void)shell.Run({"show", project, part});
    const std::string shown = WithoutMarks(shell.out.str());
    (void)shell.Run({"show", copy, part});
    if (WithoutMarks(shell.out.str()) != shown) return std::string("shows another ") + part;
  }
  (void)shell.Run({"export", project});
  const std::string exported = shell.out.str();
  if (shell.Run({"export", copy}) != 0 || shell.out.str() != exported) {
    return "reads otherwise: " + Difference(exported, shell.out.str());
  }
  return {};
}

}  // namespace

TrialReport RunTextTrials(const std::string& folder, std::uint64_t seed, int projects) {
  const auto start = std::chrono::steady_clock::now();
  std::mt19937_64 random(seed);
  Shell shell(folder);
  TrialReport report;
  const std::string project = folder + "/a.spj", fresh = folder + "/b.spj",
                    text = folder + "/a.toml";
  const std::string other = folder + "/other.spj";
  (void)shell.Run({"new", other});
  for (; report.machines < projects; ++report.machines) {
    const bool asFound = report.machines % 3 == 2;
    for (const std::string& path : {project, fresh, text}) std::filesystem::remove(path);
    if (shell.Run({"new", project}) != 0 || shell.Run({"new", fresh}) != 0) {
      throw std::runtime_error("no project: " + shell.err.str());
    }
    RandomProject(random, shell).Fill(project, asFound);
    std::vector<std::string> words{"export", project, text};
    if (report.machines % 2 == 1) words.emplace_back("--all");
    std::string wrong = shell.Run(words) == 0 ? Compare(shell, project, fresh, text)
                                              : "not exported: " + shell.err.str();
    if (wrong.empty()) wrong = Compare(shell, project, other, text);
    report.doubtful += asFound ? 1 : 0;
    if (wrong.empty()) {
      ++report.entered;
    } else {
      report.faults.push_back("project " + NumberText(report.machines) + " of seed " +
                              NumberText(seed) + ": " + wrong);
    }
  }
  report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return report;
}

}  // namespace velmoor::walk

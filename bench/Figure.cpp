#include "Figure.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "platform/Numbers.h"

namespace velmoor::bench {
namespace {

struct Column {
  std::string_view heading;
  std::size_t width;
  bool right = false;
};

constexpr std::array<Column, 10> kColumns{{{"Figure", 42},
                                           {"Runs", 5, true},
                                           {"Median", 9, true},
                                           {"Worst", 9, true},
                                           {"Unit", 4},
                                           {"Goal", 10},
                                           {"Limit", 9, true},
                                           {"Set by", 8},
                                           {"Ratio", 6, true},
                                           {"", 1}}};

std::string Padded(const std::string& text, const Column& column) {
  const std::string blanks(column.width - std::min(column.width, text.size()), ' ');
  return column.right ? blanks + text : text + blanks;
}

std::string GoalText(const std::optional<Goal>& goal) {
  if (!goal) return "-";
  const std::string text = "< " + NumberText(RoundToPlaces(goal->most, 2));
  return goal->of == Goal::Of::worst ? "worst " + text : text;
}

}  // namespace

double Figure::Median() const {
  std::vector<double> sorted = samples;
  std::ranges::sort(sorted);
  const std::size_t middle = sorted.size() / 2;
  return sorted.size() % 2 != 0 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

double Figure::Worst() const {
  return *std::ranges::max_element(samples);
}

std::optional<double> Figure::Ratio() const {
  return limit ? std::optional(Median() / limit->value) : std::nullopt;
}

bool Figure::MissesGoal() const {
  return goal && (goal->of == Goal::Of::worst ? Worst() : Median()) * unit.perBase >= goal->most;
}

Table::Table(std::ostream& out, Form form) : out_(out), form_(form) {
  std::vector<std::string> headings;
  std::vector<std::string> rules;
  for (const Column& column : kColumns) {
    headings.emplace_back(column.heading);
    rules.emplace_back(column.width, '-');
    if (column.right) rules.back().back() = ':';
  }
  PrintRow(headings);
  if (form_ == Form::markdown) PrintRow(rules);
}

void Table::Begin(const std::string& section) {
  if (form_ == Form::plain) {
    out_ << "\n" << section << std::endl;
    return;
  }
  std::vector<std::string> cells(kColumns.size());
  cells.front() = "**" + section + "**";
  PrintRow(cells);
}

void Table::Add(const Figure& figure) {
  const auto shown = [&](double value) { return FixedText(value * figure.unit.perBase, 2); };
  const auto ratio = figure.Ratio();
  const bool misses = figure.MissesGoal();
  marked_ = marked_ || misses;
  PrintRow({figure.what, NumberText(figure.samples.size()), shown(figure.Median()),
            shown(figure.Worst()), std::string(figure.unit.name), GoalText(figure.goal),
            figure.limit ? shown(figure.limit->value) : "-",
            figure.limit ? std::string(figure.limit->setBy) : "-",
            ratio ? FixedText(*ratio, 3) : "-", misses ? "!" : ""});
}

void Table::End() {
  if (marked_) out_ << "\n! misses its goal\n";
}

void Table::PrintRow(const std::vector<std::string>& cells) {
  const bool markdown = form_ == Form::markdown;
  std::string row = markdown ? "|" : "";
  for (std::size_t i = 0; i < cells.size(); ++i) {
    row += Padded(cells[i], kColumns[i]) + (markdown ? "|" : " ");
  }
  if (!markdown) row.erase(row.find_last_not_of(' ') + 1);
  out_ << row << std::endl;
}

}  // namespace velmoor::bench

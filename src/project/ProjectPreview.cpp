// What a change of the machine's resolution or time base would make of the project's numbers.

#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "project/clsHX7Project.h"
#include "tools/UnitConversion.h"

namespace velmoor {
namespace {

class Preview {
 public:
  Preview(const Project& project, std::int16_t digits, const std::array<double, 4>& factors)
      : project_(project), digits_(digits), factors_(factors) {}

  // Texts that hold no number, such as "-" and "", are not rescaled.
  void Add(const std::string& place, UnitKind kind, const std::string& text,
           const std::string& prefix = {}) {
    const auto number = ParseFloat(text);
    if (!number) return;
    const double factor = factors_[static_cast<std::size_t>(kind)];
    const LimitedCounts after =
        UnitsToLimitedCounts(FormatToResolution(text, digits_), factor, digits_);
    const std::string before = UnitsToCounts(text, FactorOf(project_, kind));
    const std::string counts = NumberText(after.counts);
    if (after.text == text && counts == before) return;
    values_.push_back({place, prefix + text, prefix + after.text, before, counts,
                       FixedText(after.counts - *number * factor, 3)});
  }

  void AddTable(const MotionTable& table, const std::string& name, int firstNumber) {
    const auto& columns = table.Layout().columns;
    for (int row = 1; row <= table.RowsInArray(); ++row) {
      for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string& text = table.Text(row, static_cast<int>(i));
        const std::string place =
            name + " " + NumberText(row - 1 + firstNumber) + ", " + std::string(columns[i].field);
        if (columns[i].kind == CellKind::distance) Add(place, UnitKind::distance, text);
        if (columns[i].kind == CellKind::speed) Add(place, UnitKind::speed, text);
        if (columns[i].kind == CellKind::position && text.size() > 2) {
          Add(place, UnitKind::distance, text.substr(2), text.substr(0, 2));
        }
      }
    }
  }

  void AddParameters(const BlockMatrix& rows) {
    for (int row = 1; row <= rows.Rows(); ++row) {
      const std::string& strPn = rows.Text(row, Column::name);
      if (const auto kind = UnitKindOf(strPn)) {
        Add(strPn + " " + rows.Text(row, Column::description), *kind,
            rows.Text(row, Column::value));
      }
    }
  }

  std::vector<RescaledValue> Take() { return std::move(values_); }

 private:
  const Project& project_;
  std::int16_t digits_;
  const std::array<double, 4>& factors_;
  std::vector<RescaledValue> values_;
};

}  // namespace

std::vector<RescaledValue> clsHX7Project::PreviewRescale(
    std::int16_t digits, const std::array<double, 4>& factors) const {
  Preview preview(*this, digits, factors);
  preview.AddTable(clsPosition_, "Index Table step", 1);
  preview.AddTable(clsZone_, "Zone Table row", 0);
  preview.AddTable(clsJog_, "Jog Table row", 0);
  preview.AddParameters(clsEditor_.Rows());
  return preview.Take();
}

}  // namespace velmoor

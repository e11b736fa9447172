// What the benchmark finds: figures beside their goals and their physical limits, in one table.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmoor::bench {

// Samples are held in seconds and bytes, and shown in a unit that fits them.
struct Unit {
  std::string_view name;
  double perBase;
};
inline constexpr Unit kSeconds{"s", 1};
inline constexpr Unit kMilliseconds{"ms", 1e3};
inline constexpr Unit kMicroseconds{"us", 1e6};
inline constexpr Unit kMegabytes{"MB", 1e-6};

// What a figure's median or worst is to stay below, in the figure's unit.
struct Goal {
  enum class Of { median, worst };
  double most;
  Of of = Of::median;
};

// What no program could go below: the time that the wire, the disk or the key takes by itself.
struct Limit {
  double value;  // in seconds or bytes
  std::string_view setBy;
};

struct Figure {
  std::string what;
  Unit unit;
  std::vector<double> samples;  // at least one, in seconds or bytes
  std::optional<Goal> goal;
  std::optional<Limit> limit;

  [[nodiscard]] double Median() const;
  [[nodiscard]] double Worst() const;
  [[nodiscard]] std::optional<double> Ratio() const;  // of the median to the limit
  [[nodiscard]] bool MissesGoal() const;
};

// Prints each figure when it is added, so that one sees how far a run is.
class Table {
 public:
  enum class Form { plain, markdown };

  // Prints the heading. `out` must outlive the table.
  Table(std::ostream& out, Form form);
  void Begin(const std::string& section);
  void Add(const Figure& figure);
  // Says what the marks mean, where there are any.
  void End();

 private:
  void PrintRow(const std::vector<std::string>& cells);

  std::ostream& out_;
  Form form_;
  bool marked_ = false;
};

}  // namespace velmoor::bench

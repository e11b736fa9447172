// Programs as children of the benchmark, which end when it does.
#pragma once

#include <QProcess>
#include <string>
#include <utility>
#include <vector>

namespace velmoor::bench {

// What of a process lies in the machine's memory, in bytes; "self" is this one.
[[nodiscard]] double ResidentBytes(const std::string& process);

class Child {
 public:
  using Variables = std::vector<std::pair<std::string, std::string>>;

  // Returns when the program runs, with `variables` beside this program's own. What it prints is
  // dropped, but for its errors. Throws std::runtime_error.
  Child(const std::string& program, const std::vector<std::string>& words,
        const Variables& variables = {});
  // Ends it.
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // Reads the program's errors up to a line that holds all of `words`, and gives that line. Throws
  // std::runtime_error when the program is silent for a minute.
  std::string WaitForLine(const std::vector<std::string>& words);
  // The number behind `words` on the line that WaitForLine finds.
  double WaitForNumber(const std::string& words);
  // Drops what the program has told of its errors so far: one that is not heard stands still when
  // its pipe is full.
  void DropErrors();
  // Waits for the end. Throws std::runtime_error where the status is not 0.
  void WaitForSuccess();
  [[nodiscard]] double ResidentMemory() const {
    return ResidentBytes(std::to_string(process_.processId()));
  }

 private:
  QProcess process_;
};

}  // namespace velmoor::bench

// The words of a command line as its program's table reads them.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

// A command line that cannot be understood; what() is for the user.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class CommandLine {
 public:
  struct Option {
    std::string name;   // without its dashes
    std::string value;  // empty for a flag
  };

  CommandLine(std::vector<std::string> arguments, std::vector<Option> options);

  // The command's own name comes first, where the program has commands.
  [[nodiscard]] const std::vector<std::string>& Arguments() const { return arguments_; }
  // In the order of the line.
  [[nodiscard]] const std::vector<Option>& Options() const { return options_; }
  [[nodiscard]] bool Has(std::string_view option) const;
  // The first value given.
  [[nodiscard]] std::optional<std::string> Value(std::string_view option) const;
  // Throws UsageError when the option is missing or empty.
  [[nodiscard]] std::string Required(std::string_view option) const;

 private:
  std::vector<std::string> arguments_;
  std::vector<Option> options_;
};

}  // namespace velmoor

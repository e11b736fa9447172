// The words of a command line: a command, its arguments, and options of the form "--name value".
#pragma once

#include <optional>
#include <set>
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
  // Options in `flags` take no value; every other "--name" takes the next word, or what follows
  // "=".
  // "--" ends the options. Throws UsageError for an option without its value.
  CommandLine(const std::vector<std::string>& words, const std::set<std::string>& flags);

  [[nodiscard]] const std::vector<std::string>& Arguments() const { return arguments_; }
  [[nodiscard]] bool Has(std::string_view option) const;
  [[nodiscard]] std::optional<std::string> Value(std::string_view option) const;
  // Throws UsageError when the option is missing.
  [[nodiscard]] std::string Required(std::string_view option) const;
  // Throws UsageError for an option that is not among `allowed`.
  void AllowOnly(const std::set<std::string>& allowed) const;

 private:
  struct Option {
    std::string name;
    std::string value;
  };
  std::vector<std::string> arguments_;
  std::vector<Option> options_;
};

}  // namespace velmoor

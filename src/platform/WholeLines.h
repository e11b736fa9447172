// Cuts the contents of a file, as they come in pieces, into its whole lines.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace velmoor {

class WholeLines {
 public:
  // Each line goes to `take`, without its end, until that gives false. `named` names the file in
  // failures.
  WholeLines(std::string named, const std::function<bool(std::string_view)>& take)
      : named_(std::move(named)), take_(take) {}

  // False: no more is wanted. Throws FileError for a line beyond bounds::kLine.
  [[nodiscard]] bool Add(std::string_view piece);

 private:
  void Keep(std::string_view part);

  std::string named_;
  const std::function<bool(std::string_view)>& take_;
  std::string rest_;
};

}  // namespace velmoor

// velmoorctl as the program that runs a work over a line.
#pragma once

#include <string>
#include <vector>

#include "console/CommandContext.h"
#include "operations/LineRun.h"

namespace velmoor {

// The axes of a list such as "3,A". Throws UsageError for one that the file does not have.
[[nodiscard]] std::vector<LineAxis> AxesNamed(const LineFile& line, const std::string& list);

class ConsoleLine final : public LineHost {
 public:
  explicit ConsoleLine(const Context& context) : context_(context), work_(context) {}

  [[nodiscard]] Work& TheWork() { return work_; }

  [[nodiscard]] SessionState& Session() override { return work_.session(); }
  [[nodiscard]] Operations& Hardware() override { return work_.session().Hardware(); }
  [[nodiscard]] AgreedBoxes& Boxes() override;
  [[nodiscard]] bool Open(const std::string& path) override { return work_.Open(path); }
  [[nodiscard]] bool Save() override { return work_.Save(); }
  [[nodiscard]] bool Stopped() const override;
  void AxisBegins(const LineAxis& axis, std::size_t number, std::size_t count) override;
  void AxisEnds(const LineAxis& /*axis*/, const LineResult& /*result*/) override {}

 private:
  const Context& context_;
  Work work_;
};

}  // namespace velmoor

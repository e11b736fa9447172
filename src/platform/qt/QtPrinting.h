// The printers of the system.
#pragma once

#include <QPrinter>
#include <memory>

#include "platform/Printing.h"

namespace velmoor::qt {

class QtPrinting final : public Printing {
 public:
  [[nodiscard]] std::vector<std::string> Printers() const override;
  [[nodiscard]] std::string PrinterName() const override;
  [[nodiscard]] PrintQuality Quality() const override;
  void SetQuality(PrintQuality quality) override;
  bool SetUp() override;
  void Print(const PrintDocument& document, Paper paper) override;

 private:
  // The printer in use, found when first needed, since looking for it takes its time. Throws where
  // none is installed.
  QPrinter& Chosen() const;
  mutable std::unique_ptr<QPrinter> printer_;
};

}  // namespace velmoor::qt

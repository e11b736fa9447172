// Documents as PDF, made by a module that is loaded when the first one is asked for: a program that
// makes none carries nothing of it.
#pragma once

#include <memory>
#include <string>

#include "platform/Printing.h"

namespace velmoor::win32 {

class PdfModule final : public PdfMaker {
 public:
  explicit PdfModule(std::string path) : path_(std::move(path)) {}
  // Also throws when the module is missing or none.
  [[nodiscard]] std::string Pdf(const PrintDocument& document, Paper paper) override;

 private:
  std::string path_;
  std::unique_ptr<PdfMaker> maker_;  // its code stays loaded
};

}  // namespace velmoor::win32

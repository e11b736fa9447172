// Documents as PDF, made by a module that is loaded when the first one is asked for: a program that
// makes none carries nothing of it.
#pragma once

#include <memory>
#include <string>

#include "platform/Printing.h"

namespace velmoor::posix {

// The function that a module offers under the name kPdfModuleEntry. The caller deletes the maker.
using PdfModuleEntry = PdfMaker* (*)();
inline constexpr char kPdfModuleEntry[] = "velmoor_make_pdf_maker";

class PdfModule final : public PdfMaker {
 public:
  explicit PdfModule(std::string path) : path_(std::move(path)) {}
  // Also throws when the module is missing or none.
  [[nodiscard]] std::string Pdf(const PrintDocument& document, Paper paper) override;

 private:
  std::string path_;
  std::unique_ptr<PdfMaker> maker_;  // its code stays loaded
};

}  // namespace velmoor::posix

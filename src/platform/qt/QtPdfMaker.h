// Documents as PDF. Needs no printer and no screen, but an application object.
#pragma once

#include "platform/Printing.h"

namespace velmoor::qt {

class PageSetter;

class QtPdfMaker final : public PdfMaker {
 public:
  [[nodiscard]] std::string Pdf(const PrintDocument& document, Paper paper) override;
};

// What Qt hashes comes in the same order in every process from now on, and with it the objects of a
// PDF file. To be called at a program's start.
void KeepOrderOfHashes();

}  // namespace velmoor::qt

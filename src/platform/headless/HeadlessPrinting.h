// Printers and PDF documents without either: what was asked for is kept, and errors are thrown when
// a test asks for them.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/Printing.h"

namespace velmoor::headless {

class HeadlessPdfMaker final : public PdfMaker {
 public:
  [[nodiscard]] std::string Pdf(const PrintDocument& document, Paper paper) override {
    documents.push_back(document);
    papers.push_back(paper);
    return "%PDF of " + document.title;
  }

  std::vector<PrintDocument> documents;
  std::vector<Paper> papers;
};

class HeadlessPrinting final : public Printing {
 public:
  [[nodiscard]] std::vector<std::string> Printers() const override { return printers; }
  [[nodiscard]] std::string PrinterName() const override {
    return printers.empty() ? "" : printers[chosen];
  }
  [[nodiscard]] PrintQuality Quality() const override { return quality; }
  void SetQuality(PrintQuality wanted) override { quality = wanted; }
  // The user chooses the last printer, or cancels where there is one at most.
  bool SetUp() override {
    ++setUps;
    if (printers.size() < 2) return false;
    chosen = printers.size() - 1;
    return true;
  }
  void Print(const PrintDocument& document, Paper /*paper*/) override {
    if (printers.empty()) throw std::runtime_error("No printer is installed.");
    printed.push_back(document);
  }

  std::vector<std::string> printers;
  std::size_t chosen = 0;
  PrintQuality quality = PrintQuality::medium;
  int setUps = 0;
  std::vector<PrintDocument> printed;
};

}  // namespace velmoor::headless

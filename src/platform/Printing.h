// Ports: printers, and documents as PDF, which need no printer.
#pragma once

#include <string>
#include <vector>

#include "platform/PrintDocument.h"

namespace velmoor {

class PdfMaker {
 public:
  virtual ~PdfMaker() = default;
  // The document as the bytes of a PDF file. They depend on nothing but the document, the paper and
  // the fonts of the system. Throws std::runtime_error.
  [[nodiscard]] virtual std::string Pdf(const PrintDocument& document, Paper paper) = 0;
};

enum class PrintQuality { draft, low, medium, high };

class Printing {
 public:
  virtual ~Printing() = default;
  // Names of the installed printers.
  [[nodiscard]] virtual std::vector<std::string> Printers() const = 0;
  // The printer in use: the default one, or what the user chose last. Empty where there is none.
  [[nodiscard]] virtual std::string PrinterName() const = 0;
  [[nodiscard]] virtual PrintQuality Quality() const = 0;
  virtual void SetQuality(PrintQuality quality) = 0;
  // Lets the user choose a printer and its settings. False after Cancel.
  virtual bool SetUp() = 0;
  // Throws std::runtime_error when nothing can be printed.
  virtual void Print(const PrintDocument& document, Paper paper) = 0;
};

}  // namespace velmoor

#include "platform/qt/QtPrinting.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScopeGuard>
#include <array>
#include <stdexcept>

#include "platform/qt/PageSetter.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

// Dots per inch of the four qualities.
constexpr std::array<int, 4> kResolutions{150, 300, 600, 1200};

QPrinterInfo FirstChoice() {
  const QPrinterInfo preset = QPrinterInfo::defaultPrinter();
  if (!preset.isNull()) return preset;
  const QList<QPrinterInfo> installed = QPrinterInfo::availablePrinters();
  return installed.isEmpty() ? QPrinterInfo() : installed.first();
}

}  // namespace

std::vector<std::string> QtPrinting::Printers() const {
  std::vector<std::string> names;
  for (const QString& name : QPrinterInfo::availablePrinterNames()) names.push_back(FromQt(name));
  return names;
}

QPrinter& QtPrinting::Chosen() const {
  if (!printer_) {
    const QPrinterInfo first = FirstChoice();
    if (first.isNull()) {
      throw std::runtime_error("No printer is installed.  The document can be saved as PDF.");
    }
    printer_ = std::make_unique<QPrinter>(first, QPrinter::HighResolution);
  }
  return *printer_;
}

std::string QtPrinting::PrinterName() const {
  return Printers().empty() ? std::string() : FromQt(Chosen().printerName());
}

// The finest quality that the printer's resolution reaches.
PrintQuality QtPrinting::Quality() const {
  if (Printers().empty()) return PrintQuality::high;
  std::size_t quality = kResolutions.size() - 1;
  while (quality > 0 && kResolutions[quality] > Chosen().resolution()) --quality;
  return static_cast<PrintQuality>(quality);
}

void QtPrinting::SetQuality(PrintQuality quality) {
  Chosen().setResolution(kResolutions.at(static_cast<std::size_t>(quality)));
}

bool QtPrinting::SetUp() {
  QPrintDialog dialog(&Chosen(), QApplication::activeWindow());
  dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
  dialog.setOption(QAbstractPrintDialog::PrintPageRange);
  // Nothing is printed here yet.
  dialog.setWindowTitle(QStringLiteral("Printer Setup"));
  if (const auto* const buttons = dialog.findChild<QDialogButtonBox*>()) {
    for (QAbstractButton* const button : buttons->buttons()) {
      if (buttons->buttonRole(button) == QDialogButtonBox::AcceptRole) {
        button->setText(QStringLiteral("OK"));
      }
    }
  }
  return dialog.exec() == QDialog::Accepted;
}

void QtPrinting::Print(const PrintDocument& document, Paper paper) {
  QPrinter& printer = Chosen();
  // The print system takes a job for a printer that is gone, and loses it without a word.
  if (!QPrinterInfo::availablePrinterNames().contains(printer.printerName())) {
    throw std::runtime_error("The printer '" + FromQt(printer.printerName()) +
                             "' is not installed any more.");
  }
  // A choice of pages holds for one document.
  const auto allAgain = qScopeGuard([&printer] {
    printer.setPrintRange(QPrinter::AllPages);
    printer.setFromTo(0, 0);
  });
  printer.setDocName(ToQt(document.title));
  LayOut(printer, paper);
  const PageSetter pages(document, paper);
  const bool range = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
  const auto all = static_cast<int>(pages.Pages().size());
  const int first = range ? printer.fromPage() : 1;
  if (first > all) {
    throw std::runtime_error("The document has " + std::to_string(all) + " pages.");
  }
  DrawPages(pages, printer, first, range ? std::min(printer.toPage(), all) : all);
}

}  // namespace velmoor::qt

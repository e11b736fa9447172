// A desktop program: the application object, the window adapters, the event loop.
#pragma once

#include <memory>

#include "platform/World.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtEventPump.h"
#include "platform/qt/QtFileDialogs.h"
#include "platform/qt/QtForms.h"
#include "platform/qt/QtHelpViewer.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/QtPdfMaker.h"
#include "platform/qt/QtPrinting.h"

class QApplication;

namespace velmoor::qt {

class QtProgram {
 public:
  // `argc` and `argv` must outlive the object. Takes the colours from the settings, where there are
  // any; an error that no procedure handled goes to the world's handler, or is shown.
  QtProgram(int& argc, char** argv, const Settings* settings);
  ~QtProgram();
  QtProgram(const QtProgram&) = delete;
  QtProgram& operator=(const QtProgram&) = delete;

  // Puts the window adapters into `target`.
  void FillWorld(World& target);
  // Qt and the system, for World::foundations.
  [[nodiscard]] static std::vector<std::string> Versions();
  // Serves events until Quit.
  int Run();
  void Quit();

 private:
  std::unique_ptr<QApplication> application_;
  QtMessageBoxes boxes_;
  QtFileDialogs dialogs_;
  QtClipboard clipboard_;
  QtAppearanceDialogs appearance_;
  QtTextViewer textViewer_;
  QtHelpViewer helpViewer_;
  QtPdfMaker pdf_;
  QtPrinting printing_;
  QtEventPump events_;
  QtForms forms_;
};

}  // namespace velmoor::qt

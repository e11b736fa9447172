// The desktop program on a new project with the windows of the motion tables, over a simulated
// amplifier.
#pragma once

#include <string>
#include <vector>

#include "app/AppSession.h"
#include "tables/TableCsv.h"
#include "tables/TableWindow.h"

namespace velmoor {

class TableSession : public AppSession {
 protected:
  using Position = clsHX7Position;

  void SetUp() override {
    path = data.MakeProject("line1.spj");
    ASSERT_TRUE(Start(path));
    data.boxes.shown.clear();
  }
  void GoOnline() {
    Main().Choose("mnuToolsOnline");
    ASSERT_EQ(Status(), "System Status: Online");
    data.boxes.shown.clear();
    Amplifier().ForgetWhatWasAsked();
  }

  clsHX7Position& Index() { return Project().Position(); }
  // Opens the window of the index, zone or jog table.
  headless::HeadlessForm& Open(const std::string& command) {
    Main().Choose(command);
    return *dynamic_cast<headless::HeadlessForm*>(data.forms.Active());
  }
  headless::HeadlessForm& OpenIndex() { return Open("mnuToolsIndexerPosition"); }

  // Puts whole steps from step 1 on, as an import does: label, position, ... next.
  void Programme(const std::vector<std::string>& steps) {
    std::string text = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
    for (const std::string& step : steps) text += step + "\n";
    ASSERT_EQ(ImportCsv(Project(), Index(), text), std::vector<std::string>());
    ASSERT_TRUE(Index().ChangeAccepted());
  }
  std::vector<std::string> Column(int column, int rows) {
    std::vector<std::string> texts;
    for (int row = 1; row <= rows; ++row) texts.push_back(Index().Text(row, column));
    return texts;
  }
  std::vector<std::string> Marks(const MotionTable& table, int rows) {
    std::vector<std::string> marks;
    for (int row = 1; row <= rows; ++row) marks.push_back(table.DirtyCell(row));
    return marks;
  }
};

}  // namespace velmoor

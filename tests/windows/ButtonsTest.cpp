// The main buttons of the windows, pressed on the real widgets, and what reaches the amplifier, the
// project and the screen.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <algorithm>

#include "ScreenSession.h"
#include "platform_qt/QtTestUser.h"

namespace velmoor::qt {
namespace {

class Buttons : public ScreenSession {
 protected:
  void SetUp() override {
    Start();
    Choose("mnuToolsOnline");
    data.boxes.shown.clear();
  }
  static void Press(QWidget& window, const char* button) {
    auto* const found = window.findChild<QPushButton*>(QString::fromLatin1(button));
    ASSERT_NE(found, nullptr) << button;
    EXPECT_TRUE(found->isEnabled()) << button;
    QTest::mouseClick(found, Qt::LeftButton);
    ServeEvents();
  }
  static void Press(const char* button) { Press(*Widget<QPushButton>(button).window(), button); }
  static std::string Shown(const char* label) { return Widget<QLabel>(label).text().toStdString(); }
  // Types into the current cell, and leaves it.
  static void TypeInCell(QWidget& window, int row, int column, const char* text) {
    auto& grid = *window.findChild<QTableView*>(QStringLiteral("vsFG"));
    grid.setCurrentIndex(grid.model()->index(row, column));
    grid.edit(grid.currentIndex());
    // The one before may not be gone yet.
    auto* const editor = qobject_cast<QLineEdit*>(grid.indexWidget(grid.currentIndex()));
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    TypeText(*editor, QString::fromLatin1(text));
    PressKey(*editor, Qt::Key_Return);
    ServeEvents();
  }
  SimulatedAmplifier& Amplifier() { return *line.Amplifier('0'); }
  clsHX7Project& Project() { return dynamic_cast<clsHX7Project&>(*gMainForm->CurrentProject()); }
  std::string LastBox() const {
    return data.boxes.shown.empty() ? "" : data.boxes.shown.back().text;
  }
};

TEST_F(Buttons, ATableIsAppliedAndClosedByItsButtons) {
  Choose("mnuToolsIndexerJog");
  QWidget& jog = Child("frmJog");
  EXPECT_FALSE(jog.findChild<QPushButton*>("cmdApply")->isEnabled());
  TypeInCell(jog, 3, 1, "7.5");
  Press(jog, "cmdApply");
  EXPECT_EQ(Project().Jog().Text(4, 0), "7.500");
  EXPECT_FALSE(jog.findChild<QPushButton*>("cmdApply")->isEnabled());
  TypeInCell(jog, 3, 1, "8");
  data.boxes.Expect("discard", BoxAnswer::no);
  Press(jog, "cmdCancel");
  EXPECT_TRUE(Project().IsShown(Tool::jog));
  Press(jog, "cmdOK");
  EXPECT_FALSE(Project().IsShown(Tool::jog));
  EXPECT_EQ(Project().Jog().Text(4, 0), "8.000");
}

TEST_F(Buttons, AParameterIsFoundAppliedAndSent) {
  Choose("mnuToolsEditor", [this] {
    TypeText(Widget<QLineEdit>("txtFilter"), QStringLiteral("Pn100"));
    auto& grid = Widget<QTableView>("vsFG");
    int row = 0;
    while (grid.isRowHidden(row)) ++row;
    TypeInCell(*grid.window(), row, 3, "41");
    Press("cmdApply");
    EXPECT_EQ(Project().EditorService().GetParameterValue("Pn100"), "41");
  });
  Choose("mnuToolsTuning", [this] {
    Amplifier().ForgetWhatWasAsked();
    data.boxes.Expect("Existing gain tuning parameters", BoxAnswer::ok);
    Press("cmdDownload");
    EXPECT_EQ(std::ranges::count_if(Amplifier().Journal(),
                                    [](const JournalEntry& entry) {
                                      return entry.line.starts_with("0PRM100=") &&
                                             entry.line.ends_with("41");
                                    }),
              1);
  });
}

TEST_F(Buttons, TheTestRunTurnsTheMotorWhileItsButtonIsHeld) {
  Choose("mnuToolsServoJog", [this] {
    data.boxes.Expect("Use extreme caution!", BoxAnswer::yes);
    Press("cmdServo");
    EXPECT_EQ(Shown("lblServo"), "Servo on");
    auto& jog = Widget<QPushButton>("cmdJog_1");
    QTest::mousePress(&jog, Qt::LeftButton);
    EXPECT_TRUE(Amplifier().State().axis.IsMoving());
    QTest::mouseRelease(&jog, Qt::LeftButton);
    port.Advance(std::chrono::seconds(2));
    Amplifier().AdvanceTo(port.Now());
    EXPECT_FALSE(Amplifier().State().axis.IsMoving());
  });
  EXPECT_FALSE(gMainForm->Helix7()->MotorMayBeOn());
}

TEST_F(Buttons, MonitoringReadsWhatIsTickedUntilItIsStopped) {
  Choose("mnuToolsMonitoring");
  QWidget& window = Child("frmMonitoring");
  window.findChild<QCheckBox*>("chkOption_0")->click();
  Amplifier().ForgetWhatWasAsked();
  QTimer::singleShot(20, &window, [&window] { Press(window, "cmdMonitoring"); });
  Press(window, "cmdMonitoring");
  EXPECT_GT(Amplifier().Asked("PUN"), 0);
  EXPECT_EQ(window.findChild<QPushButton*>("cmdMonitoring")->text(), "Begin &Monitor");
  Press(window, "cmdExit");
}

TEST_F(Buttons, WhatIsAskedOfTheAmplifierIsShownOrSet) {
  Choose("mnuToolsProductInformation", [] {
    for (int i = 0; i < 9; ++i) EXPECT_NE(Shown(("lblValues_" + std::to_string(i)).c_str()), "");
  });
  Choose("mnuToolsInertiaRatio", [this] {
    Press("cmdSet");
    EXPECT_EQ(LastBox(), "Inertia Ratio was set successfully!");
  });
  Choose("mnuToolsHomePosition", [this] {
    data.boxes.Expect("Caution!", BoxAnswer::no);
    Press("cmdUpdate");
    EXPECT_EQ(Amplifier().Asked("ZSET"), 0);
  });
  Choose("mnuToolsCommunicationsSettings", [] {
    Press("cmdRefresh");
    Press("cmdGetAxes");
    EXPECT_EQ(Shown("lblQuery"), "Query Finished");
    EXPECT_EQ(Widget<QComboBox>("cmbAxes").count(), 1);
  });
}

TEST_F(Buttons, APrintDialogTicksEnableItsButtons) {
  Choose("mnuFilePrint", [] {
    EXPECT_FALSE(Widget<QPushButton>("cmdPreview").isEnabled());
    Press("cmdAll");
    EXPECT_TRUE(Widget<QPushButton>("cmdPreview").isEnabled());
    Press("cmdNone");
    EXPECT_FALSE(Widget<QPushButton>("cmdSavePDF").isEnabled());
  });
}

}  // namespace
}  // namespace velmoor::qt

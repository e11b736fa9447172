#include <gtest/gtest.h>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

#include "QtTestUser.h"
#include "layouts/frmMain.h"
#include "platform/Clipboard.h"
#include "platform/Events.h"
#include "platform/FileDialogs.h"
#include "platform/MainWindow.h"
#include "platform/MessageBoxes.h"
#include "platform/World.h"
#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

class QtMainWindowTest : public testing::Test {
 protected:
  QtMainWindowTest() : main_(world().forms->LoadMainWindow(layouts::frmMain::kLayout)) {
    main_->Show();
  }
  std::unique_ptr<MainWindow> main_;
};

TEST_F(QtMainWindowTest, RecentEntriesHideEmptyPlacesAndTheirSeparator) {
  main_->SetRecentEntries({"&1 /a.spj", "", "&3 /c.spj"});
  std::vector<int> places;
  const Connection held = main_->RecentChosen.Connect([&](int p) { places.push_back(p); });
  Widget<QAction>("recentFile_2").trigger();
  EXPECT_FALSE(Widget<QAction>("recentFile_1").isVisible());
  EXPECT_TRUE(Widget<QAction>("recentSeparator").isVisible());
  EXPECT_EQ(places, std::vector<int>{2});
  main_->SetRecentEntries({"", ""});
  EXPECT_FALSE(Widget<QAction>("recentSeparator").isVisible());
}

// The text is white there; an icon in the colours of the other rows could hardly be seen.
TEST_F(QtMainWindowTest, AHighlightedRowOfAMenuHasItsIconInTheColourOfItsText) {
  QMenu menu;
  QAction* const row = menu.addAction(ProgramIcon(QStringLiteral("upload")), QString());
  menu.resize(menu.sizeHint());
  menu.setActiveAction(row);
  const QImage image = menu.grab(menu.actionGeometry(row).adjusted(3, 3, -3, -3)).toImage();
  constexpr int kBright = 200;
  constexpr int kDark = 60;
  int bright = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      bright += image.pixelColor(x, y).lightness() > kBright ? 1 : 0;
      EXPECT_GT(image.pixelColor(x, y).lightness(), kDark) << x << "," << y;
    }
  }
  EXPECT_GT(bright, 10);
}

TEST_F(QtMainWindowTest, ClosingRunsBothEventsAndOnlyThenEnds) {
  std::string seen;
  bool refuse = true;
  Connections held;
  held += main_->QueryUnload.Connect([&] { seen += 'q'; });
  held += main_->Unload.Connect([&](bool& cancel) {
    seen += 'u';
    EXPECT_FALSE(main_->Close()) << "a close within the close";
    cancel = refuse;
  });
  held += main_->Closed.Connect([&] { seen += 'c'; });
  QWidget* const window = Widget<QLabel>("frmMainStatus").window();
  window->close();
  EXPECT_TRUE(main_->IsVisible());
  refuse = false;
  window->close();
  EXPECT_FALSE(main_->IsVisible());
  EXPECT_EQ(seen, "ququc");
}

TEST_F(QtMainWindowTest, AStoredPlaceOffTheScreenIsBroughtBack) {
  main_->SetGeometry(20000, -5000, 700, 500);
  const WindowGeometry place = main_->Geometry();
  EXPECT_EQ(place.width, 700);
  EXPECT_GE(place.left, 0);
  EXPECT_LT(place.left, 800);
  EXPECT_GE(place.top, 0);
  main_->SetGeometry(std::nullopt, std::nullopt, std::nullopt, 450);
  EXPECT_EQ(main_->Geometry().width, 700);
  EXPECT_EQ(main_->Geometry().height, 450);
}

TEST(QtBoxTest, TheAnswersOfEachBox) {
  struct Case {
    BoxButtons buttons;
    int press;  // a QMessageBox button, or 0: closed by its frame
    BoxAnswer answer;
  };
  const Case cases[] = {
      {BoxButtons::ok, QMessageBox::Ok, BoxAnswer::ok},
      {BoxButtons::ok, 0, BoxAnswer::ok},
      {BoxButtons::okCancel, QMessageBox::Ok, BoxAnswer::ok},
      {BoxButtons::okCancel, 0, BoxAnswer::cancel},
      {BoxButtons::yesNo, QMessageBox::Yes, BoxAnswer::yes},
      {BoxButtons::yesNo, QMessageBox::No, BoxAnswer::no},
      {BoxButtons::yesNo, 0, BoxAnswer::no},
      {BoxButtons::yesNoCancel, QMessageBox::No, BoxAnswer::no},
      {BoxButtons::yesNoCancel, 0, BoxAnswer::cancel},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(&test - cases);
    WhenModal([&](QWidget& modal) {
      auto& box = dynamic_cast<QMessageBox&>(modal);
      EXPECT_EQ(box.text(), QStringLiteral("First <b>\nsecond"));
      if (test.press == 0) {
        box.close();
      } else {
        box.button(static_cast<QMessageBox::StandardButton>(test.press))->click();
      }
    });
    EXPECT_EQ(
        world().boxes->Show(BoxKind::question, test.buttons, "First <b>\rsecond", "", nullptr),
        test.answer);
  }
}

TEST(QtBoxTest, AStrayEnterAgreesToQuestionsThatLoseNothing) {
  for (const auto& [kind, answer] : {std::pair(BoxKind::question, BoxAnswer::yes),
                                     {BoxKind::graveQuestion, BoxAnswer::no},
                                     {BoxKind::exclamation, BoxAnswer::no}}) {
    WhenModal([](QWidget& modal) {
      ServeEvents();
      PressKey(modal, Qt::Key_Return);
    });
    EXPECT_EQ(world().boxes->Show(kind, BoxButtons::yesNo, "Go on?", "", nullptr), answer);
  }
}

TEST(QtBoxTest, CtrlCCopiesTheWords) {
  WhenModal([](QWidget& modal) {
    ServeEvents();
    QTest::keyClick(&modal, Qt::Key_C, Qt::ControlModifier);
    modal.close();
  });
  (void)world().boxes->Show(BoxKind::question, BoxButtons::ok, "First\rsecond", "", nullptr);
  EXPECT_EQ(world().clipboard->Text(), "First\nsecond");
}

TEST(QtFileDialogTest, SaveProposesTheNameAndAddsTheEnding) {
  const QTemporaryDir directory;
  const FileDialogRequest request{.title = "Save Project As",
                                  .filter = "Project File (*.spj)|*.spj",
                                  .defaultSuffix = "spj",
                                  .initialDirectory = FromQt(directory.path()),
                                  .initialName = "line1"};
  WhenModal([](QWidget& modal) {
    auto& dialog = dynamic_cast<QFileDialog&>(modal);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Save Project As"));
    EXPECT_EQ(dialog.nameFilters(), QStringList(QStringLiteral("Project File (*.spj)")));
    EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), QStringLiteral("line1"));
    static_cast<QDialog&>(dialog).accept();
  });
  EXPECT_EQ(world().dialogs->SaveFile(request, true),
            FromQt(directory.filePath(QStringLiteral("line1.spj"))));
  WhenModal([](QWidget& modal) { dynamic_cast<QDialog&>(modal).reject(); });
  EXPECT_EQ(world().dialogs->OpenFile(request), std::nullopt);
}

TEST(QtEventPumpTest, PostedWorkRunsAtTheNextYieldAndAWaitEndsInTime) {
  bool ran = false;
  world().events->Post([&] { ran = true; });
  EXPECT_FALSE(ran);
  YieldEvents();
  EXPECT_TRUE(ran);
  const auto start = std::chrono::steady_clock::now();
  world().events->WaitForEvents(std::chrono::milliseconds(20));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

}  // namespace
}  // namespace velmoor::qt

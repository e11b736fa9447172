#include "platform/qt/HelpWindow.h"

#include <gtest/gtest.h>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWindow>

#include "QtTestUser.h"
#include "layouts/frmCommunications.h"
#include "layouts/frmDialogStop.h"
#include "platform/Form.h"
#include "platform/HelpViewer.h"
#include "platform/Settings.h"
#include "platform/World.h"
#include "platform/qt/GuideView.h"
#include "platform/qt/QtAppearance.h"

namespace velmoor::qt {
namespace {

class HelpWindowTest : public testing::Test {
 protected:
  void SetUp() override { Show("index.md", ""); }
  void TearDown() override { Window().close(); }

  static void Show(const char* page, const char* anchor) {
    world().helpViewer->ShowPage(page, anchor);
    ServeEvents();
  }
  static GuideView& View() { return dynamic_cast<GuideView&>(Widget<QTextBrowser>("helpPage")); }
  static QWidget& Window() { return *View().window(); }
  static void Choose(const char* tool) {
    for (QAction* const action : Window().findChildren<QAction*>()) {
      if (action->text() == QLatin1String(tool)) action->trigger();
    }
  }
};

TEST_F(HelpWindowTest, HoldsEveryPageWithItsHeadingsAndPictures) {
  const auto pages = GuidePages();
  EXPECT_EQ(Widget<QTreeWidget>("helpContents").topLevelItemCount(),
            static_cast<int>(pages.size()));
  EXPECT_GT(pages.size(), 10U);
  for (const GuidePage& page : pages) {
    ASSERT_TRUE(View().ShowPage(page.file)) << page.file.toStdString();
    for (QTextBlock block = View().document()->begin(); block.isValid(); block = block.next()) {
      for (auto at = block.begin(); !at.atEnd(); ++at) {
        const QTextCharFormat format = at.fragment().charFormat();
        if (!format.isImageFormat()) continue;
        EXPECT_GT(format.toImageFormat().width(), 0);
      }
    }
  }
}

TEST_F(HelpWindowTest, GoesToTheHeadingAndBack) {
  Show("tables.md", "jog-table");
  EXPECT_EQ(View().textCursor().block().text(), "Jog table");
  EXPECT_GT(View().verticalScrollBar()->value(), 0);
  EXPECT_EQ(Window().windowTitle(), "The tables - Velmoor User Guide");
  EXPECT_EQ(Widget<QTreeWidget>("helpContents").currentItem()->text(0), "Jog table");
  Choose("Back");
  EXPECT_EQ(View().Page(), "index.md");
  EXPECT_EQ(Window().windowTitle(), "Velmoor User Guide");
  Choose("Forward");
  EXPECT_EQ(View().textCursor().block().text(), "Jog table");
}

TEST_F(HelpWindowTest, AnUnknownPageIsTheFirstAndAnUnknownHeadingTheTop) {
  Show("tables.md", "nowhere");
  EXPECT_EQ(View().Page(), "tables.md");
  EXPECT_EQ(View().verticalScrollBar()->value(), 0);
  Show("nowhere.md", "");
  EXPECT_EQ(View().Page(), "index.md");
}

TEST_F(HelpWindowTest, FindsOnThePagesBehind) {
  auto& find = Widget<QLineEdit>("helpFind");
  find.setText("dialout");
  PressKey(find, Qt::Key_Return);
  EXPECT_EQ(View().Page(), "serial-ports.md");
  EXPECT_EQ(View().textCursor().selectedText(), "dialout");
  // As the page shows it, not as its source marks it; and in sight.
  find.setText("Home Position sets the home offset");
  PressKey(find, Qt::Key_Return);
  EXPECT_EQ(View().Page(), "test-run.md");
  EXPECT_TRUE(View().viewport()->rect().contains(View().cursorRect()));
  find.setText("no such word anywhere");
  PressKey(find, Qt::Key_Return);
  EXPECT_EQ(Widget<QLabel>("helpFound").text(), "Not found");
}

TEST_F(HelpWindowTest, KeepsSizeAndZoom) {
  Window().resize(900, 610);
  Choose("Larger");
  Window().close();
  EXPECT_EQ(world().settings->ReadText("Size_helpWindow", ""), "900x610");
  EXPECT_EQ(world().settings->ReadNumber("HelpZoom", 0), 1);
  Show("index.md", "");
  Choose("Smaller");
}

TEST_F(HelpWindowTest, ChangesItsColoursWithTheProgram) {
  SetDark(true);
  ServeEvents();
  const auto linkColor = [] {
    for (QTextBlock block = View().document()->begin(); block.isValid(); block = block.next()) {
      for (auto at = block.begin(); !at.atEnd(); ++at) {
        const QTextCharFormat format = at.fragment().charFormat();
        if (format.isAnchor()) return format.foreground().color().name();
      }
    }
    return QString();
  };
  EXPECT_EQ(linkColor(), "#6db3f0");
  SetDark(false);
  ServeEvents();
  EXPECT_EQ(linkColor(), "#1f6fb2");
}

TEST_F(HelpWindowTest, TakesInputWhileAModalFormIsUpThatOpenedLater) {
  const auto form = world().forms->Load(layouts::frmDialogStop::kLayout);
  form->Show(FormMode::blocking);
  ServeEvents();
  Show("machine.md", "");
  EXPECT_EQ(View().Page(), "machine.md");
  EXPECT_EQ(Window().windowHandle()->transientParent(),
            QApplication::activeModalWidget()->windowHandle());
}

TEST(HelpKeyTest, F1AndTheButtonTellTheFormThatHasTheKeyboard) {
  const auto form = world().forms->Load(layouts::frmCommunications::kLayout);
  std::vector<const Form*> asked;
  const Connection held =
      world().forms->HelpAsked.Connect([&](const Form* f) { asked.push_back(f); });
  form->Show(FormMode::blocking);
  ServeEvents();
  PressKey(Widget<QComboBox>("cmbAxes"), Qt::Key_F1);
  Widget<QPushButton>("cmdHelp").click();
  EXPECT_EQ(asked, (std::vector<const Form*>{form.get(), form.get()}));
}

}  // namespace
}  // namespace velmoor::qt

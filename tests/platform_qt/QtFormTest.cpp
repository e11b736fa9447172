#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScreen>

#include "QtTestUser.h"
#include "layouts/frmCommunications.h"
#include "layouts/frmDialogPOut.h"
#include "layouts/frmDialogStop.h"
#include "layouts/frmMain.h"
#include "platform/Form.h"
#include "platform/MainWindow.h"
#include "platform/Settings.h"
#include "platform/World.h"
#include "platform/qt/FormLayouts.h"
#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtControls.h"

namespace velmoor::qt {
namespace {

std::unique_ptr<Form> Communications() {
  return world().forms->Load(layouts::frmCommunications::kLayout);
}

TEST(QtFormTest, EscapePressesCancelAndEnterTheDefaultButton) {
  const auto form = Communications();
  const layouts::frmCommunications ui(*form);
  std::string pressed;
  Connections held;
  held += ui.cmdCancel.Click.Connect([&] { pressed += 'c'; });
  held += ui.cmdConnect.Click.Connect([&] { pressed += 'd'; });
  form->Show(FormMode::blocking);
  ServeEvents();
  PressKey(Widget<QComboBox>("cmbAxes"), Qt::Key_Escape);
  PressKey(Widget<QComboBox>("cmbAxes"), Qt::Key_Return);
  EXPECT_EQ(pressed, "cd");
}

TEST(QtFormTest, AnOpenListHasEscapeAndEnterForItself) {
  const auto form = world().forms->Load(layouts::frmDialogPOut::kLayout);
  const layouts::frmDialogPOut ui(*form);
  std::string pressed;
  Connections held;
  held += ui.cmdCancel.Click.Connect([&] { pressed += 'c'; });
  held += ui.cmdOK.Click.Connect([&] { pressed += 'd'; });
  held += ui.cmbPOut[0].Click.Connect([&] { pressed += ui.cmbPOut[0].Text(); });
  ui.cmbPOut[0].SetItems({"x", "y"});
  form->Show(FormMode::blocking);
  ServeEvents();
  auto& combo = Widget<QComboBox>("cmbPOut0");
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
    combo.setCurrentIndex(1);
    combo.showPopup();
    ServeEvents();
    PressKey(*combo.view(), key);
    ServeEvents();
    EXPECT_FALSE(combo.view()->isVisible());
  }
  EXPECT_EQ(pressed, "y");
  PressKey(combo, Qt::Key_Escape);
  EXPECT_EQ(pressed, "yc");
}

TEST(QtFormTest, ChildrenOfTheMainWindowAreListedActivatedAndClosed) {
  const auto main = world().forms->LoadMainWindow(layouts::frmMain::kLayout);
  main->Show();
  const auto first = Communications();
  auto second = world().forms->Load(layouts::frmDialogStop::kLayout);
  int activated = 0;
  bool unloaded = false;
  Connections held;
  held += first->Activated.Connect([&] { ++activated; });
  held += second->Unloaded.Connect([&] { unloaded = true; });
  first->Show(FormMode::modeless);
  second->Show(FormMode::modeless);
  EXPECT_EQ(world().forms->Shown(), (std::vector<Form*>{first.get(), second.get()}));
  EXPECT_EQ(world().forms->Active(), second.get());
  first->Activate();
  EXPECT_EQ(world().forms->Active(), first.get());
  EXPECT_EQ(activated, 2);
  main->Arrange(Arrangement::tileHorizontal);
  main->Arrange(Arrangement::cascade);
  EXPECT_TRUE(second->Unload());
  EXPECT_TRUE(unloaded);
  EXPECT_EQ(world().forms->Shown(), std::vector<Form*>{first.get()});
}

TEST(QtFormTest, AWindowOpensInTheSizeThatTheUserGaveIt) {
  const auto main = world().forms->LoadMainWindow(layouts::frmMain::kLayout);
  main->Show();
  // Opens the window, gives it another size where one is told, closes it. Its size before that.
  const auto visit = [](FormMode mode, std::optional<QSize> size) {
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the one before
    const auto form = world().forms->Load(layouts::frmDialogPOut::kLayout);
    form->Show(mode);
    ServeEvents();
    QWidget& window = *Widget<QPushButton>("cmdCancel").window();
    auto* const child = window.findChild<QMdiSubWindow*>();
    QWidget& resized = mode == FormMode::modeless ? *child : window;
    const QSize opened = resized.size();
    if (size) resized.resize(*size);
    ServeEvents();
    form->Unload();
    return opened;
  };
  for (const FormMode mode : {FormMode::blocking, FormMode::modeless}) {
    const QSize designed = visit(mode, std::nullopt);
    EXPECT_EQ(visit(mode, designed + QSize(37, 21)), designed);
    EXPECT_EQ(visit(mode, std::nullopt), designed + QSize(37, 21));
    world().settings->Write("Size_frmDialogPOut", "99999x1");
    const QSize bounded = visit(mode, std::nullopt);
    EXPECT_LE(bounded.width(), std::max(Widget<QMdiArea>("mdiArea").width(),
                                        QGuiApplication::primaryScreen()->availableSize().width()));
    EXPECT_GT(bounded.height(), 20);
    for (const char* const nonsense : {"", "x", "-5x300", "300", "300x200x1", "ax900"}) {
      world().settings->Write("Size_frmDialogPOut", nonsense);
      EXPECT_EQ(visit(mode, std::nullopt), designed) << nonsense;
    }
  }
}

TEST(QtFormTest, ARefusedTextBoxKeepsTheFocusAndItsEnter) {
  QDialog window;
  auto* const edit = new QLineEdit(&window);
  auto* const button = new QPushButton(&window);
  button->setDefault(true);
  button->move(0, 50);
  QtTextBox box(*edit);
  bool refuse = true;
  int changes = 0;
  int accepted = 0;
  Connections held;
  held += box.Validate.Connect([&](bool& cancel) { cancel = refuse; });
  held += box.Change.Connect([&] { ++changes; });
  QObject::connect(button, &QPushButton::clicked, &window, [&] { ++accepted; });
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  edit->setFocus();
  box.SetText("1");
  TypeText(*edit, QStringLiteral("2"));
  EXPECT_EQ(box.Text(), "12");
  EXPECT_EQ(changes, 1);
  PressKey(*edit, Qt::Key_Return);
  EXPECT_EQ(accepted, 0);
  button->setFocus();
  ServeEvents();
  EXPECT_TRUE(edit->hasFocus());
  refuse = false;
  PressKey(*edit, Qt::Key_Return);
  EXPECT_EQ(accepted, 1);
}

TEST(QtFormTest, AHeldButtonIsLetGoWhenTheKeyboardGoes) {
  QPushButton widget;
  QtButton button(widget);
  std::string seen;
  Connections held;
  held += button.Down.Connect([&] { seen += 'd'; });
  held += button.Up.Connect([&] { seen += 'u'; });
  QTest::mousePress(&widget, Qt::LeftButton);
  QFocusEvent away(QEvent::FocusOut, Qt::TabFocusReason);
  QApplication::sendEvent(&widget, &away);
  EXPECT_EQ(seen, "du");
}

TEST(QtFormTest, APointerThatComesBackOntoAButtonStartsNothing) {
  QPushButton widget;
  widget.resize(80, 30);
  QtButton button(widget);
  std::string seen;
  Connections held;
  held += button.Down.Connect([&] { seen += 'd'; });
  held += button.Up.Connect([&] { seen += 'u'; });
  const auto drag = [&](int x) {
    QMouseEvent move(QEvent::MouseMove, QPointF(x, 15), QPointF(x, 15), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &move);
  };
  QTest::mousePress(&widget, Qt::LeftButton, {}, {40, 15});
  drag(200);
  EXPECT_EQ(seen, "du");
  drag(40);
  EXPECT_TRUE(widget.isDown()) << "Qt presses it again";
  EXPECT_EQ(seen, "du");
  QTest::mouseRelease(&widget, Qt::LeftButton, {}, {40, 15});
  EXPECT_EQ(seen, "du");
  QTest::mousePress(&widget, Qt::LeftButton, {}, {40, 15});
  QTest::mouseRelease(&widget, Qt::LeftButton, {}, {40, 15});
  QTest::keyPress(&widget, Qt::Key_Space);
  QTest::keyRelease(&widget, Qt::Key_Space);
  EXPECT_EQ(seen, "dududu");
}

TEST(QtFormTest, EveryIconThatALayoutNamesIsDrawn) {
  const std::unique_ptr<QWidget> main(MakeLayout("frmMain"));
  int named = 0;
  for (const QAction* const action : main->findChildren<QAction*>()) {
    const QVariant name = action->property("programIcon");
    if (!name.isValid()) continue;
    ++named;
    const QImage image = ProgramIcon(name.toString()).pixmap(24, 24).toImage();
    int drawn = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) drawn += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
    }
    EXPECT_GT(drawn, 20) << name.toString().toStdString();
  }
  EXPECT_GT(named, 15);
}

}  // namespace
}  // namespace velmoor::qt

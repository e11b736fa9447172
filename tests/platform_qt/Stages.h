// The two ways in which windows are shown, with a user in front of each: what a test asks of one
// must hold of the other.
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>
#include <memory>
#include <string>

#include "QtTestUser.h"
#include "platform/World.h"
#include "platform/headless/HeadlessWorld.h"
#include "platform/qt/QtText.h"

namespace velmoor {

// The real widgets, with real clicks and keys.
class QtStage {
 public:
  [[nodiscard]] Forms& forms() { return *world().forms; }
  void Press(const char* button) { Click(qt::Widget<QAbstractButton>(button)); }
  void Hold(const char* button) {
    QTest::mousePress(&qt::Widget<QAbstractButton>(button), Qt::LeftButton);
  }
  void LetGo(const char* button) {
    QTest::mouseRelease(&qt::Widget<QAbstractButton>(button), Qt::LeftButton);
  }
  void Type(const char* textBox, const char* text) {
    auto& edit = qt::Widget<QLineEdit>(textBox);
    edit.setFocus();
    edit.selectAll();
    qt::TypeText(edit, QString::fromLatin1(text));
  }
  // To another control. False: the box keeps the keyboard.
  bool Leave(const char* textBox) {
    auto& edit = qt::Widget<QLineEdit>(textBox);
    edit.window()->activateWindow();
    edit.setFocus();
    qt::ServeEvents();
    QTest::keyClick(&edit, Qt::Key_Tab);
    qt::ServeEvents();
    return !edit.hasFocus();
  }
  void Select(const char* comboBox, int item) {
    auto& combo = qt::Widget<QComboBox>(comboBox);
    combo.setCurrentIndex(item);
    Q_EMIT combo.activated(item);
  }
  void Check(const char* checkBox) { Click(qt::Widget<QAbstractButton>(checkBox)); }
  void Choose(const char* group, int choice) {
    Click(qt::Widget<QAbstractButton>((group + ("_" + std::to_string(choice))).c_str()));
  }
  void ChooseCommand(const char* command) { qt::Widget<QAction>(command).trigger(); }
  // Types over the current cell, and leaves it by Enter. False: it opened no editor.
  bool TypeInCell(const char* grid, const char* text) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the editor before
    auto& view = qt::Widget<QTableView>(grid);
    qt::PressKey(view, Qt::Key_F2);
    auto* const line = view.findChild<QLineEdit*>();
    if (line == nullptr) return false;
    line->selectAll();
    qt::TypeText(*line, QString::fromLatin1(text));
    qt::PressKey(*line, Qt::Key_Return);
    qt::ServeEvents();
    return true;
  }
  void GoDown(const char* grid) { qt::PressKey(qt::Widget<QTableView>(grid), Qt::Key_Down); }
  // Acts once a modal form is up.
  void WhenModal(const Layout& /*layout*/, std::function<void()> work) {
    qt::WhenModal([work = std::move(work)](QWidget&) { work(); });
  }
  void CloseByFrame(const Form& form) {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->objectName() == qt::ToQt(form.Name())) window->close();
    }
  }
  void Wait(std::chrono::milliseconds time) { QTest::qWait(static_cast<int>(time.count())); }

 private:
  static void Click(QAbstractButton& button) {
    QTest::mouseClick(&button, Qt::LeftButton, {},
                      qobject_cast<QPushButton*>(&button) != nullptr
                          ? button.rect().center()
                          : QPoint(8, button.height() / 2));
  }
};

// The twin.
class TwinStage {
 public:
  [[nodiscard]] Forms& forms() { return world_.forms; }
  void Press(const char* button) {
    if (Top().button(button).Enabled()) Top().Press(button);
  }
  void Hold(const char* button) { Top().Hold(button); }
  void LetGo(const char* button) { Top().LetGo(button); }
  void Type(const char* textBox, const char* text) { Top().Type(textBox, text); }
  bool Leave(const char* textBox) { return Top().Leave(textBox); }
  void Select(const char* comboBox, int item) {
    Top().Select(comboBox, Top().comboBox(comboBox).Items().at(static_cast<std::size_t>(item)));
  }
  void Check(const char* checkBox) { Top().Check(checkBox, !Top().checkBox(checkBox).Value()); }
  void Choose(const char* group, int choice) {
    if (Top().optionGroup(group).ChoiceEnabled(choice)) Top().Choose(group, choice);
  }
  void ChooseCommand(const char* command) {
    if (Top().command(command).Enabled()) Top().ChooseCommand(command);
  }
  bool TypeInCell(const char* grid, const char* text) {
    headless::HeadlessGrid& cells = Top().grid(grid);
    if (!cells.TypeInCell(text)) return false;
    (void)cells.FinishEdit();
    return true;
  }
  void GoDown(const char* grid) {
    headless::HeadlessGrid& cells = Top().grid(grid);
    int row = cells.Row() + 1;
    while (cells.RowHidden(row)) ++row;
    (void)cells.GoTo(row, cells.Column());
  }
  void WhenModal(const Layout& layout, std::function<void()> work) {
    world_.forms.OnShow(std::string(layout.name),
                        [work = std::move(work)](headless::HeadlessForm&) { work(); });
  }
  void CloseByFrame(Form& form) { form.Unload(); }
  void Wait(std::chrono::milliseconds time) { world_.events.WaitForEvents(time); }

 private:
  [[nodiscard]] headless::HeadlessForm& Top() {
    return dynamic_cast<headless::HeadlessForm&>(*world_.forms.Active());
  }
  headless::HeadlessWorld world_;
};

}  // namespace velmoor

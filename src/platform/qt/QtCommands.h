// Commands as the QActions of a window, by their object names; menus count as commands too.
#pragma once

#include <QAction>
#include <QMenu>
#include <QWidget>
#include <stdexcept>

#include "platform/Form.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {

template <typename Port>
class QtCommands : public Port {
 public:
  // Connects every action of the window whose name begins with "mnu".
  explicit QtCommands(QWidget& root) : root_(root) {
    for (QAction* const action : root.findChildren<QAction*>()) {
      const std::string name = FromQt(action->objectName());
      if (!name.starts_with("mnu")) continue;
      QObject::connect(action, &QAction::triggered, &context_,
                       [this, name] { this->CommandChosen.Raise(name); });
    }
  }

  void SetCommandEnabled(const std::string& name, bool on) override { Action(name).setEnabled(on); }
  [[nodiscard]] bool CommandEnabled(const std::string& name) const override {
    return Action(name).isEnabled();
  }
  void SetCommandVisible(const std::string& name, bool on) override { Action(name).setVisible(on); }
  [[nodiscard]] bool CommandVisible(const std::string& name) const override {
    return Action(name).isVisible();
  }
  void SetCommandChecked(const std::string& name, bool on) override { Action(name).setChecked(on); }
  [[nodiscard]] bool CommandChecked(const std::string& name) const override {
    return Action(name).isChecked();
  }

 protected:
  [[nodiscard]] QAction& Action(const std::string& name) const {
    if (auto* const action = root_.findChild<QAction*>(ToQt(name))) return *action;
    if (auto* const menu = root_.findChild<QMenu*>(ToQt(name))) return *menu->menuAction();
    throw std::logic_error("No command is named " + name);
  }

  QObject context_;  // ends the connections with the adapter

 private:
  QWidget& root_;
};

}  // namespace velmoor::qt

// The commands of a window's layout: its QActions, and the menus, by their object names.
#pragma once

#include <QAction>
#include <QMenu>
#include <QWidget>
#include <memory>
#include <vector>

#include "platform/Layout.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {

class QtCommand final : public Command {
 public:
  explicit QtCommand(QAction& action) : action_(action) {
    QObject::connect(&action, &QAction::triggered, &context_, [this] { Chosen.Raise(); });
    if (const QMenu* const menu = action.menu()) {
      QObject::connect(menu, &QMenu::aboutToShow, &context_, [this] { Chosen.Raise(); });
    }
  }

  void SetEnabled(bool enabled) override { action_.setEnabled(enabled); }
  [[nodiscard]] bool Enabled() const override { return action_.isEnabled(); }
  void SetVisible(bool visible) override { action_.setVisible(visible); }
  [[nodiscard]] bool Visible() const override { return action_.isVisible(); }
  void SetChecked(bool checked) override { action_.setChecked(checked); }
  [[nodiscard]] bool Checked() const override { return action_.isChecked(); }
  void SetText(const std::string& text) override { action_.setText(ToQt(text)); }
  [[nodiscard]] std::string Text() const override { return FromQt(action_.text()); }

 private:
  QAction& action_;
  QObject context_;  // ends the connection with the adapter
};

class QtCommands {
 public:
  QtCommands(const QWidget& root, const Layout& layout) {
    for (const CommandLayout& command : layout.commands) {
      const QString name =
          QString::fromUtf8(command.name.data(), static_cast<qsizetype>(command.name.size()));
      auto* action = root.findChild<QAction*>(name);
      if (action == nullptr) action = root.findChild<QMenu*>(name)->menuAction();
      commands_.push_back(std::make_unique<QtCommand>(*action));
    }
  }
  [[nodiscard]] Command& At(std::size_t place) const { return *commands_.at(place); }

 private:
  std::vector<std::unique_ptr<QtCommand>> commands_;
};

}  // namespace velmoor::qt

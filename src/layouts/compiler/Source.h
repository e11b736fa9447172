// A layout as its .ui file tells it, without what only the eye sees.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace velmoor::layouts {

struct SourceControl {
  QString name;
  QString kind;  // "Button", as the port's class is called
  QString text;
  QString toolTip;
  QStringList choices;
  int chosen = -1;
  bool enabled = true;
  bool visible = true;
  bool checked = false;
};

struct SourceCommand {
  QString name;
  QString text;
  bool enabled = true;
  bool visible = true;
  bool checked = false;
};

struct Source {
  QString name;
  QString caption;
  std::vector<SourceControl> controls;
  std::vector<SourceCommand> commands;
};

// Throws std::runtime_error with the place of the fault.
[[nodiscard]] Source ReadSource(const QString& path);

}  // namespace velmoor::layouts

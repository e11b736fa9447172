// Port: the main window, in which modeless forms are children.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Form.h"

namespace velmoor {

// Fields of the status bar; `connection` is the button in the toolbar under which the menu of the
// connection lies.
enum class StatusPanel { line, status, module, model, axis, port, baudRate, pending, connection };
enum class Arrangement { cascade, tileHorizontal, tileVertical };
enum class ToolBar { standard, module };

// In the units of the screen.
struct WindowGeometry {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const WindowGeometry&) const = default;
};

class MainWindow : public LaidOut {
 public:
  using LaidOut::LaidOut;
  virtual void SetCaption(const std::string& caption) = 0;
  [[nodiscard]] virtual std::string Caption() const = 0;
  // Marks the caption as holding changes that are not saved.
  virtual void SetChanged(bool changed) = 0;

  virtual void SetPanel(StatusPanel panel, const std::string& text) = 0;
  [[nodiscard]] virtual std::string Panel(StatusPanel panel) const = 0;
  // A panel was clicked.
  Event<StatusPanel> PanelChosen;
  // The lamp beside the state of the line: faint offline, busy polling, good online, alarm.
  virtual void SetStatusTone(Tone tone) = 0;
  [[nodiscard]] virtual Tone StatusTone() const = 0;

  // Captions of the recent files, place by place; an empty one is hidden, and the separator with
  // them when all are.
  virtual void SetRecentEntries(const std::vector<std::string>& captions) = 0;
  [[nodiscard]] virtual std::vector<std::string> RecentEntries() const = 0;
  Event<int> RecentChosen;  // place from 0

  // The user has let a file go over the window: its absolute path.
  Event<const std::string&> FileDropped;

  virtual void SetToolBarVisible(ToolBar bar, bool visible) = 0;
  virtual void SetStatusBarVisible(bool visible) = 0;
  virtual void Arrange(Arrangement arrangement) = 0;

  virtual void Show() = 0;
  [[nodiscard]] virtual bool IsVisible() const = 0;
  [[nodiscard]] virtual bool IsMinimised() const = 0;
  // To the foreground, restored when it was reduced to an icon.
  virtual void Activate() = 0;
  [[nodiscard]] virtual WindowGeometry Geometry() const = 0;
  // Fields that are absent stay as the layout has them; a place off every screen is moved onto one.
  virtual void SetGeometry(std::optional<int> left, std::optional<int> top,
                           std::optional<int> width, std::optional<int> height) = 0;

  // Closes as the user does: QueryUnload, then Unload. Returns whether it is closed. A call within
  // one of the two does nothing and returns false.
  virtual bool Close() = 0;
  Event<> QueryUnload;
  Event<bool&> Unload;  // a handler that sets the flag keeps the window
  Event<> Closed;       // gone from the screen; the program ends
};

}  // namespace velmoor

// Looks at the events of a widget before the widget does, without a class for each purpose.
#pragma once

#include <QEvent>
#include <QObject>
#include <functional>
#include <utility>

namespace velmoor::qt {

class EventWatch final : public QObject {
 public:
  // `look` returns true to keep the event from the widget.
  using Look = std::function<bool(QEvent&)>;
  EventWatch(QObject& watched, Look look) : look_(std::move(look)) {
    watched.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override { return look_(*event); }

 private:
  Look look_;
};

}  // namespace velmoor::qt

// The tools on the live hardware: passes of the monitoring window, and the way from the release of
// a jog button to the stop command.
#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <string>
#include <vector>

#include "Monitoring.h"
#include "PacedLine.h"
#include "WindowUser.h"

namespace velmoor::bench {
namespace {

constexpr std::int32_t kBaudRate = 38400;
constexpr int kPasses = 200;

// Counts the passes of a loop that asks for the same things in the same order.
class PassWatch {
 public:
  // `enough` is called in the middle of the exchange that begins the pass after the last.
  PassWatch(PacedLine& line, std::function<void()> enough)
      : line_(line), enough_(std::move(enough)) {
    line_.Port().written = [this](std::string_view text) { Look(text); };
  }
  ~PassWatch() { line_.Port().written = nullptr; }
  PassWatch(const PassWatch&) = delete;
  PassWatch& operator=(const PassWatch&) = delete;

  [[nodiscard]] const std::vector<LineRun>& Passes() const { return passes_; }

 private:
  void Look(std::string_view text) {
    if (first_.empty()) first_ = text;
    if (text != first_ || passes_.size() == kPasses) return;
    if (watch_) passes_.push_back(line_.RunSince(before_, watch_->Seconds()));
    watch_.emplace();
    before_ = line_.Port().bytes;
    if (passes_.size() == kPasses) enough_();
  }

  PacedLine& line_;
  std::function<void()> enough_;
  std::string first_;
  std::optional<Stopwatch> watch_;
  LineBytes before_;
  std::vector<LineRun> passes_;
};

void MeasurePasses(Workbench& bench, LiveSession& live, const std::string& items,
                   const std::vector<const char*>& ticks) {
  QPushButton& begin = ShowMonitoring(live.Project(), ticks);
  const PassWatch watch(live.Line(), [&] { QTimer::singleShot(0, &begin, &QPushButton::click); });
  begin.click();
  CloseWindows();
  bench.table.Add(LineFigure("A monitoring pass, " + items, kMilliseconds, watch.Passes()));
}

void SendMouse(QWidget& widget, QEvent::Type type) {
  const QPointF middle = QRectF(widget.rect()).center();
  const bool down = type == QEvent::MouseButtonPress;
  QMouseEvent event(type, middle, widget.mapToGlobal(middle), Qt::LeftButton,
                    down ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(&widget, &event);
}

// Until the first line after the release is with the system.
double TimeRelease(PacedLine& line, QPushButton& button) {
  SendMouse(button, QEvent::MouseButtonPress);
  std::optional<double> taken;
  const Stopwatch watch;
  line.Port().written = [&](std::string_view) {
    if (!taken) taken = watch.Seconds();
  };
  SendMouse(button, QEvent::MouseButtonRelease);
  line.Port().written = nullptr;
  Require(taken.has_value(), "the stop of a jog");
  return *taken;
}

void MeasureRelease(Workbench& bench, LiveSession& live) {
  Figure figure{
      "Release of a jog button to its stop", kMilliseconds, {}, Goal{20, Goal::Of::worst}, {}};
  WithinWindow([&] { (void)live.Project().ServoJog().Show_ServoJog(); },
               [&] {
                 InWindow<QPushButton>("cmdServo").click();
                 auto& jog = InWindow<QPushButton>("cmdJog_0");
                 for (int i = 0; i < 50; ++i) {
                   figure.samples.push_back(TimeRelease(live.Line(), jog));
                 }
               });
  bench.table.Add(figure);
}

}  // namespace

void MeasureOnline(Workbench& bench) {
  const auto window = ShowMainWindow();
  LiveSession live(bench, kBaudRate);
  MeasurePasses(bench, live, "one item", kOneItem);
  MeasurePasses(bench, live, "five items", kFiveItems);
  {
    const Recorded recorded;
    MeasurePasses(bench, live, "five items, recorded", kFiveItems);
  }
  MeasureRelease(bench, live);
}

}  // namespace velmoor::bench

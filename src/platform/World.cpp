#include "platform/World.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <utility>

#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Settings.h"
#include "platform/Utility.h"

namespace velmoor {
namespace {

World* gWorld = nullptr;

// How long boxes have kept the work waiting, those of the past and the outermost that stands now.
std::chrono::milliseconds gWaited{0};
std::optional<std::chrono::milliseconds> gWaitsSince;

class Waiting {
 public:
  Waiting() : outermost_(!gWaitsSince && world().clock != nullptr) {
    if (outermost_) gWaitsSince = world().clock->Monotonic();
  }
  ~Waiting() {
    if (!outermost_) return;
    gWaited += world().clock->Monotonic() - *gWaitsSince;
    gWaitsSince.reset();
  }
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

 private:
  bool outermost_;
};

BoxAnswer Show(BoxKind kind, BoxButtons buttons, const std::string& text,
               const std::string& title = {}, BoxTick* tick = nullptr) {
  constexpr const char* kAnswers[] = {"OK", "Cancel", "Yes", "No"};  // in the order of BoxAnswer
  if (TellsOfFailure(kind, buttons)) {
    LogWarning("box", text);
  } else {
    LogInformation("box", text);
  }
  BoxAnswer answer{};
  {
    const Waiting waiting;
    answer = world().boxes->Show(kind, buttons, text, title, tick);
  }
  if (buttons != BoxButtons::ok) {
    std::string ticked;
    for (const BoxTick* each = tick; each != nullptr; each = each->next) {
      if (each->on) ticked += ", ticked: " + each->caption;
    }
    LogInformation("box",
                   std::string("answer: ") + kAnswers[static_cast<std::size_t>(answer)] + ticked);
  }
  return answer;
}

}  // namespace

World& world() {
  if (gWorld == nullptr) throw std::logic_error("No platform adapters are in force");
  return *gWorld;
}

Log* CurrentLog() {
  return gWorld == nullptr ? nullptr : gWorld->log;
}

World* SetWorld(World* next) {
  World* const before = gWorld;
  gWorld = next;
  return before;
}

void ShowCritical(const std::string& text) {
  Show(BoxKind::critical, BoxButtons::ok, text);
}
void ShowExclamation(const std::string& text) {
  Show(BoxKind::exclamation, BoxButtons::ok, text);
}
void ShowInformation(const std::string& text) {
  Show(BoxKind::information, BoxButtons::ok, text);
}
void ShowPlain(const std::string& text, const std::string& title) {
  Show(BoxKind::plain, BoxButtons::ok, text, title);
}

std::string OneLine(std::string text) {
  std::ranges::replace(text, '\r', ' ');
  return text;
}

bool AskOkCancel(const std::string& text) {
  return Show(BoxKind::question, BoxButtons::okCancel, text) == BoxAnswer::ok;
}
bool AskOkCancel(const std::string& text, BoxTick& tick) {
  return Show(BoxKind::question, BoxButtons::okCancel, text, {}, &tick) == BoxAnswer::ok;
}
bool AskYesNo(const std::string& text) {
  return Show(BoxKind::question, BoxButtons::yesNo, text) == BoxAnswer::yes;
}
bool AskGraveYesNo(const std::string& text) {
  return Show(BoxKind::graveQuestion, BoxButtons::yesNo, text) == BoxAnswer::yes;
}
bool AskExclamationYesNo(const std::string& text) {
  return Show(BoxKind::exclamation, BoxButtons::yesNo, text) == BoxAnswer::yes;
}
BoxAnswer AskYesNoCancel(const std::string& text) {
  return Show(BoxKind::question, BoxButtons::yesNoCancel, text);
}

std::string MomentText(const WallTime& time) {
  const auto two = [](int number) { return PadToDigits(NumberText(number), 2); };
  return PadToDigits(NumberText(time.year), 4) + "-" + two(time.month) + "-" + two(time.day) + " " +
         two(time.hour) + ":" + two(time.minute) + ":" + two(time.second);
}

void YieldEvents() {
  world().events->Yield();
}

std::chrono::milliseconds WorkTime() {
  return gWaitsSince.value_or(world().clock->Monotonic()) - gWaited;
}

void PauseInSec(float seconds) {
  constexpr double kDay = 86400;
  constexpr std::chrono::milliseconds kLook{10};
  double start = world().clock->SecondsSinceMidnight();
  for (;;) {
    const double now = world().clock->SecondsSinceMidnight();
    if (now < start) start -= kDay;
    if (now - start >= static_cast<double>(seconds)) return;
    world().events->WaitForEvents(kLook);
  }
}

BusyPointer::BusyPointer() {
  world().events->SetBusyPointer(true);
}
BusyPointer::~BusyPointer() {
  world().events->SetBusyPointer(false);
}

int Settings::ReadNumber(std::string_view name, int fallback) const {
  const auto text = Read(name);
  const auto number = text ? ParseWhole(*text) : std::nullopt;
  return number && std::in_range<int>(*number) ? static_cast<int>(*number) : fallback;
}

std::string GetFileTitle(const std::string& fileName) {
  const std::size_t at = fileName.find_last_of("/\\");
  return at == std::string::npos ? fileName : fileName.substr(at + 1);
}

std::string GetFileDirectory(const std::string& fileName) {
  const std::size_t at = fileName.find_last_of("/\\");
  return at == std::string::npos ? std::string() : fileName.substr(0, at);
}

std::string JoinPath(const std::string& directory, const std::string& name) {
  if (directory.empty()) return name;
  return directory.back() == '/' ? directory + name : directory + "/" + name;
}

std::string DropRight(const std::string& text, std::size_t count) {
  return text.substr(0, text.size() - std::min(count, text.size()));
}

}  // namespace velmoor

#include "simulator/program/SimulatorProgram.h"

#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <iostream>
#include <utility>

namespace velmoor {
namespace {

volatile sig_atomic_t gSignalled = 0;
constexpr Micros kAxisLook = std::chrono::milliseconds(20);
constexpr Micros kConsoleLook = std::chrono::milliseconds(250);

Micros Now() {
  return std::chrono::duration_cast<Micros>(std::chrono::steady_clock::now().time_since_epoch());
}

void NoteSignal(int /*signal*/) {
  gSignalled = 1;
}

// A shell stops whoever reads the terminal from the background.
bool MayReadConsole() {
  return isatty(STDIN_FILENO) == 0 || tcgetpgrp(STDIN_FILENO) == getpgrp();
}

// Signals arrive only while the program waits, so that none falls between a look and the wait.
sigset_t CatchSignals() {
  struct sigaction action {};
  action.sa_handler = NoteSignal;
  sigset_t caught;
  sigemptyset(&caught);
  sigset_t whileWaiting;
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    sigaddset(&caught, number);
    sigaction(number, &action, nullptr);
  }
  sigprocmask(SIG_BLOCK, &caught, &whileWaiting);
  return whileWaiting;
}

}  // namespace

SimulatorProgram::SimulatorProgram(const ProgramOptions& options)
    : script_(options.script), paced_(options.paced), link_(options.link) {
  for (const AmplifierSettings& settings : options.amplifiers) line_.AddAmplifier(settings);
  console_.emplace(line_);
}

int SimulatorProgram::Run() {
  // Pacing needs finer sleep than the 50 microseconds that the system grants itself.
  prctl(PR_SET_TIMERSLACK, 1UL);
  signalMask_ = CatchSignals();
  Plug();
  if (!script_.empty() && !RunScript(script_)) return 1;
  while (!ends_ && gSignalled == 0) {
    ServeDue();
    Wait();
  }
  Unplug();
  return 0;
}

// ---- the line

void SimulatorProgram::Plug() {
  if (terminal_) return;
  terminal_.emplace();
  link_.PointTo(terminal_->Path());
  std::cout << "line at " << terminal_->Path() << std::endl;
}

void SimulatorProgram::Unplug() {
  link_.Remove();
  terminal_.reset();
  incoming_.clear();
  outgoing_.clear();
  line_.DropInput();
}

void SimulatorProgram::ReadLine() {
  std::string bytes = terminal_->Read();
  if (bytes.empty()) return;
  const std::int32_t baudRate = terminal_->HostBaudRate();
  receiveFree_ = std::max(receiveFree_, Now());
  if (paced_) receiveFree_ += WireTime(bytes.size(), baudRate);
  incoming_.push_back({.when = receiveFree_, .bytes = std::move(bytes), .baudRate = baudRate});
}

void SimulatorProgram::Schedule(const Transmission& transmission) {
  const Micros start = std::max(sendFree_, transmission.start);
  if (!paced_ || transmission.hangsUp) {
    sendFree_ = start;
    outgoing_.push_back({.when = start,
                         .bytes = transmission.bytes,
                         .baudRate = transmission.baudRate,
                         .hangsUp = transmission.hangsUp});
    return;
  }
  for (std::size_t i = 0; i < transmission.bytes.size(); ++i) {
    sendFree_ = start + WireTime(i + 1, transmission.baudRate);
    outgoing_.push_back({.when = sendFree_,
                         .bytes = transmission.bytes.substr(i, 1),
                         .baudRate = transmission.baudRate});
  }
}

void SimulatorProgram::ServeDue() {
  const Micros now = Now();
  for (SimulatedAmplifier& amplifier : line_.Amplifiers()) {
    if (amplifier.State().axis.IsBusy()) amplifier.AdvanceTo(now);
  }
  while (!incoming_.empty() && incoming_.front().when <= now) {
    const Due due = std::move(incoming_.front());
    incoming_.pop_front();
    // The line's own time, so that a late wake-up does not add up.
    for (const Transmission& sent : line_.Receive(due.bytes, due.when, due.baudRate)) {
      Schedule(sent);
    }
  }
  std::string bytes;
  bool hangsUp = false;
  while (!outgoing_.empty() && outgoing_.front().when <= now) {
    bytes += outgoing_.front().bytes;
    hangsUp = hangsUp || outgoing_.front().hangsUp;
    outgoing_.pop_front();
  }
  if (terminal_ && !bytes.empty()) terminal_->Write(bytes);
  if (hangsUp) Unplug();
}

std::optional<Micros> SimulatorProgram::NextDue() const {
  std::optional<Micros> next;
  if (!incoming_.empty()) next = incoming_.front().when;
  if (!outgoing_.empty()) next = std::min(next.value_or(Micros::max()), outgoing_.front().when);
  const auto isBusy = [](const SimulatedAmplifier& amplifier) {
    return amplifier.State().axis.IsBusy();
  };
  // An axis that moves must not fall behind by more than it can make up for at once.
  if (std::ranges::any_of(line_.Amplifiers(), isBusy)) {
    next = std::min(next.value_or(Micros::max()), Now() + kAxisLook);
  }
  // A shell that fetches the program to the front does not say so.
  if (consoleOpen_ && !MayReadConsole()) {
    next = std::min(next.value_or(Micros::max()), Now() + kConsoleLook);
  }
  return next;
}

void SimulatorProgram::Wait() {
  std::array<pollfd, 2> looks{
      pollfd{.fd = terminal_ ? terminal_->Descriptor() : -1, .events = POLLIN, .revents = 0},
      pollfd{.fd = consoleOpen_ && MayReadConsole() ? STDIN_FILENO : -1,
             .events = POLLIN,
             .revents = 0}};
  timespec limit{};
  const std::optional<Micros> next = NextDue();
  if (next) {
    const auto left = std::max(*next - Now(), Micros(0)).count();
    limit = {.tv_sec = left / 1'000'000, .tv_nsec = left % 1'000'000 * 1000};
  }
  const int ready = ppoll(looks.data(), looks.size(), next ? &limit : nullptr, &signalMask_);
  if (ready <= 0) return;
  if (looks[0].revents != 0 && terminal_) ReadLine();
  if (looks[1].revents != 0) ReadConsole();
}

// ---- the console

bool SimulatorProgram::RunScript(const std::string& file) {
  std::ifstream script(file);
  if (!script) {
    std::cerr << file << " cannot be read.\n";
    return false;
  }
  for (std::string line; std::getline(script, line) && !ends_;) ExecuteTyped(line);
  return true;
}

void SimulatorProgram::ExecuteTyped(std::string_view line) {
  const SimulatorConsole::Outcome outcome = console_->Execute(line, Now());
  (outcome.failed ? std::cerr : std::cout) << outcome.text << std::flush;
  switch (outcome.request) {
    case SimulatorConsole::Request::nothing:
      break;
    case SimulatorConsole::Request::quit:
      ends_ = true;
      break;
    case SimulatorConsole::Request::unplug:
      Unplug();
      break;
    case SimulatorConsole::Request::plug:
      Plug();
      break;
  }
}

void SimulatorProgram::ReadConsole() {
  std::array<char, 512> chunk{};
  const ssize_t count = read(STDIN_FILENO, chunk.data(), chunk.size());
  if (count <= 0) {
    if (count == 0 || errno != EINTR) consoleOpen_ = false;
    return;
  }
  typed_.append(chunk.data(), static_cast<std::size_t>(count));
  for (std::size_t end = typed_.find('\n'); end != std::string::npos; end = typed_.find('\n')) {
    const std::string line = typed_.substr(0, end);
    typed_.erase(0, end + 1);
    ExecuteTyped(line);
  }
}

}  // namespace velmoor

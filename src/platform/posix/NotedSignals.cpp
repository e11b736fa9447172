#include "platform/posix/NotedSignals.h"

#include <array>
#include <csignal>

namespace velmoor::posix {
namespace {

constexpr std::array<int, 3> kSignals{SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t gNoted = 0;
volatile std::sig_atomic_t gHungUp = 0;

void Handle(void (*handler)(int)) {
  for (const int number : kSignals) {
    struct sigaction action {};
    sigaction(number, nullptr, &action);
    // What the starter told the process to overlook, as nohup does, stays overlooked.
    if (action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = handler;
    action.sa_flags = handler == SIG_DFL ? 0 : SA_RESETHAND;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
  }
}

void Note(int number) {
  gNoted = number;
}

}  // namespace

NotedSignals::NotedSignals() {
  Handle(Note);
}
NotedSignals::~NotedSignals() {
  Handle(SIG_DFL);
}

bool NotedSignals::Came() {
  return gNoted != 0;
}

void NotedSignals::RereadAtHangUp() {
  struct sigaction action {};
  action.sa_handler = [](int) { gHungUp = 1; };
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(SIGHUP, &action, nullptr);
}

bool NotedSignals::HungUp() {
  if (gHungUp == 0) return false;
  gHungUp = 0;
  return true;
}

void NotedSignals::Settle() {
  gNoted = 0;
}

void EndBySignal() {
  if (gNoted != 0) std::raise(gNoted);
}

}  // namespace velmoor::posix

// The whole desktop program with its real windows, on a screen that exists in memory: files and
// databases are real, the amplifier is simulated, time passes at once, and boxes are answered by a
// script. Whatever comes up is examined.
#pragma once

#include <gtest/gtest.h>
#include <QMainWindow>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "app/MainModule.h"
#include "platform/Events.h"
#include "platform/Rx900Utils.h"
#include "platform/headless/OnlyInstance.h"
#include "simulator/InProcessPort.h"
#include "support/DataWorld.h"

namespace velmoor::qt {

class ScreenSession : public testing::Test {
 protected:
  // The world in force lends the windows.
  ScreenSession();
  ~ScreenSession() override;

  // Starts the program on a project that holds the sample.
  void Start();
  // Chooses a command of the main window. A dialog that it opens is examined, `inside` acts in it,
  // and it is left by its button.
  void Choose(const char* command, const std::function<void()>& inside = {});
  // Runs `work`, which opens a dialog; the same then.
  void InDialog(const std::function<void()>& work, const std::function<void()>& inside = {});
  void CloseChildren();
  // Examines what is on show and was not yet.
  void Look();

  QWidget& Child(const char* layout);
  [[nodiscard]] QMainWindow& Main() const;
  // By the names of their layouts.
  std::set<std::string> seen;

  World& windows;
  DataWorld data;
  StandardRx900Utils rx900Utils;
  SimulatedLine line;
  InProcessPort port;
  headless::OnlyInstance instance;
  std::unique_ptr<MainModule> module;

 private:
  // Real events, and a clock that moves as soon as somebody waits.
  class Pump final : public EventPump {
   public:
    explicit Pump(ScreenSession& session) : session_(session) {}
    void Yield() override;
    void WaitForEvents(std::chrono::milliseconds limit) override;
    void Post(std::function<void()> work) override;
    void SetBusyPointer(bool) override {}

   private:
    ScreenSession& session_;
  };

  void Examine(QWidget& window);

  Pump pump_{*this};
  std::set<QString> examined_;
};

}  // namespace velmoor::qt

// The whole desktop program without a screen: real files and databases, a simulated amplifier, and
// a user made of test code.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "app/MainModule.h"
#include "operations/TransferHistory.h"
#include "operations/Uploads.h"
#include "platform/Rx900Utils.h"
#include "platform/SingleInstance.h"
#include "simulator/InProcessPort.h"
#include "support/DataWorld.h"

namespace velmoor {

// The other process is the test.
class FakeInstance final : public SingleInstance {
 public:
  bool Claim(const std::string&) override {
    claimed = !otherRuns;
    return claimed;
  }
  void Release() override { claimed = false; }
  void Listen(std::function<void(std::string)> onMessage, std::function<bool()>,
              std::function<void()>) override {
    deliver = std::move(onMessage);
  }
  void StopListening() override { deliver = nullptr; }
  Running FindRunning() override { return other; }
  bool IsRunningVisible() override { return otherVisible; }
  void SendMessage(const std::string& bytes, std::chrono::milliseconds limit) override {
    sent.push_back(bytes);
    sendLimit = limit;
  }
  void ActivateRunning() override { ++activations; }

  bool otherRuns = false;
  Running other = Running::answers;
  bool otherVisible = true;
  bool claimed = false;
  std::function<void(std::string)> deliver;
  std::vector<std::string> sent;
  std::chrono::milliseconds sendLimit{0};
  int activations = 0;
};

class AppSession : public testing::Test {
 protected:
  AppSession() : port(line) {
    data.world.rx900Utils = &rx900Utils;
    line.AddAmplifier();
    port.OnTimePassing([this](Micros) {
      const auto now = std::chrono::duration_cast<std::chrono::milliseconds>(port.Now());
      data.clock.Advance(now - std::exchange(portTime, now));
    });
  }
  ~AppSession() override {
    module.reset();
    std::filesystem::current_path(startDirectory);
  }

  // Runs the start with that command line to its end.
  bool Start(const std::string& commandLine) {
    module = std::make_unique<MainModule>(port, instance, commandLine);
    closed = module->Closed.Connect([this] { ++closings; });
    return module->Main();
  }
  // Runs `work` while the session is being built.
  void DuringStart(const std::function<void()>& work) {
    data.forms.OnShow("frmInitialSettings", [work](headless::HeadlessForm&) { work(); });
  }
  // Starts on a project that was delivered to axis 0 before, and goes online.
  void StartOnline() {
    path = data.MakeProject("line1.spj");
    TransferHistory history(path);
    history.Put({.number = history.NextNumber(),
                 .moment = "2026-03-01 14:05:09",
                 .axis = "0",
                 .name = "Download All",
                 .parts = Everything(),
                 .result = "complete",
                 .cause = {},
                 .before = {},
                 .after = history.Keep(history.NextNumber(), "after", path)});
    ASSERT_TRUE(Start(path));
    Main().Choose("mnuToolsOnline");
    ASSERT_EQ(Status(), "System Status: Online");
    data.boxes.shown.clear();
  }
  headless::HeadlessMainWindow& Main() { return data.forms.Main(); }
  std::string Status() { return Main().Panel(StatusPanel::status); }
  clsHX7Project& Project() { return dynamic_cast<clsHX7Project&>(*gMainForm->CurrentProject()); }
  frmMain& Form() { return dynamic_cast<frmMain&>(*gMainForm); }
  SimulatedAmplifier& Amplifier() { return *line.Amplifier('0'); }
  std::vector<std::string> Boxes() { return data.boxes.TakeTexts(); }
  using Texts = std::vector<std::string>;
  // The first line of the latest box: behind it stand figures, or causes.
  std::string LastHead() {
    const std::string& text = data.boxes.shown.back().text;
    return text.substr(0, text.find('\r'));
  }

  std::filesystem::path startDirectory = std::filesystem::current_path();
  DataWorld data;
  StandardRx900Utils rx900Utils;
  SimulatedLine line;
  InProcessPort port;
  FakeInstance instance;
  std::unique_ptr<MainModule> module;
  Connection closed;
  int closings = 0;
  std::string path;
  std::chrono::milliseconds portTime{0};  // of the clock of the port, as far as ours has followed
};

}  // namespace velmoor

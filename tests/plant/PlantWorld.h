// A watched line without a device, a broker or real time, and what the watch told of it.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "online/clsHX7Alarm.h"
#include "plant/LineWatcher.h"
#include "platform/json/NlohmannJson.h"
#include "simulator/InProcessPort.h"
#include "simulator/SimulatedLine.h"
#include "support/DataWorld.h"

namespace velmoor {

// A broker in memory, which can be away.
class Broker {
 public:
  std::vector<Publication> arrived;
  bool isThere = true;
  std::size_t window = 32;
  bool acknowledges = true;

  [[nodiscard]] std::vector<std::string> TextsOf(const std::string& topic) const {
    std::vector<std::string> texts;
    for (const Publication& message : arrived) {
      if (message.topic == topic) texts.push_back(message.text);
    }
    return texts;
  }
};

class MemoryPublisher final : public Publisher {
 public:
  MemoryPublisher(Broker& broker, Publication birth) : broker_(broker), birth_(std::move(birth)) {}

  [[nodiscard]] bool Hand(const Publication& message) override {
    if (!connected_ || handed_ >= broker_.window) return false;
    broker_.arrived.push_back(message);
    ++handed_;
    return true;
  }
  [[nodiscard]] Progress Take() override {
    Progress progress;
    if (broker_.isThere && connected_ && broker_.acknowledges) {
      progress.delivered = std::exchange(handed_, 0);
    }
    progress.lost = connected_ && !broker_.isThere;
    progress.connected = !connected_ && broker_.isThere;
    if (progress.connected) broker_.arrived.push_back(birth_);
    connected_ = broker_.isThere;
    if (!connected_) handed_ = 0;
    return progress;
  }
  [[nodiscard]] std::string Trouble() const override {
    return connected_ ? "" : "The broker is away.";
  }
  void End(const Publication& last, std::chrono::milliseconds) override { (void)Hand(last); }

 private:
  Broker& broker_;
  Publication birth_;
  bool connected_ = false;
  std::size_t handed_ = 0;
};

class PlantHost final : public WatchHost {
 public:
  explicit PlantHost(Broker& broker) : broker_(broker) {}

  std::vector<std::string> told;
  std::string metrics, status;
  bool wanted = false;
  int freed = 0;
  std::function<bool()> ends;

  void Begin(const std::string&, const WatchSettings&) override {}
  [[nodiscard]] bool Ends() override { return ends(); }
  [[nodiscard]] bool Rereads() override { return false; }
  [[nodiscard]] bool IsPortWanted() override { return wanted; }
  void PortIsFree() override { ++freed; }
  void Tell(const std::string& words) override { told.push_back(words); }
  void Alive(const std::string& words) override { status = words; }
  void ShowMetrics(const std::string& text) override { metrics = text; }
  [[nodiscard]] std::unique_ptr<Publisher> Publish(const WatchSettings&, const Publication& birth,
                                                   const Publication&) override {
    return std::make_unique<MemoryPublisher>(broker_, birth);
  }

 private:
  Broker& broker_;
};

// kill -9.
struct Killed {};

class PlantTest : public testing::Test {
 protected:
  PlantTest() : port(line), host(broker) {
    world.world.jsonTexts = &jsonTexts;
    port.OnTimePassing([this](Micros time) {
      passed_ += time;
      const auto whole = std::chrono::duration_cast<std::chrono::milliseconds>(passed_);
      passed_ -= whole;
      world.clock.Advance(whole);
    });
    port.SetPaced(true);
    file.port = "COM1";
    file.watch.broker = "mqtt://nowhere";
    names.ReadFromCatalogue(JoinPath(world.world.appDirectory, "IdeInfo.mdb"));
    path = world.folder.At("line1.toml");
    world.files.WriteDurably(path, "");
  }
  void AddAxis(char axis, const std::string& name = "feed", int baud = 38400) {
    line.AddAmplifier({.axis = axis, .baud = baud});
    file.bitsPerSecond = baud;
    file.axes.push_back({.address = std::string(1, axis), .name = name});
  }
  void Reset(char axis) {
    (void)line.Receive(std::string(1, axis) + "ARES\r", port.Now(), file.bitsPerSecond);
  }
  // Watches for so long; `at` happens at their seconds.
  struct Event {
    double second;
    std::function<void()> happens;
  };
  void Watch(double seconds, std::vector<Event> events = {}) {
    const double begin = Seconds();
    host.ends = [&] {
      while (!events.empty() && Seconds() - begin >= events.front().second) {
        events.front().happens();
        events.erase(events.begin());
      }
      return Seconds() - begin >= seconds;
    };
    LineWatcher watcher(host, port, names, file, path);
    watcher.Run();
  }
  [[nodiscard]] std::vector<std::string> Told(const std::string& topic) const {
    return broker.TextsOf("velmoor/line1/" + topic);
  }

  DataWorld world;
  json_texts::NlohmannJson jsonTexts;
  SimulatedLine line;
  InProcessPort port;
  Broker broker;
  PlantHost host;
  clsHX7Alarm names;
  LineFile file;
  std::string path;

 private:
  Micros passed_{0};
  [[nodiscard]] double Seconds() const {
    return std::chrono::duration<double>(world.clock.Monotonic()).count();
  }
};

}  // namespace velmoor

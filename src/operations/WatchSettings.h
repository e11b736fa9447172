// What a line file says of its watch: where what is read goes, and how much of it is kept.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/KeyedText.h"

namespace velmoor {

struct WatchSettings {
  std::string broker{};  // "mqtt://host:1883", "mqtts://host:8883", "file:/path"; empty: none
  std::string topic = "velmoor";  // what all topics begin with
  std::string user{};
  std::string passwordFile{};  // absolute, like all that follow
  std::string authority{};    // certificate that vouches for the broker; empty: those of the system
  std::string certificate{};  // of the watch itself
  std::string key{};
  std::string folder{};          // what is kept; empty: "line1.watch" beside the line file
  std::int64_t spool = 64;       // MB of messages that could not be delivered
  std::int64_t recordings = 64;  // MB of the minutes before alarms
  std::string csv{};             // folder of the day files; empty: none
  std::int64_t csvLimit = 1024;  // MB of them
  std::string metrics{};         // file; empty: none
  std::string listen{};          // "9464", "127.0.0.1:9464"; empty: not
  std::int64_t every = 1;        // s between two messages of an axis' values; 0: each round
  std::vector<int> items{};      // places among MonitoredItems, beside those always read

  bool operator==(const WatchSettings&) const = default;
};

// Takes the table "watch" of a line file in `folder`; `fault` is told each fault and its line.
[[nodiscard]] WatchSettings ReadWatchSettings(
    const KeyedNode& table, const std::string& folder,
    const std::function<void(int line, const std::string& words)>& fault);

// The places of items such as "PUN,POS", without those always read. Throws std::invalid_argument
// with the word that is none.
[[nodiscard]] std::vector<int> WatchedItems(const std::vector<std::string>& words);
// What every watch reads beside the display: status, position, speed, torque.
[[nodiscard]] const std::vector<int>& AlwaysWatched();

}  // namespace velmoor

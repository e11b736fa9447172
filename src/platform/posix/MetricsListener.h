// Answers those who ask for figures, over the network's protocol HTTP: the latest text, and nothing
// else. It has a thread of its own, and one asker at a time, who has two seconds.
#pragma once

#include <mutex>
#include <string>
#include <thread>

#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {

class MetricsListener {
 public:
  // "9464" is a port of this computer alone; "0.0.0.0:9464", "[::]:9464" or "192.0.2.5:9464" name
  // where else it may be asked. Throws std::runtime_error.
  explicit MetricsListener(const std::string& address);
  ~MetricsListener();
  MetricsListener(const MetricsListener&) = delete;
  MetricsListener& operator=(const MetricsListener&) = delete;

  void Show(const std::string& text);

 private:
  void Run();
  void Answer(int connection);

  FileDescriptor listener_, ended_, end_;
  std::mutex mutex_;
  std::string text_;
  std::thread thread_;
};

}  // namespace velmoor::posix

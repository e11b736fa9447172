#include "platform/FilePublisher.h"

#include <utility>

#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::chrono::milliseconds kReopen{1000};
constexpr std::size_t kAtOnce =
    256;  // messages between two looks, so that a backlog holds nobody up

std::string LineOf(const Publication& message) {
  return message.topic + " " + message.text + "\n";
}

}  // namespace

FilePublisher::FilePublisher(std::string path, Publication birth, std::size_t mostBytes)
    : path_(std::move(path)), birth_(std::move(birth)), mostBytes_(mostBytes) {
  Open();
}

void FilePublisher::Open() {
  nextOpen_ = world().clock->Monotonic() + kReopen;
  try {
    const bool full = world().files->Exists(path_) && world().files->SizeOf(path_) >= mostBytes_;
    if (full) world().files->Rename(path_, path_ + ".1");
    file_ = world().files->Continue(path_, {});
    bytes_ = world().files->SizeOf(path_);
    file_->Add(LineOf(birth_));
    trouble_.clear();
    progress_.connected = true;
  } catch (const FileError& error) {
    file_.reset();
    trouble_ = error.what();
  }
}

bool FilePublisher::Hand(const Publication& message) {
  if (!file_ || progress_.delivered >= kAtOnce) return false;
  const std::string line = LineOf(message);
  try {
    file_->Add(line);
  } catch (const FileError& error) {
    file_.reset();
    trouble_ = error.what();
    progress_.lost = true;
    return false;
  }
  ++progress_.delivered;
  bytes_ += line.size();
  if (bytes_ >= mostBytes_) {
    file_.reset();
    Open();
  }
  return true;
}

Publisher::Progress FilePublisher::Take() {
  if (!file_ && !ended_ && world().clock->Monotonic() >= nextOpen_) Open();
  return std::exchange(progress_, {});
}

void FilePublisher::End(const Publication& last, std::chrono::milliseconds /*limit*/) {
  progress_.delivered = 0;
  (void)Hand(last);
  file_.reset();
  ended_ = true;
}

}  // namespace velmoor

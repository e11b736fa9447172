// Messages that are to be delivered in order and once, kept on disk until they are.
//
// A journal is a row of files in a folder, each a run of lines: what is known at its beginning,
// then a message a line. Beside each lies a file with one byte for every message of it that was
// delivered. So a killed program finds what was told last, and what is still to be delivered, and
// nothing is ever written over. Beyond its bound the oldest file goes, and what was not delivered
// of it is counted as dropped. Where nothing can be written, a few hundred messages are held in
// memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Files.h"
#include "platform/Publisher.h"

namespace velmoor {

// What a journal knows of the latest message of an axis and a kind.
struct Told {
  std::uint64_t sequence = 0;
  std::string key;  // what it told, to tell a change by
  Publication message;
};

class Journal {
 public:
  // `name` is that of its files, of letters; `mostBytes` bounds them all together.
  Journal(std::string folder, std::string name, std::size_t mostBytes);

  // Reads what former processes have left. Throws FileError.
  void Load();

  // The number of the next message of an axis, from 1, whatever was delivered.
  [[nodiscard]] std::uint64_t NextSequence(const std::string& axis) const;
  // The latest of each axis and kind, by "axis kind".
  [[nodiscard]] const std::map<std::string, Told>& AllLatest() const { return latest_; }
  // Takes a message, whose sequence is NextSequence(axis). Axis and kind are words of letters and
  // digits; what has control characters loses them.
  void Add(const std::string& axis, const std::string& kind, Told told);

  // ---- delivery
  // The next one to be handed over; null: none.
  [[nodiscard]] const Publication* Next();
  // It was handed over.
  void Handed();
  // So many of those handed over have arrived, in their order.
  void Delivered(std::size_t count);
  // Nobody knows what became of those under way: they are handed over again.
  void StartOver();

  [[nodiscard]] std::uint64_t Waiting() const { return next_ - delivered_; }
  [[nodiscard]] std::uint64_t Dropped() const { return dropped_; }
  // Why nothing can be written; empty: all is well.
  [[nodiscard]] const std::string& Trouble() const { return trouble_; }

 private:
  struct Entry {
    std::uint64_t number = 0;
    Publication message;
  };
  struct Segment {
    std::uint64_t count = 0;
    std::uint64_t delivered = 0;
    std::size_t bytes = 0;
  };
  using Segments = std::map<std::uint64_t, Segment>;  // by the number of their first message

  [[nodiscard]] std::string PathOf(std::uint64_t first) const;
  [[nodiscard]] std::string DonePathOf(std::uint64_t first) const;
  void LoadSegment(std::uint64_t first);
  void TakeLine(std::string_view line, Segment& segment);
  void Begin();
  [[nodiscard]] bool Write(const std::string& line);
  void Note(const Entry& entry);
  void Refill();
  void KeepBound();
  void RemoveDelivered();
  void Remove(Segments::iterator segment);
  [[nodiscard]] std::size_t Bytes() const;

  std::string folder_, name_;
  std::size_t mostBytes_;
  Segments segments_;
  std::unique_ptr<GrowingFile> file_;  // the last segment's
  std::unique_ptr<GrowingFile> done_;
  std::uint64_t doneOf_ = 0;
  std::map<std::string, Told> latest_;
  std::map<std::string, std::uint64_t> sequences_;
  std::uint64_t next_ = 0;       // number of the next message
  std::uint64_t delivered_ = 0;  // all before it
  std::uint64_t dropped_ = 0;
  std::uint64_t read_ = 0;  // all before it are in the queue, under way or delivered
  std::deque<Entry> queue_, underWay_;
  std::string trouble_;
};

}  // namespace velmoor

// What is told to others, on its way: changes, which are kept longest and go first, and values.
#pragma once

#include <deque>
#include <set>
#include <string>
#include <vector>

#include "plant/Journal.h"
#include "platform/Publisher.h"

namespace velmoor {

class Outbox {
 public:
  // Both kinds are kept in `folder`, of `mostBytes` together. Reads what is there. Throws
  // FileError.
  Outbox(const std::string& folder, std::size_t mostBytes);

  [[nodiscard]] Journal& Changes() { return changes_; }
  [[nodiscard]] Journal& Values() { return values_; }

  // Hands over what the publisher takes, and notes what has arrived. Never waits.
  void Serve(Publisher& publisher);

  [[nodiscard]] std::uint64_t Waiting() const { return changes_.Waiting() + values_.Waiting(); }
  [[nodiscard]] std::uint64_t Delivered() const { return delivered_; }
  // Why nothing can be written; empty: all is well.
  [[nodiscard]] const std::string& Trouble() const;

 private:
  void Note(const Publisher::Progress& progress);
  [[nodiscard]] bool HandFrom(Journal& journal, Publisher& publisher);
  void ListRetained();
  void HandRepeated(Publisher& publisher);

  Journal changes_, values_;
  std::deque<Journal*> handed_;       // null: a repetition
  std::deque<Publication> repeated_;  // what a broker that lost its memory is told again
  bool repeatDue_ = false;
  std::set<std::string> fresh_;  // changes that this connection has had already
  std::uint64_t delivered_ = 0;
};

}  // namespace velmoor

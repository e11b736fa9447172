#include "plant/Outbox.h"

namespace velmoor {

Outbox::Outbox(const std::string& folder, std::size_t mostBytes)
    : changes_(folder, "changes", mostBytes / 4), values_(folder, "values", mostBytes / 4 * 3) {
  changes_.Load();
  values_.Load();
}

const std::string& Outbox::Trouble() const {
  return changes_.Trouble().empty() ? values_.Trouble() : changes_.Trouble();
}

void Outbox::Serve(Publisher& publisher) {
  Note(publisher.Take());
  if (!publisher.Trouble().empty()) return;
  while (HandFrom(changes_, publisher)) {
  }
  if (changes_.Next() != nullptr) return;
  if (repeatDue_) ListRetained();
  HandRepeated(publisher);
  while (repeated_.empty() && HandFrom(values_, publisher)) {
  }
}

void Outbox::HandRepeated(Publisher& publisher) {
  while (!repeated_.empty() && publisher.Hand(repeated_.front())) {
    repeated_.pop_front();
    handed_.push_back(nullptr);
  }
}

bool Outbox::HandFrom(Journal& journal, Publisher& publisher) {
  const Publication* const next = journal.Next();
  if (next == nullptr || !publisher.Hand(*next)) return false;
  if (&journal == &changes_ && repeatDue_) fresh_.insert(next->text);
  journal.Handed();
  handed_.push_back(&journal);
  return true;
}

void Outbox::Note(const Publisher::Progress& progress) {
  for (std::size_t i = 0; i < progress.delivered && !handed_.empty(); ++i) {
    if (handed_.front() != nullptr) {
      handed_.front()->Delivered(1);
      ++delivered_;
    }
    handed_.pop_front();
  }
  if (progress.lost) {
    handed_.clear();
    repeated_.clear();
    fresh_.clear();
    changes_.StartOver();
    values_.StartOver();
  }
  if (progress.connected) repeatDue_ = true;
}

// A broker may have been started anew without what it had kept: behind the changes that wait it
// gets the latest ones again, as they were, numbers included.
void Outbox::ListRetained() {
  repeatDue_ = false;
  repeated_.clear();
  for (const auto& [axisAndKind, told] : changes_.AllLatest()) {
    if (told.message.retained && !fresh_.contains(told.message.text)) {
      repeated_.push_back(told.message);
    }
  }
  fresh_.clear();
}

}  // namespace velmoor

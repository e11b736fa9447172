// What was moved between a project and its amplifiers: an entry a transfer, in a folder of its own
// beside the project, "line1.history". With an entry are kept, as project files, what the transfer
// has overwritten and what it has brought, so that both can be compared and sent.
//
// The list is one text file, written anew as a whole; it and the states have the project's
// permissions at most. The oldest entries go when there are more than kEntries.
#pragma once

#include <string>
#include <vector>

#include "session/Tools.h"

namespace velmoor {

struct HistoryEntry {
  int number = 0;       // from 1; never given twice
  std::string moment;   // "2026-03-01 14:05:09"
  std::string axis;     // "0"
  std::string name;     // "Download All"
  bool upload = false;  // the amplifier's values came into the project
  std::vector<Tool> parts;
  std::string
      result;         // "complete", "stopped", "failed"; kUnderWay: the program was ended meanwhile
  std::string cause;  // of what is not complete, on one line
  // Names of files in the folder. Of a download: what the amplifier held, empty where that is not
  // known, and what it was to hold. Of an upload: what the project held, and holds.
  std::string before;
  std::string after;
  bool read =
      false;  // `before` was read from the amplifier; otherwise the project had sent it last
};

// Of an entry whose transfer has not ended, or never will.
inline constexpr const char* kUnderWay = "under way";
// The result in words for people.
[[nodiscard]] std::string ResultOf(const HistoryEntry& entry);
// "Index Table, Jog Table"; "everything".
[[nodiscard]] std::string PartsOf(const HistoryEntry& entry);

class TransferHistory {
 public:
  static constexpr std::size_t kEntries = 100;

  // Reads the history of that project file. Throws FileError where it cannot be read, or is none of
  // ours; where there is none it is empty.
  explicit TransferHistory(const std::string& project);

  // The oldest first.
  [[nodiscard]] const std::vector<HistoryEntry>& Entries() const { return entries_; }
  // Null: there is none of that number.
  [[nodiscard]] const HistoryEntry* Find(int number) const;
  // The whole path of a state.
  [[nodiscard]] std::string PathOf(const std::string& state) const;
  // The state that the amplifier with that address holds as far as this project knows: the latest
  // transfer with it moved everything and was complete. Empty: not known.
  [[nodiscard]] std::string KnownState(const std::string& axis) const;
  // Nothing would be lost that the history does not have: that state is known, or what came behind
  // it, stopped or failed or of single parts, was sent from here.
  [[nodiscard]] bool IsContentKnown(const std::string& axis) const;
  [[nodiscard]] int NextNumber() const { return next_; }

  // Copies a project file, `source`, as the state "before" or "after" of that entry, and gives its
  // name. Throws FileError.
  [[nodiscard]] std::string Keep(int number, const std::string& what, const std::string& source);
  // Puts an entry in the place of the one of its number, or behind all others. Throws FileError.
  void Put(const HistoryEntry& entry);

 private:
  void Read();
  void Write() const;
  void DropOldest();
  [[nodiscard]] bool IsStateOf(const std::string& state) const;

  std::string project_;
  std::string folder_;
  std::vector<HistoryEntry> entries_;
  int next_ = 1;
};

}  // namespace velmoor

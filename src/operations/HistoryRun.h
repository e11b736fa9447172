// The entry of one transfer in the history of its project: there before the first line goes out, so
// that a program that is killed leaves it, and ended with the transfer's result.
//
// Made on the stack of the transfer. A history that cannot be written stops no transfer; the user
// is told behind it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "operations/TransferHistory.h"

namespace velmoor {

class HistoryRun {
 public:
  // Of a transfer of those parts, between the project file and the amplifier at that address.
  HistoryRun(const std::string& project, const std::string& axis, const std::string& name,
             bool upload, const std::vector<Tool>& parts);
  // One that was begun and not ended has failed.
  ~HistoryRun();
  HistoryRun(const HistoryRun&) = delete;
  HistoryRun& operator=(const HistoryRun&) = delete;

  // Of a download: what the amplifier held is what the project sent it last, as far as that is
  // known.
  void TakeKnownBefore();
  // Copies that project file as what the transfer overwrites, or brings, and gives the copy's path;
  // `read`: it holds what was read from the amplifier. Nothing: it could not be written.
  std::optional<std::string> NoteBefore(const std::string& source, bool read);
  std::optional<std::string> NoteAfter(const std::string& source);
  // What the transfer overwrites is not known after all.
  void ForgetBefore();
  void Begin();
  void End(const std::string& result, const std::string& cause = {});

  [[nodiscard]] bool IsContentKnown() const;

  // Why the history could not be written, as a line behind the transfer's words; empty: it was.
  [[nodiscard]] std::string Remark() const;

 private:
  bool Guarded(const std::function<void()>& work);

  std::optional<TransferHistory> history_;
  HistoryEntry entry_;
  std::string failure_;
  bool begun_ = false;
};

}  // namespace velmoor

// One walk: steps done by a user without a screen, and what does not hold after each.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "random_walk/Access.h"
#include "random_walk/Examiner.h"
#include "random_walk/Step.h"

namespace velmoor::walk {

class Walk {
 public:
  // `folder` is the walk's own; it begins with a new project and an amplifier from the factory.
  // Kinds in `ignored` are not looked for.
  Walk(const std::string& folder, const std::set<std::string>& ignored);

  // Takes steps from `next` until it has none, or something does not hold. A step that a user
  // could not do now does nothing.
  using Next = std::function<std::optional<Step>(Walk&)>;
  void Run(const Next& next);

  [[nodiscard]] const std::vector<Violation>& Found() const { return found_; }
  [[nodiscard]] Access& Program() { return access_; }
  [[nodiscard]] const Records& File() const { return file_; }
  [[nodiscard]] bool IsUnderEdit(std::string_view window) const;

  // For tests of the walk itself: runs behind each step, before it is judged.
  std::function<void(Access& access, const Step& step)> sabotage;

  // The records that a complete download does not make equal, learnt from one; the same for every
  // walk of the process.
  [[nodiscard]] static const campaign::Exempt& NeverSent();

 private:
  void Loop(const WindowKind* within);
  void Perform(const Step& step);
  void Do(const Step& step);

  // ---- one for each verb
  void Open(const WindowKind& kind);
  void Edit(const WindowKind& kind, const std::string& row, int column, const std::string& text);
  void TypeLimit(const WindowKind& kind, const std::string& row, bool low);
  void Paste(const WindowKind& kind, const std::string& row, int column, const std::string& text);
  void ChooseInMachine(const std::string& box, const std::string& item);
  void Notch(const std::string& state);
  void Frequency(const std::string& text);
  void UndoEdit(const WindowKind& kind, bool redo);
  void Accept(const WindowKind& kind, const std::string& button);
  void Cancel(const WindowKind& kind);
  void Save();
  void Reopen(const Step& step);
  void Transfer(const Step& step, bool upload);
  void Compare();

  // ---- what the step may have done
  void Edited(const WindowKind& kind, const std::string& row,
              const std::map<std::string, std::string>& before);
  void Accepted(const WindowKind& kind, const std::map<std::string, std::string>& shown);
  void MayChangeNothing(const char* when);
  void JudgeStep();
  void TakeFound();
  void PlanFault(const std::string& fault, int exchange);
  void MendLine();

  const campaign::Exempt& exempt_;  // learnt before this walk's own program begins
  Access access_;
  Examiner examiner_;
  std::set<std::string> ignored_;
  std::vector<Violation> found_;
  Next next_;
  Records file_;  // behind the last step
  Pending pending_;
  // What the present step may have made of the file.
  std::function<void(const Records& before, const Records& after)> rule_;
  bool synchronous_ = false;  // everything has gone to the amplifier once, or come from it
  bool lineUsed_ = false;
  bool harmed_ = false;  // a fault of line or disk was planned for the step
  bool held_ = false;    // an upload that failed has left values in the windows
  int steps_ = 0;
  // Undo: the cells before each edit since the last Apply, while nothing else happens.
  std::string undoWindow_;
  std::vector<std::map<std::string, std::string>> undo_;
  // The machine's cells as they were opened or committed.
  std::map<std::string, std::string> machineAtRest_;
  std::string corrected_;  // what the last edit of the machine told as corrected
};

}  // namespace velmoor::walk

// Builds the session's working copy of the catalogue through the catalogue library, and has it
// removed at the end.
//
// The copy is made for one motor size and language and never changes afterwards, even when an
// amplifier with another motor goes online: the next start uses the new size.
#pragma once

#include <cstdint>
#include <string>

namespace velmoor {

class clsHX7Database {
 public:
  // `language` is the catalogue's language number; `strMotorSize` the rated power in watts, as
  // decimal text.
  clsHX7Database(std::int32_t language, std::string strMotorSize);
  clsHX7Database(const clsHX7Database&) = delete;
  clsHX7Database& operator=(const clsHX7Database&) = delete;
  // Closes the library's copy when it is still open, and removes it when it was made.
  ~clsHX7Database();

  // Copies, opens, fills and closes, stopping at the first failure. A failure of a step was shown
  // to the user, except one of the filling.
  bool GetParameterDatabase();
  bool RemoveParameterDatabase();

  // One library call each: true on success, else a box with the error's number.
  bool CopyTHDatabase();
  bool OpenTHDatabase();
  bool UparaCreateTHDatabase();  // no box of its own
  bool CloseTHDatabase();
  bool RemoveTHDatabase();

 private:
  std::int32_t eLang_;
  std::string strMotorSize_;
  bool blnDBOpened_ = false;
  bool blnDBCopied_ = false;
};

}  // namespace velmoor

// Whether the motor that is connected is the one that the project describes: reads what it is,
// tells a difference with its consequence, and takes the motor into the project where the user
// wants that.
//
// Owned by the connection. A difference is told once for as long as the connection stands and the
// project says the same.
#pragma once

#include <optional>
#include <string>

#include "operations/Desk.h"
#include "operations/MotorJudgement.h"
#include "project/SessionState.h"

namespace velmoor {

class MotorMatch {
 public:
  // Both must outlive the object.
  MotorMatch(SessionState& session, Desk& desk) : session_(session), desk_(desk) {}

  // The amplifier was connected, or a project opened while it is: tells, and offers to mend.
  void Tell();
  // Before a download or a test run. False: the user does not want it.
  [[nodiscard]] bool MayGoOn();
  // What differs now, whether it was told before or not; nothing where no project is open or
  // nobody is connected.
  [[nodiscard]] std::optional<MotorJudgement> Look();
  // The project goes to the connected motor: one that tells no size is for it from now on.
  void Note();
  // The project's parameters came from the connected motor.
  void Take();
  // The connection has ended.
  void Forget() {
    told_.clear();
    facts_ = {};
  }

 private:
  enum class Answer { mend, leave, cancel };

  const MotorFacts& Read();
  // Nothing: there is nothing to tell, or it was told.
  [[nodiscard]] std::optional<MotorJudgement> News(std::string& words);
  [[nodiscard]] Answer Ask(const MotorJudgement& judgement, const std::string& words, bool goesOn);
  bool Mend(const MotorJudgement& judgement);
  bool MendEncoder(std::int32_t index);

  SessionState& session_;
  Desk& desk_;
  MotorFacts facts_;  // as they were read last
  std::string told_;  // the latest words, with the project that they were about
};

}  // namespace velmoor

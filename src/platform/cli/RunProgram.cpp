#include "platform/cli/RunProgram.h"

#include <csignal>
#include <exception>
#include <iostream>

#include "platform/VisibleText.h"

namespace velmoor {
namespace {

void Tell(std::ostream& err, const std::exception& error) {
  err << VisibleLines(error.what()) << '\n';
}

int Try(const ProgramTable& table, const std::vector<std::string>& words, std::ostream& out,
        std::ostream& err, const ProgramRun& run) {
  try {
    const std::string answer = AnswerToTheShell(table, words);
    if (answer.empty()) return run(ReadLine(table, words));
    out << answer;
    return kDone;
  } catch (const UsageError& error) {
    Tell(err, error);
    // The whole text would push the message off a screen.
    err << table.name << " --help tells what there is.\n";
    return kWrongUsage;
  } catch (const std::exception& error) {
    Tell(err, error);
    return kFailed;
  }
}

}  // namespace

int RunProgram(const ProgramTable& table, const std::vector<std::string>& words, std::ostream& out,
               std::ostream& err, const ProgramRun& run) {
  const int status = Try(table, words, out, err, run);
  out.flush();
  if (out) return status;
  err << table.name << ": the output cannot be written\n";
  return status == kDone ? kFailed : status;
}

int RunProgram(const ProgramTable& table, const std::vector<std::string>& words,
               const ProgramRun& run) {
#ifdef SIGPIPE
  std::signal(SIGPIPE, SIG_IGN);
#endif
  return RunProgram(table, words, std::cout, std::cerr, run);
}

int RunProgram(const ProgramTable& table, int argc, char** argv, const ProgramRun& run) {
  return RunProgram(table, std::vector<std::string>(argv + 1, argv + argc), run);
}

}  // namespace velmoor

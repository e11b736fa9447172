#include "Child.h"

#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "platform/Numbers.h"

namespace velmoor::bench {
namespace {

constexpr int kEndLimit = 5000;    // ms
constexpr int kLineLimit = 60000;  // ms

}  // namespace

double ResidentBytes(const std::string& process) {
  std::ifstream status("/proc/" + process + "/statm");
  double all = 0;
  double resident = 0;
  if (!(status >> all >> resident)) throw std::runtime_error("the memory cannot be read");
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

Child::Child(const std::string& program, const std::vector<std::string>& words,
             const Variables& variables) {
  auto environment = QProcessEnvironment::systemEnvironment();
  for (const auto& [name, value] : variables) {
    environment.insert(QString::fromStdString(name), QString::fromStdString(value));
  }
  QStringList arguments;
  for (const std::string& word : words) arguments << QString::fromStdString(word);
  process_.setProcessEnvironment(environment);
  process_.setStandardInputFile(QProcess::nullDevice());
  process_.setStandardOutputFile(QProcess::nullDevice());
  process_.setReadChannel(QProcess::StandardError);
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
  process_.start(QString::fromStdString(program), arguments);
  if (!process_.waitForStarted()) throw std::runtime_error(program + " cannot be started");
}

Child::~Child() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.terminate();
  if (process_.waitForFinished(kEndLimit)) return;
  process_.kill();
  process_.waitForFinished();
}

std::string Child::WaitForLine(const std::vector<std::string>& words) {
  do {
    while (process_.canReadLine()) {
      std::string line = process_.readLine().trimmed().toStdString();
      const auto isIn = [&line](const std::string& word) {
        return line.find(word) != std::string::npos;
      };
      if (std::ranges::all_of(words, isIn)) return line;
    }
  } while (process_.waitForReadyRead(kLineLimit));
  throw std::runtime_error(process_.program().toStdString() + " does not tell of " + words.back());
}

double Child::WaitForNumber(const std::string& words) {
  const std::string line = WaitForLine({words});
  return ParseFloat(line.substr(line.find(words) + words.size())).value();
}

void Child::DropErrors() {
  (void)process_.waitForReadyRead(0);
  process_.readAllStandardError();
}

void Child::WaitForSuccess() {
  if (process_.state() != QProcess::NotRunning) process_.waitForFinished();
  if (process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0) return;
  throw std::runtime_error(process_.program().toStdString() +
                           " failed: " + process_.readAllStandardError().toStdString());
}

}  // namespace velmoor::bench

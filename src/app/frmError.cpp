#include "app/frmError.h"

#include <algorithm>

#include "app/Version.h"
#include "app/frmAbout.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/Log.h"
#include "platform/World.h"

namespace velmoor {
namespace {

// "2026-03-01 14-05-09", fit for a file's name.
std::string Moment() {
  std::string text = MomentText(world().clock->Now());
  std::ranges::replace(text, ':', '-');
  return text;
}

// The procedure's name and the module behind it in brackets, of one line of a trace.
struct Place {
  std::string procedure, module;
};

Place PlaceOf(const UnhandledError& error) {
  if (error.trace.empty()) return {"unknown", "unknown"};
  const std::string& call = error.trace.front();
  const std::size_t bracket = call.rfind("  (");
  if (bracket == std::string::npos) return {call, "unknown"};
  return {call.substr(0, bracket), call.substr(bracket + 3, call.size() - bracket - 4)};
}

}  // namespace

std::string frmError::Words(const UnhandledError& error, const std::string& strProject) {
  const Place place = PlaceOf(error);
  return kUnexpectedError + ("Error " + error.type) + "\rDescription: " + error.description +
         "\rProcedure: " + place.procedure + "\rLine: unknown\rModule: " + place.module +
         "\rProject: " + (strProject.empty() ? "none" : strProject) +
         "\rVersion: " + kProgramVersion;
}

frmError::frmError(const UnhandledError& error, const std::string& strProject,
                   std::string strReport)
    : strWords_(Words(error, strProject)), strReport_(std::move(strReport)) {}

ErrorChoice frmError::Ask() {
  choice_ = ErrorChoice::goOn;
  (void)Show(FormMode::modal);
  return choice_;
}

void frmError::FormLoad() {
  ui().lblError.SetText(strWords_);
  ui().lblReport.SetText(strReport_);
  const auto choose = [this](Button& button, ErrorChoice chosen) {
    connections_ += button.Click.Connect([this, chosen] {
      choice_ = chosen;
      Unload();
    });
  };
  choose(ui().cmdContinue, ErrorChoice::goOn);
  choose(ui().cmdRetry, ErrorChoice::retry);
  choose(ui().cmdEnd, ErrorChoice::end);
}

std::string WriteErrorReport(const UnhandledError& error, const std::string& strProject,
                             const std::string& directory) {
  const std::string folder = JoinPath(directory, "Error Report Files");
  world().files->MakeDirectories(folder);
  std::string text = frmError::Words(error, strProject) + "\r\rCalls, innermost first:\r";
  for (const std::string& call : error.trace) text += "  " + call + "\r";
  text += "\r" + frmAbout::Versions() + "\r";
  if (const Log* const log = CurrentLog()) {
    text += "\rWhat went before:\r";
    for (const std::string& entry : log->Recent()) text += "  " + entry + "\r";
  }
  for (char& c : text) c = c == '\r' ? '\n' : c;
  std::string path = JoinPath(folder, "Error " + Moment() + ".txt");
  world().files->WriteDurably(path, text);
  return path;
}

}  // namespace velmoor

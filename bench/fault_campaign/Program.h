// The desktop program's session without a screen, and its user.
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "AgreeingUser.h"
#include "BenchAdapters.h"
#include "app/MainModule.h"
#include "platform/headless/HeadlessFailure.h"
#include "platform/headless/HeadlessWorld.h"
#include "platform/headless/OnlyInstance.h"

namespace velmoor::campaign {

using bench::AgreeingUser;

enum class Begin { newProject, presentProject };

class Program {
 public:
  // The project of `folder` is open when the object is made. Throws std::runtime_error.
  Program(SerialPort& port, const std::string& folder, Begin begin = Begin::newProject)
      : module_(port, instance_, Path(folder)) {
    adapters_.Fill(headless_.world, folder);
    headless_.world.boxes = &user;
    // The pauses of a start cost nothing.
    headless_.world.clock = &headless_.clock;
    before_ = headless::SetFailureHandler([this](const std::string& text) {
      if (text != kNoComparison && text != kNoDoubts) unforeseen.push_back(text);
    });
    user.refuses = [](const std::string& text) {
      return text.find("communications manually") != std::string::npos ||
             text.find("The connected motor is not") != std::string::npos;
    };
    if (begin == Begin::newProject) {
      adapters_.files.ReplaceDurably(JoinPath(headless_.world.appDirectory, "Velmoor.spt"),
                                     Path(folder));
    }
    if (!module_.Main() || gMainForm->CurrentProject() == nullptr) {
      throw std::runtime_error("the program did not start");
    }
  }
  ~Program() {
    module_.Terminate();
    headless::SetFailureHandler(before_);
    std::filesystem::current_path(directory_);
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  void Choose(const std::string& command) {
    user.texts.clear();
    user.failures = 0;
    headless_.forms.OnShow("frmCompare",
                           [](headless::HeadlessForm& form) { form.Press("cmdCancel"); });
    headless_.forms.OnShow("frmDoubts",
                           [](headless::HeadlessForm& form) { form.Press("cmdCancel"); });
    headless_.forms.Main().Choose(command);
    headless_.forms.Verify();
  }
  // The same of a command that opens a form, in which `user` acts.
  void ChooseWith(const std::string& command, const char* form,
                  const std::function<void(headless::HeadlessForm&)>& user_) {
    headless_.forms.OnShow(form, user_);
    Choose(command);
  }
  [[nodiscard]] bool Said(const std::string& part) const {
    return std::ranges::any_of(user.texts, [&part](const std::string& text) {
      return text.find(part) != std::string::npos;
    });
  }
  // What the user read since the latest command.
  [[nodiscard]] std::string Words() const {
    std::string all;
    for (const std::string& text : user.texts) all += " | " + text;
    return all;
  }
  [[nodiscard]] static frmMain& Form() { return dynamic_cast<frmMain&>(*gMainForm); }
  [[nodiscard]] static clsHX7Project& Project() {
    return dynamic_cast<clsHX7Project&>(*gMainForm->CurrentProject());
  }
  // The windows that are open, and what stands in for the desktop.
  [[nodiscard]] headless::HeadlessWorld& Desktop() { return headless_; }
  [[nodiscard]] bool IsDialogOpen() const { return headless_.forms.IsOpen("frmDialogStop"); }

  AgreeingUser user;
  std::vector<std::string> unforeseen;  // what no user would have met

  static std::string Path(const std::string& folder) { return folder + "/campaign.spj"; }

 private:
  static constexpr const char* kNoComparison = "The form frmCompare was not shown";
  static constexpr const char* kNoDoubts = "The form frmDoubts was not shown";
  std::filesystem::path directory_ = std::filesystem::current_path();
  headless::HeadlessWorld headless_;
  bench::BenchAdapters adapters_;
  headless::OnlyInstance instance_;
  headless::FailureHandler before_;
  MainModule module_;
};

}  // namespace velmoor::campaign

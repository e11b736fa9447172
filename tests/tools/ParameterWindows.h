// An opened project and what a user does in the windows of the parameter tools.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/ProjectWorld.h"
#include "tools/ParameterGrid.h"

namespace velmoor {

using headless::HeadlessForm;
using Texts = std::vector<std::string>;

inline constexpr const char* kDiscard =
    "Modified values will be lost if changes are cancelled!\rDo you wish to discard changes?";

class ParameterWindows : public ProjectWorld {
 protected:
  void SetUp() override { OpenNew("a.spj"); }

  HeadlessForm& Window() { return world.forms.Get("frmProperties"); }
  static int RowOf(const ParameterToolBase& tool, const char* strPn) { return tool.FindRow(strPn); }
  static std::string Shown(const ParameterToolBase& tool, const char* strPn) {
    return tool.Text(RowOf(tool, strPn), Column::value);
  }
  static bool Type(HeadlessForm& form, const ParameterToolBase& tool, const char* strPn,
                   const std::string& text) {
    return form.EditCell("vsFG", RowOf(tool, strPn), ParameterGrid::kValue, text);
  }
  // The names of the rows that the window locks.
  static std::string Locked(HeadlessForm& form, const ParameterToolBase& tool) {
    std::string names;
    for (int row = 1; row <= tool.RowsInArray(); ++row) {
      form.grid("vsFG").SetCurrent(row, ParameterGrid::kValue);
      const std::string tip = form.grid("vsFG").TipAt(row, ParameterGrid::kValue);
      if (tip.find('\n') != std::string::npos) {
        names += tool.Text(row, Column::name).substr(2) + " ";
      }
    }
    return names;
  }
  void OpenEditor(const std::function<void(HeadlessForm&)>& script) {
    world.forms.OnShow("frmEditor", script);
    project().Editor().Show_Editor();
  }
  Texts Boxes() { return world.boxes.TakeTexts(); }
};

}  // namespace velmoor

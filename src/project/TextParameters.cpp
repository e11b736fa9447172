// The parameters of a project's text.

#include <map>

#include "platform/Numbers.h"
#include "project/ProjectInUnits.h"
#include "project/TextImport.h"
#include "project/TextValues.h"
#include "project/clsHX7Project.h"
#include "tools/ParameterRules.h"

namespace velmoor::project_text {
namespace {

using Kind = KeyedNode::Kind;

bool Fits(const Parameter& parameter, Kind kind) {
  switch (parameter.form) {
    case ValueForm::number:
      return kind == Kind::whole;
    case ValueForm::units:
      return kind == Kind::whole || kind == Kind::number;
    default:
      return kind == Kind::text;
  }
}

std::string TypeOf(const Parameter& parameter) {
  if (parameter.form == ValueForm::number) return "a whole number";
  if (parameter.form == ValueForm::units) return "a number";
  return parameter.form == ValueForm::list ? "one of its items, in quotes"
                                           : "four digits, in quotes";
}

// A text puts the machine's rows into its own section.
bool IsEditable(const clsHX7Editor& editor, const std::string& strPn) {
  return editor.FindRow(strPn) > 0 && !BelongsToMachine(strPn);
}

class Judge {
 public:
  Judge(clsHX7Project& project, const NewProject& usual, Judged& judged, Faults& faults)
      : project_(project),
        new_(usual),
        editor_(project.Editor()),
        inUnits_(project, judged.plan.after),
        judged_(judged),
        faults_(faults) {}

  void Typed(const KeyedEntry& entry) {
    const Parameter* const parameter = Named(entry);
    if (parameter == nullptr) return;
    if (!Fits(*parameter, entry.value.kind)) {
      faults_.Add(entry.value.line, entry.key + " takes " + TypeOf(*parameter));
      return;
    }
    const std::string old = judged_.whole ? new_.ValueOf(*parameter, judged_.plan.after).text
                                          : PresentOf(*parameter).text;
    const TypedValue typed =
        JudgeTyped(inUnits_, editor_, editor_.FindRow(entry.key), old, entry.value.text);
    if (typed.accepted) {
      Put(*parameter, typed.meant.controller, typed.meant.text);
    } else {
      const bool named = typed.words.starts_with("Parameter " + entry.key);
      faults_.Add(entry.value.line, (named ? "" : entry.key + ": ") + typed.words);
    }
  }

  void Found(const KeyedEntry& entry) {
    const Parameter* const parameter = Named(entry);
    if (parameter == nullptr) return;
    if (entry.value.kind != Kind::text) {
      faults_.Add(entry.value.line, entry.key + " takes a text in quotes here");
      return;
    }
    try {
      const std::string controller = PlainController(*parameter, entry.value.text);
      Put(*parameter, controller, ShownText(*parameter, controller, judged_.plan.after));
    } catch (const NumberError& error) {
      faults_.Add(entry.value.line, entry.key + ": " + error.what());
    }
  }

  // What the text has not named is as in a new project.
  void Others() {
    for (int row = 1; row <= editor_.RowsInArray(); ++row) {
      const Parameter& parameter = editor_.ParameterOf(row);
      const std::string& strPn = parameter.Pn();
      const bool gear = strPn == "Pn202" || strPn == "Pn203";
      if (gear || parameter.blank || named_.contains(strPn) || BelongsToMachine(strPn)) continue;
      const MeantValue usual = new_.ValueOf(parameter, judged_.plan.after);
      if (usual.valid) Put(parameter, usual.controller, usual.text);
    }
  }

 private:
  // Null, and told: there is none, or the text has named it already.
  const Parameter* Named(const KeyedEntry& entry) {
    if (!IsEditable(editor_, entry.key)) {
      faults_.Add(entry.value.line,
                  "'" + entry.key + "' is no parameter of the direct parameter editor");
      return nullptr;
    }
    const auto [other, isNew] = named_.emplace(entry.key, entry.value.line);
    if (isNew) return project_.Parameters().Find(entry.key);
    faults_.Add(entry.value.line, entry.key + " is named twice: line " + NumberText(other->second));
    return nullptr;
  }

  // Behind the change of the machine.
  [[nodiscard]] ParameterChange PresentOf(const Parameter& parameter) const {
    const ParameterChanges& changes = judged_.plan.parameters.changes;
    const auto changed = changes.find(parameter.Pn());
    if (changed != changes.end()) return changed->second;
    return {parameter.controller, parameter.text};
  }

  // The value that the project has already is no change of it.
  void Put(const Parameter& parameter, const std::string& controller, const std::string& text) {
    const bool moved = controller != parameter.controller || parameter.blank;
    if (!moved && text == parameter.text) {
      judged_.plan.parameters.changes.erase(parameter.Pn());
      return;
    }
    judged_.plan.parameters.changes[parameter.Pn()] = {
        controller, text, moved ? MarkChange::set : MarkChange::keep, Tool::editor};
  }

  clsHX7Project& project_;
  const NewProject& new_;
  const clsHX7Editor& editor_;
  ProjectInUnits inUnits_;
  Judged& judged_;
  Faults& faults_;
  std::map<std::string, int> named_;
};

}  // namespace

void JudgeParameters(clsHX7Project& project, const NewProject& usual, const KeyedNode& text,
                     Judged& judged, Faults& faults) {
  Judge judge(project, usual, judged, faults);
  for (const KeyedEntry& entry : EntriesOf(text.Find(kParameters), kParameters, faults)) {
    judge.Typed(entry);
  }
  const KeyedNode* const found = text.Find(kAsFound);
  if (found != nullptr && found->kind == Kind::table) {
    for (const KeyedEntry& entry : EntriesOf(found->Find(kParameters), kParameters, faults)) {
      judge.Found(entry);
    }
  }
  if (judged.whole) judge.Others();
}

}  // namespace velmoor::project_text

// Project files whose cells, or whose bytes, are anything.

#include <fstream>

#include "ProgramSession.h"
#include "Target.h"
#include "platform/Database.h"
#include "project/data/Schema.h"

namespace velmoor::fuzz {
namespace {

constexpr std::string_view kColumns[] = {
    "value", "ControllerValue", "Dirty",      "pn",           "Position",
    "Speed", "Event",           "Next",       "Label",        "ControllerSpeed",
    "Index", "LowerLimit",      "UpperLimit", "PropertyName", "ControllerPosition",
    "Loop"};

// The records of the text: table, row, column, and a cell's new text up to the line's end.
void ChangeCells(const std::string& path, std::string_view text) {
  const auto database = OpenForWriting(path);
  while (text.size() > 4) {
    const auto& tables = schema::ProjectTables();
    const std::string& table =
        tables[Choose(text, static_cast<unsigned>(tables.size()))].definition.name;
    const unsigned row = Choose(text, 256);
    const std::string_view column = kColumns[Choose(text, std::size(kColumns))];
    const std::size_t end = text.find('\n');
    const std::string_view cell = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    try {
      const auto records = database->OpenTable(table);
      for (unsigned i = 0; i < row && !records->AtEnd(); ++i) records->MoveNext();
      if (records->AtEnd()) continue;
      records->Edit();
      records->Set(column, cell);
      records->Update();
    } catch (const DatabaseError&) {
      // A table without that column, or a text in a column of numbers.
    }
  }
  database->Commit();
}

void ChangeBytes(const std::string& path, std::string_view text) {
  std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
  while (text.size() >= 4) {
    // The first bytes are the salt of the key: each other one costs a derivation and opens nothing.
    const unsigned at = 16 + Choose(text, 256) * 256 + Choose(text, 256);
    file.seekp(at);
    file.put(text.front());
    text.remove_prefix(1);
  }
}

}  // namespace
}  // namespace velmoor::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  using namespace velmoor::fuzz;
  static ProgramSession session("projects");
  static const std::string path = session.folder.path + "/changed.spj";
  std::string_view text = Text(data, size);
  world().databases->Release(path);
  world().files->ReplaceDurably(JoinPath(world().appDirectory, "Velmoor.spt"), path);
  if (Choose(text, 8) == 0) {
    ChangeBytes(path, text);
  } else {
    ChangeCells(path, text);
  }
  world().databases->Release(path);
  session.program.user.texts.clear();
  campaign::Program::Form().CommandLineOpenProject(path);
  if (gMainForm->CurrentProject() != nullptr) {
    clsHX7Project& project = campaign::Program::Project();
    (void)project.WhatIsDirty();
    (void)project.GetNumberOfNewDownloads();
    for (int row = 1; row <= project.Position().RowsInArray(); ++row) {
      (void)project.Position().IsDataSetComplete(row);
    }
    (void)project.Position().ChangeAccepted();
    (void)project.MechanicalSystem().FeedConstant();
  }
  return 0;
}

#include "project/UnsavedWork.h"

#include <algorithm>

#include "platform/Database.h"
#include "platform/Files.h"
#include "platform/World.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

bool HoldsTheSame(Database& one, Database& other, const schema::ProjectTable& table) {
  const auto mine = one.OpenTable(table.definition.name, table.key);
  const auto theirs = other.OpenTable(table.definition.name, table.key);
  mine->MoveFirst();
  theirs->MoveFirst();
  for (; !mine->AtEnd() && !theirs->AtEnd(); mine->MoveNext(), theirs->MoveNext()) {
    const bool same = std::ranges::all_of(table.definition.columns, [&](const auto& column) {
      return column.name == schema::Position::kDirty ||
             mine->Text(column.name) == theirs->Text(column.name);
    });
    if (!same) return false;
  }
  return mine->AtEnd() && theirs->AtEnd();
}

// A file that cannot be read holds nothing that could be kept.
bool HoldsUnsavedWork(const std::string& working, const std::string& project) {
  bool same = true;
  try {
    // Open for writing, since a change that was cut is to be taken back first.
    const auto left = OpenForWriting(working);
    const auto saved = OpenForReading(project);
    same = std::ranges::all_of(schema::ProjectTables(), [&](const schema::ProjectTable& table) {
      return HoldsTheSame(*left, *saved, table);
    });
  } catch (const std::exception&) {
    same = true;
  }
  world().databases->Release(working);
  world().databases->Release(project);
  return !same;
}

// "line1.unsaved.spj", "line1.unsaved-2.spj" and so on: the first that is free.
std::string FreeName(const std::string& directory, const std::string& title) {
  const std::string stem = JoinPath(directory, DropRight(title, 4) + ".unsaved");
  std::string name = stem + ".spj";
  for (int number = 2; world().files->Exists(name); ++number) {
    name = stem + "-" + std::to_string(number) + ".spj";
  }
  return name;
}

}  // namespace

std::string KeepUnsavedWork(const std::string& working, const std::string& project) {
  Files& files = *world().files;
  if (files.ReadAll(working).empty() || !HoldsUnsavedWork(working, project)) return {};
  std::string kept = FreeName(GetFileDirectory(working), GetFileTitle(project));
  files.SaveDurably(working, kept, project);
  return kept;
}

}  // namespace velmoor

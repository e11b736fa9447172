#include "project/ProjectGlance.h"

#include <algorithm>

#include "platform/Files.h"
#include "platform/World.h"
#include "project/TransferRecord.h"
#include "project/data/ProjectContents.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

constexpr std::size_t kToTheMinute = 16;  // of "2026-03-01 14:05:09"

bool HasMarks(const schema::ProjectTable& table) {
  return std::ranges::any_of(table.definition.columns,
                             [](const auto& column) { return column.name == schema::kMark; });
}

int MarkedIn(Database& database, const schema::ProjectTable& table) {
  const auto records = database.OpenTable(table.definition.name, table.key);
  int marked = 0;
  for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
    if (records->Text(schema::kMark) == "1" && !IsNeverSent(records->Text(table.key))) ++marked;
  }
  return marked;
}

void ReadInto(ProjectGlance& glance, Database& database) {
  CheckContents(database, Strangers::allowed);
  for (const schema::ProjectTable& table : schema::ProjectTables()) {
    if (HasMarks(table)) glance.marked += MarkedIn(database, table);
  }
  for (const ToolInfo& info : Tools()) {
    const auto transfer = TransferIn(database, info.tool);
    if (transfer) glance.delivered = std::max(glance.delivered, transfer->moment);
  }
  glance.delivered.resize(std::min(glance.delivered.size(), kToTheMinute));
}

}  // namespace

ProjectGlance GlanceAt(const std::string& path) {
  Files& files = *world().files;
  ProjectGlance glance;
  const auto changed = files.ChangedAt(path);
  if (!changed) return glance;
  glance.changed = MomentText(*changed).substr(0, kToTheMinute);
  const std::string copy = JoinPath(world().catalogueCopyDirectory, "glance.tmp");
  try {
    files.LayWorkingCopy(path, copy);
    ReadInto(glance, *OpenForReading(copy));
    glance.state = ProjectGlance::State::project;
  } catch (const std::runtime_error&) {
    glance.state = ProjectGlance::State::unreadable;
  }
  world().databases->Release(copy);
  files.Remove(copy);
  return glance;
}

}  // namespace velmoor

#include "project/data/ProjectFormat.h"

#include <memory>
#include <string_view>

#include "platform/Numbers.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

using schema::Misc;

// The first format bears no version.
constexpr std::int64_t kFirst = 1;

// ---- the steps; each begins at the version that its place in the list tells, counted from the
// first

void AddVersionRecord(Database& project) {
  const auto settings = project.OpenTable(Misc::kTable);
  settings->AddNew();
  settings->Set(Misc::kPropertyName, Misc::kFormat);
  settings->Update();
}

constexpr void (*kSteps[])(Database& project) = {AddVersionRecord};
static_assert(kFirst + std::ssize(kSteps) == schema::kFormatVersion);

// ---- the version

std::int64_t VersionOf(Database& project) {
  const auto settings = project.OpenTable(Misc::kTable);
  if (!settings->FindFirst(Misc::kPropertyName, Misc::kFormat)) return kFirst;
  const auto version = ParseWhole(settings->Text(Misc::kValue));
  if (!version || *version <= kFirst) {
    throw DatabaseError(DatabaseError::Kind::schema, "The project's format is no number");
  }
  return *version;
}

void SetVersion(Database& project, std::int64_t version) {
  const auto settings = project.OpenTable(Misc::kTable);
  if (!settings->FindFirst(Misc::kPropertyName, Misc::kFormat)) return;
  settings->Edit();
  settings->Set(Misc::kValue, NumberText(version));
  settings->Update();
}

}  // namespace

std::vector<LaidAnew> BringUpToDate(const std::string& workingFile,
                                    const std::string& templatePath) {
  const auto project = OpenForWriting(workingFile);
  const std::int64_t version = VersionOf(*project);
  if (version > schema::kFormatVersion) {
    throw NewerFormat("The file's format is " + NumberText(version) + ", and this version reads " +
                      NumberText(schema::kFormatVersion) + " at most.");
  }
  try {
    for (std::int64_t from = version; from < schema::kFormatVersion; ++from) {
      kSteps[from - kFirst](*project);
    }
    if (version < schema::kFormatVersion) SetVersion(*project, schema::kFormatVersion);
    // The formats so far differ by no table and no column.
    CheckContents(*project);
    std::vector<LaidAnew> laid = AddMissingRecords(*project, *OpenForReading(templatePath));
    project->Commit();
    return laid;
  } catch (...) {
    project->Rollback();
    throw;
  }
}

}  // namespace velmoor

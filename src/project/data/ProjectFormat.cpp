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
// first. Columns that an older format lacked are there already, with the template's texts.

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

std::string InWords(const NewerFormat& newer, const std::string& fileTitle) {
  return "Project " + fileTitle + " was made by a newer version of Velmoor!\r" + newer.what();
}

void RefuseNewer(Database& project) {
  const std::int64_t version = VersionOf(project);
  if (version <= schema::kFormatVersion) return;
  throw NewerFormat("The file's format is " + NumberText(version) + ", and this version knows " +
                    NumberText(schema::kFormatVersion) + " at most.");
}

void CheckReadable(const std::string& workingFile, const std::string& templatePath) {
  const auto project = OpenForReading(workingFile);
  CheckContents(*project, Strangers::allowed);
  const auto missing = MissingRecords(*project, *OpenForReading(templatePath));
  if (missing.empty()) return;
  throw DatabaseError(
      DatabaseError::Kind::schema,
      "The file lacks records without which it cannot be shown:" + InWords(missing));
}

std::vector<LaidAnew> BringUpToDate(const std::string& workingFile,
                                    const std::string& templatePath) {
  auto project = OpenForWriting(workingFile);
  const std::int64_t version = VersionOf(*project);
  if (version < schema::kFormatVersion) {
    project.reset();
    AddMissingColumns(workingFile, templatePath);
    project = OpenForWriting(workingFile);
  }
  try {
    for (std::int64_t from = version; from < schema::kFormatVersion; ++from) {
      kSteps[from - kFirst](*project);
    }
    if (version < schema::kFormatVersion) SetVersion(*project, schema::kFormatVersion);
    CheckContents(*project, Strangers::refused);
    std::vector<LaidAnew> laid = AddMissingRecords(*project, *OpenForReading(templatePath));
    project->Commit();
    return laid;
  } catch (...) {
    project->Rollback();
    throw;
  }
}

}  // namespace velmoor

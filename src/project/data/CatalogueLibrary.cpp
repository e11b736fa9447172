#include "project/data/CatalogueLibrary.h"

#include "platform/Files.h"
#include "platform/World.h"
#include "project/data/Schema.h"
#include "project/data/WorkingCopy.h"

namespace velmoor {
namespace {

// The models that the catalogue describes.
constexpr std::int32_t kServoModel = 2;
constexpr std::int32_t kOptionModel = 1536;

std::string CataloguePath() {
  return JoinPath(world().appDirectory, "IdeInfo.mdb");
}

}  // namespace

std::string CatalogueLibrary::WorkingCopyPath() {
  return JoinPath(world().catalogueCopyDirectory, "tempIdeInfo.mdb");
}

std::int32_t CatalogueLibrary::McatCopy(std::int32_t /*language*/) {
  if (!world().files->Exists(CataloguePath())) return kNoCatalogue;
  try {
    // A new file takes the name, so a session that still reads an older copy keeps it.
    world().databases->Release(WorkingCopyPath());
    world().files->ReplaceDurably(CataloguePath(), WorkingCopyPath());
  } catch (const FileError&) {
    return kCopyFailed;
  }
  copyIdentity_ = world().files->Identity(WorkingCopyPath());
  return 0;
}

std::int32_t CatalogueLibrary::McatOpen() {
  if (copyIdentity_.empty()) return kWrongOrder;
  try {
    if (!IsCatalogue(*OpenForReading(WorkingCopyPath()))) return kNotACatalogue;
  } catch (const DatabaseError&) {
    return kNotACatalogue;
  }
  opened_ = true;
  return 0;
}

std::int32_t CatalogueLibrary::McatUparaCreate(
    std::int16_t language, std::int32_t servoModel, std::int32_t /*servoFirmware*/,
    std::int32_t /*servoSpecial*/, std::int32_t motorSize, std::int32_t optionModel,
    std::int32_t /*optionFirmware*/, std::int32_t /*optionSpecial*/, std::int16_t /*axis*/) {
  if (!opened_) return kWrongOrder;
  if (servoModel != kServoModel || optionModel != kOptionModel) return kUnknownModel;
  try {
    FillWorkingCopy(WorkingCopyPath(), language, motorSize);
  } catch (const DatabaseError&) {
    return kNotACatalogue;
  }
  return 0;
}

std::int32_t CatalogueLibrary::McatClose() {
  if (!opened_) return kWrongOrder;
  opened_ = false;
  return 0;
}

std::int32_t CatalogueLibrary::McatRemove() {
  // Another session's copy under the same name is not this one's to delete.
  const bool own =
      !copyIdentity_.empty() && world().files->Identity(WorkingCopyPath()) == copyIdentity_;
  copyIdentity_.clear();
  if (!own) return 0;
  try {
    world().databases->Release(WorkingCopyPath());
    world().files->Remove(WorkingCopyPath());
  } catch (const FileError&) {
    return kCopyFailed;
  }
  return 0;
}

}  // namespace velmoor

// The headless world with real files and databases, the built catalogue and template, and a folder
// of its own for the catalogue's working copy and for projects. Link catalogue_files.
#pragma once

#include <string>
#include <string_view>

#include "platform/posix/PosixFiles.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "platform/toml/TomlTexts.h"
#include "project/data/CatalogueLibrary.h"
#include "support/TemporaryFolder.h"
#include "support/TestWorld.h"

namespace velmoor {

class DataWorld : public TestWorld {
 public:
  // The language and motor size of MakeCatalogue.
  static constexpr std::int16_t kEnglish = 2;

  DataWorld() {
    world.files = &files;
    world.databases = &databases;
    world.keyedTexts = &keyedTexts;
    world.catalogue = &library;
    world.appDirectory = VELMOOR_CATALOGUE_DIRECTORY;
    world.catalogueCopyDirectory = folder.Path().string();
  }

  // The path of a working copy of the catalogue.
  std::string MakeCatalogue(std::int16_t language = kEnglish, std::int32_t watts = 400) {
    EXPECT_EQ(library.McatCopy(language), 0);
    EXPECT_EQ(library.McatOpen(), 0);
    EXPECT_EQ(library.McatUparaCreate(language, 2, 65535, 65535, watts, 1536, 65535, 65535, 1), 0);
    EXPECT_EQ(library.McatClose(), 0);
    return CatalogueLibrary::WorkingCopyPath();
  }
  // The path of a new project, as the template has it.
  std::string MakeProject(const std::string& name) {
    files.ReplaceDurably(JoinPath(world.appDirectory, "Velmoor.spt"), folder.At(name));
    return folder.At(name);
  }

  TemporaryFolder folder;
  posix::PosixFiles files;
  sqlcipher::SqlcipherDatabases databases;
  CatalogueLibrary library;
  toml_texts::TomlTexts keyedTexts;
};

}  // namespace velmoor

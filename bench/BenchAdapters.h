// The adapters that every benchmark of the whole logic needs, with real files and databases.
#pragma once

#include <string>

#include "platform/Rx900Utils.h"
#include "platform/World.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixFiles.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "platform/toml/TomlTexts.h"
#include "project/data/CatalogueLibrary.h"

namespace velmoor::bench {

struct BenchAdapters {
  // The catalogue's working copy goes to `folder`.
  void Fill(World& world, const std::string& folder) {
    world.clock = &clock;
    world.files = &files;
    world.databases = &databases;
    world.rx900Utils = &rx900Utils;
    world.keyedTexts = &keyedTexts;
    world.catalogue = &catalogue;
    world.appDirectory = VELMOOR_CATALOGUE_DIRECTORY;
    world.catalogueCopyDirectory = folder;
  }

  posix::PosixClock clock;
  posix::PosixFiles files;
  sqlcipher::SqlcipherDatabases databases;
  StandardRx900Utils rx900Utils;
  toml_texts::TomlTexts keyedTexts;
  CatalogueLibrary catalogue;
};

}  // namespace velmoor::bench

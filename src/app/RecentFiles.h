// The list of recently opened projects, newest first, kept in the settings.
//
// Knows nothing of menus: the main window shows Captions and acts on a place.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace velmoor {

class RecentFiles {
 public:
  static constexpr std::size_t kPlaces = 5;

  // Takes the stored paths; an entry that is no project path leaves its place empty.
  void Load();
  // Stores the list. Throws when the settings cannot be written.
  void Save() const;
  // Puts the name in front. An empty name does nothing.
  void Add(const std::string& fname);
  // Takes the place out; those behind it move up.
  void Remove(std::size_t index);

  // The path at a place from 0; empty where there is none.
  [[nodiscard]] const std::string& At(std::size_t index) const { return files_.at(index); }
  // Menu captions by place, "&1 /home/me/line1.spj"; empty for an empty place.
  [[nodiscard]] std::vector<std::string> Captions() const;

 private:
  std::array<std::string, kPlaces> files_;
};

}  // namespace velmoor

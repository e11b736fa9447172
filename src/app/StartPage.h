// The page that fills the main window while no project is open: new, open, the recent projects with
// what is known of their files, and ways to begin with an amplifier.
//
// Owned by the main window. Its buttons choose commands of the menu, a recent project its place in
// the list. Files of the list are looked at one after the other, while nothing else happens.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "layouts/frmStart.h"
#include "platform/Grid.h"
#include "project/ProjectGlance.h"
#include "session/Tools.h"
#include "windows/Window.h"

namespace velmoor {

class StartPage final : public WindowOf<layouts::frmStart>, private ReadOnlyGridSource {
 public:
  struct Hooks {
    std::function<void(MainCommand command)> choose;
    std::function<void(int place)> open;  // a recent project, from 0
  };

  explicit StartPage(Hooks hooks) : hooks_(std::move(hooks)) {}
  // On show from now on, with those recent projects; an empty name is passed over. `ready`: the
  // session can do what the buttons offer.
  void ShowRecent(const std::vector<std::string>& recent, bool ready);
  // Null while it is not on show.
  [[nodiscard]] const Form* Shown() const { return IsOpen() ? &form() : nullptr; }

 protected:
  void FormLoad() override;
  void FormUnload() override { looks_.reset(); }

 private:
  struct Entry {
    int place;  // in the list that was given
    std::string path;
    bool seen = false;
    ProjectGlance glance{};
  };
  void Take(const std::vector<std::string>& recent);
  void LookAtNext();
  void Open(int row);
  [[nodiscard]] int Rows() const override { return static_cast<int>(entries_.size()) + 1; }
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;
  [[nodiscard]] const Entry& At(int row) const {
    return entries_.at(static_cast<std::size_t>(row) - 1);
  }

  Hooks hooks_;
  std::vector<Entry> entries_;
  std::unique_ptr<Timer> looks_;  // while the page is on show
};

}  // namespace velmoor

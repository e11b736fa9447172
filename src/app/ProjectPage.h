// The page of an open project: the road through the chosen module, row by row. It fills the main
// window while no tool window is open.
//
// Owned by the main window, which tells it what to show. It knows no project: Enter or a click in a
// row chooses a command of the menu.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/ProjectRoad.h"
#include "layouts/frmProject.h"
#include "platform/Grid.h"
#include "windows/Window.h"

namespace velmoor {

class ProjectPage final : public WindowOf<layouts::frmProject>, private ReadOnlyGridSource {
 public:
  struct Contents {
    std::string title;   // of the project
    std::string place;   // its file
    std::string module;  // "Indexer Setup"
    std::vector<RoadRow> rows;
  };
  using Choose = std::function<void(MainCommand command)>;

  // `choose` runs a command of the menu.
  explicit ProjectPage(Choose choose) : choose_(std::move(choose)) {}
  // On show from now on, with those contents; cheap where they are the same as before.
  void ShowContents(Contents contents);
  // Null while it is not on show.
  [[nodiscard]] const Form* Shown() const { return IsOpen() ? &form() : nullptr; }

 protected:
  void FormLoad() override;

 private:
  void ShowAll();
  void ChooseRow(int row);
  [[nodiscard]] int Rows() const override;
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;
  [[nodiscard]] const RoadRow& At(int row) const;

  Choose choose_;
  Contents contents_;
};

}  // namespace velmoor

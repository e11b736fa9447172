// The viewer of a report: its pages, paging, zoom, and the ways out of it to paper and to a file.
#pragma once

#include <vector>

#include "layouts/frmPreview.h"
#include "platform/PrintDocument.h"
#include "windows/Window.h"

namespace velmoor {

class clsHX7Project;

class frmPreview final : public WindowOf<layouts::frmPreview> {
 public:
  // Both must outlive the window.
  frmPreview(const clsHX7Project& project, const PrintDocument& document, Paper paper)
      : project_(project), document_(document), paper_(paper) {}

  // The buttons above the pages; the window must be open.
  [[nodiscard]] std::vector<Button*> Tools();

  Event<> Loaded;  // the window is about to show

 protected:
  void FormLoad() override;

 private:
  void GoTo(int page);
  void TypePage(bool& keep);
  void ShowPlace();
  void ChooseZoom();
  // To the next of the sizes offered.
  void StepZoom(bool closer);
  void ShowZoom(int percent);
  void Print();
  [[nodiscard]] PageView& pages() { return ui().pvwPages; }

  const clsHX7Project& project_;
  const PrintDocument& document_;
  Paper paper_;
};

}  // namespace velmoor

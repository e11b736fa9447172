// Port: the pages of a document on the screen.
#pragma once

#include "platform/Controls.h"
#include "platform/PrintDocument.h"

namespace velmoor {

class PageView : public Control {
 public:
  virtual void Show(const PrintDocument& document, Paper paper) = 0;
  [[nodiscard]] virtual int Pages() const = 0;
  [[nodiscard]] virtual int Page() const = 0;  // from 1
  virtual void GoTo(int page) = 0;             // one of them
  virtual void FitPage() = 0;
  virtual void FitWidth() = 0;
  virtual void SetZoom(int percent) = 0;  // of the real size
  [[nodiscard]] virtual int Zoom() const = 0;

  Event<> Moved;  // the user came to another page
};

}  // namespace velmoor

// What the Edit menu may ask of the active window. A window without such a notion leaves the
// entries disabled.
#pragma once

namespace velmoor {

class EditTarget {
 public:
  virtual ~EditTarget() = default;
  [[nodiscard]] virtual bool CanCopy() const = 0;
  [[nodiscard]] virtual bool CanCut() const { return CanCopy(); }
  [[nodiscard]] virtual bool CanPaste() const = 0;
  [[nodiscard]] virtual bool CanUndo() const = 0;
  [[nodiscard]] virtual bool CanRedo() const = 0;
  virtual void Cut() = 0;
  virtual void Copy() = 0;
  virtual void Paste() = 0;
  virtual void Undo() = 0;
  virtual void Redo() = 0;
};

}  // namespace velmoor

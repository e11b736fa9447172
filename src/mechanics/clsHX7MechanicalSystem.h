// The tool that owns the description of the machine: its window, and its way to the amplifier and
// back. What it shows is MachineEdit's; what a change sets off in the project is one step, computed
// and committed by the project.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "mechanics/MachineEdit.h"
#include "platform/Event.h"
#include "session/Project.h"

namespace velmoor {

class GridWindow;
class frmMechanicalSystem;

class clsHX7MechanicalSystem final : public MechanicalSystemTool {
 public:
  // The store must outlive the tool.
  explicit clsHX7MechanicalSystem(ParameterStore& store);
  ~clsHX7MechanicalSystem() override;

  // ---- properties, all read from the store
  [[nodiscard]] bool IsDirty() const { return store_.IsMarkedBy(Tool::mechanicalSystem); }
  [[nodiscard]] std::int16_t NumPns() const { return 15; }           // real parameters
  [[nodiscard]] std::int16_t NumMechSystemPns() const { return 8; }  // Pn829 to Pn830
  [[nodiscard]] std::int16_t RowsInArray() const;
  // The machine as it is: an edit without edits.
  [[nodiscard]] MachineEdit Edit() const { return MachineEdit(store_); }
  [[nodiscard]] MachineDescription Description() const { return DescribeMachine(store_); }
  [[nodiscard]] std::int32_t SelectedSystem() const override;
  [[nodiscard]] std::string SelectedSystemName() const;
  [[nodiscard]] double FeedConstant() const override;
  [[nodiscard]] std::int32_t A_Value() const { return StoredRatio(store_).a; }
  [[nodiscard]] std::int32_t B_Value() const { return StoredRatio(store_).b; }

  // Commits what an edit wants, the whole or nothing. False: nothing was stored, of which the user
  // was told.
  bool Accept(const MachineEdit& edit);

  // ---- the window
  // Returns when it has closed.
  bool Show_MechanicalSystem();
  void Unload_MechanicalSystem();
  [[nodiscard]] GridWindow& Window();

  // ---- the amplifier
  // Marked parameters of the description.
  [[nodiscard]] std::int16_t GetNumberOfNewRows() const;
  // Sends them, or all eight with `blnOverRide`.
  bool Download(bool blnOverRide);
  // Reads the description and the seven parameters that the window shows too into what the store
  // holds apart. False: stopped, failed, or no machine that can be used; nothing is held apart
  // then.
  bool Upload();

  // ---- events, in this order
  Event<> MechanicalSystemClosed;
  Event<const std::string&> MechanicalSystemStatus;
  Event<std::int16_t, std::int16_t> MechanicalSystemDownloading;
  Event<std::int16_t, std::int16_t> MechanicalSystemUploading;
  Event<> MechanicalSystemOKed;  // a change was committed
  Event<> MechanicalSystemCheckSumFailed;
  Event<> MechanicalSystemNoCheckSum;
  Event<> MechanicalSystemZeroSystem;

 private:
  bool ReadParameters();
  bool DecideUpload();
  void DropUpload();

  ParameterStore& store_;
  std::unique_ptr<frmMechanicalSystem> frm_;
  Connections connections_;  // to the window and the store
};

}  // namespace velmoor

// The project's flags, its units, and the events of its tools on their way up.

#include <initializer_list>

#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "session/Session.h"

namespace velmoor {

std::vector<ParameterToolBase*> clsHX7Project::ParameterTools() {
  return {&clsEditor_, &clsTuning_, &clsFlexibleIO_, &clsHoming_, &clsInterface_, &clsOverTravel_};
}

std::vector<MotionTable*> clsHX7Project::Tables() {
  return {&clsPosition_, &clsJog_, &clsZone_};
}

ParameterToolBase* clsHX7Project::ParameterToolOf(Tool tool) {
  switch (tool) {
    case Tool::editor:
      return &clsEditor_;
    case Tool::tuning:
      return &clsTuning_;
    case Tool::flexibleIO:
      return &clsFlexibleIO_;
    case Tool::homing:
      return &clsHoming_;
    case Tool::interface:
      return &clsInterface_;
    case Tool::overTravel:
      return &clsOverTravel_;
    default:
      return nullptr;
  }
}

MotionTable* clsHX7Project::TableOf(Tool tool) {
  switch (tool) {
    case Tool::position:
      return &clsPosition_;
    case Tool::jog:
      return &clsJog_;
    case Tool::zone:
      return &clsZone_;
    default:
      return nullptr;
  }
}

// ---- flags

bool clsHX7Project::ProjectNeedsSaving() const {
  return clsEditor_.NeedsSaving() || clsFlexibleIO_.NeedsSaving() || clsHoming_.NeedsSaving() ||
         clsInterface_.NeedsSaving() || clsJog_.NeedsSaving() ||
         clsMechanicalSystem_.NeedsSaving() || clsOverTravel_.NeedsSaving() ||
         clsPosition_.NeedsSaving() || clsTuning_.NeedsSaving() || clsZone_.NeedsSaving();
}

std::string clsHX7Project::WhatIsDirty() const {
  std::string list;
  const auto add = [&list](bool dirty, const char* name) {
    if (!dirty) return;
    if (!list.empty()) list += ", ";
    list += name;
  };
  add(clsMechanicalSystem_.IsDirty(), "Mechanical System");
  add(clsEditor_.IsDirty(), "All parameters");
  add(clsTuning_.IsDirty(), "Gain and Tuning parameters");
  add(clsInterface_.IsDirty(), "Interface parameters");
  add(clsFlexibleIO_.IsDirty(), "Flexible I/O parameters");
  add(clsOverTravel_.IsDirty(), "Over Travel parameters");
  add(clsHoming_.IsDirty(), "Homing parameters");
  add(clsPosition_.IsDirty(), "Index Position table");
  add(clsJog_.IsDirty(), "Jog table");
  add(clsZone_.IsDirty(), "Zone table");
  return list;
}

void clsHX7Project::ResetAllIsDirty() {
  blnIsDirty_ = false;
  for (ParameterToolBase* const tool : ParameterTools()) tool->SetIsDirty(false);
  clsMechanicalSystem_.SetIsDirty(false);
  for (MotionTable* const table : Tables()) table->SetIsDirty(false);
}

// Marks four tools only, on purpose: the editor holds every parameter.
void clsHX7Project::SetAllIsDirty() {
  clsEditor_.SetIsDirty(true);
  for (MotionTable* const table : Tables()) table->SetIsDirty(true);
}

void clsHX7Project::ResetNeedsSaving() {
  blnNeedsSaving_ = false;
  for (ParameterToolBase* const tool : ParameterTools()) tool->SetNeedsSaving(false);
  clsMechanicalSystem_.SetNeedsSaving(false);
  for (MotionTable* const table : Tables()) table->SetNeedsSaving(false);
}

// ---- units

void clsHX7Project::GetConversionFactors() {
  UpdateConversionFactors(dblCFactor_, strTimeUnits_, intResolution_);
}

void clsHX7Project::UpdateMechanicalSystemValues(bool blnIsMachineUnits) {
  intResolution_ = clsMechanicalSystem_.Resolution();
  strDistanceUnits_ = clsMechanicalSystem_.DistanceUnits();
  strTimeUnits_ = clsMechanicalSystem_.TimeUnits();
  strSpeedUnits_ = clsMechanicalSystem_.SpeedUnits();
  strAccelerationUnits_ = clsMechanicalSystem_.AccelerationUnits();
  // A change of the machine unit's word alone keeps the factors, on purpose.
  if (!blnIsMachineUnits) GetConversionFactors();
  UpdateUnitsInToolWindows();
}

void clsHX7Project::UpdateUnitsInToolWindows() {
  for (ParameterToolBase* const tool : ParameterTools()) tool->UpdateUnitsDisplayed();
  for (MotionTable* const table : Tables()) table->UpdateUnitsDisplayed();
}

float clsHX7Project::GetReferenceSpeedFactor() const {
  clsHX7Helix7& helix = *gMainForm->Helix7();
  std::string b, a;
  std::int32_t count = 0;
  // A release of the jog button is seen between the questions.
  if (helix.GetParameter("202", b) != kSuccess) return -1;
  YieldEvents();
  if (helix.GetParameter("203", a) != kSuccess) return -1;
  YieldEvents();
  if (helix.GetEncoderResolution(count) != kSuccess) return -1;
  YieldEvents();
  try {
    const auto pn202 = static_cast<float>(Int32FromText(b));
    const auto pn203 = static_cast<float>(Int32FromText(a));
    if (pn202 == 0.0F) return -1;
    const double lines = static_cast<double>(static_cast<float>(count));
    return static_cast<float>(lines * 4 / static_cast<double>(pn202) * static_cast<double>(pn203) /
                              1000);
  } catch (const NumberError&) {
    return -1;
  }
}

// ---- events of the tools

template <typename ToolObject>
void clsHX7Project::OrInFlags(const ToolObject& tool) {
  blnNeedsSaving_ = blnNeedsSaving_ || tool.NeedsSaving();
  blnIsDirty_ = blnIsDirty_ || tool.IsDirty();
}

// The pattern that parameter tools and tables have in common.
template <typename ToolObject>
void clsHX7Project::ConnectTool(Tool id, ToolObject& tool) {
  connections_ += tool.Applied.Connect([this, &tool] { OrInFlags(tool); });
  connections_ += tool.Closed.Connect([this, &tool, id] {
    OrInFlags(tool);
    // Nothing is passed on for the editor.
    if (id != Tool::editor) ToolClosed.Raise(id);
  });
  connections_ +=
      tool.Status.Connect([this, id](const std::string& text) { ToolStatus.Raise(id, text); });
  connections_ += tool.Downloading.Connect(
      [this, id](std::int16_t row, std::int16_t total) { ToolDownloading.Raise(id, row, total); });
  connections_ += tool.Uploading.Connect(
      [this, id](std::int16_t row, std::int16_t total) { ToolUploading.Raise(id, row, total); });
}

void clsHX7Project::ConnectTools() {
  ConnectTool(Tool::editor, clsEditor_);
  ConnectTool(Tool::tuning, clsTuning_);
  ConnectTool(Tool::flexibleIO, clsFlexibleIO_);
  ConnectTool(Tool::homing, clsHoming_);
  ConnectTool(Tool::interface, clsInterface_);
  ConnectTool(Tool::overTravel, clsOverTravel_);
  ConnectTool(Tool::position, clsPosition_);
  ConnectTool(Tool::jog, clsJog_);
  ConnectTool(Tool::zone, clsZone_);
  ConnectMechanicalSystem();
  ConnectBaudRate();
  for (const Tool id : {Tool::editor, Tool::tuning, Tool::flexibleIO, Tool::homing, Tool::interface,
                        Tool::overTravel}) {
    ParameterToolBase& tool = *ParameterToolOf(id);
    connections_ += tool.EditStateChanged.Connect([this, id] { EditStateChanged.Raise(id); });
    connections_ += tool.UploadRequested.Connect([this, id] { ToolUploadRequested.Raise(id); });
    connections_ += tool.DownloadRequested.Connect([this, id] { ToolDownloadRequested.Raise(id); });
  }
  connections_ += clsTuning_.RigidityChanged.Connect([this] { RigidityChanged.Raise(); });
  connections_ += clsServoJog_.ServoJogClosed.Connect([this] { ServoJogClosed.Raise(); });
  connections_ += clsMonitoring_.MonitoringClosed.Connect([this] { MonitoringClosed.Raise(); });
  connections_ += clsMonitoring_.MonitoringStatus.Connect(
      [this](const std::string& status) { OnlineStatus.Raise(status); });
  connections_ += clsMonitoring_.CommunicationDown.Connect([this] { LineLost.Raise(); });
  connections_ += clsTerminal_.TerminalClosed.Connect([this] { TerminalClosed.Raise(); });
  connections_ += clsTerminal_.CommunicationDown.Connect([this] { CommunicationDown.Raise(); });
}

void clsHX7Project::ConnectBaudRate() {
  const auto announce = [this](const std::string& value) { BaudRateChanged.Raise(value); };
  const auto failed = [this] { BaudRateChangeFailed.Raise(); };
  connections_ += clsEditor_.EditorDownloadPn801.Connect(announce);
  connections_ += clsEditor_.Pn801SendFailed.Connect(failed);
  connections_ += clsInterface_.InterfaceDownloadPn801.Connect(announce);
  connections_ += clsInterface_.Pn801SendFailed.Connect(failed);
}

void clsHX7Project::ConnectMechanicalSystem() {
  constexpr Tool id = Tool::mechanicalSystem;
  clsHX7MechanicalSystem& machine = clsMechanicalSystem_;
  connections_ += machine.MechanicalSystemOKed.Connect([this, &machine] {
    OrInFlags(machine);
    machine.UpdateProjectMechanicalSystemValues();
  });
  connections_ +=
      machine.MechanicalSystemClosed.Connect([this] { UpdateMechanicalSystemValues(true); });
  connections_ += machine.MechanicalSystemUnitsChanged.Connect(
      [this](bool machineUnits) { UpdateMechanicalSystemValues(machineUnits); });
  connections_ += machine.MechanicalSystemStatus.Connect(
      [this](const std::string& text) { ToolStatus.Raise(id, text); });
  connections_ += machine.MechanicalSystemDownloading.Connect(
      [this](std::int16_t row, std::int16_t total) { ToolDownloading.Raise(id, row, total); });
  connections_ += machine.MechanicalSystemUploading.Connect(
      [this](std::int16_t row, std::int16_t total) { ToolUploading.Raise(id, row, total); });
  connections_ += machine.MechanicalSystemCheckSumFailed.Connect(
      [this] { MechanicalSystemCheckSumFailed.Raise(); });
  // A refused upload has restored the rows: the factors go back to theirs before anything is saved.
  connections_ += machine.MechanicalSystemNoCheckSum.Connect([this] {
    UpdateMechanicalSystemValues(false);
    MechanicalSystemNoCheckSum.Raise();
  });
  connections_ += machine.MechanicalSystemZeroSystem.Connect([this] {
    UpdateMechanicalSystemValues(false);
    MechanicalSystemZeroSystem.Raise();
  });
  connections_ += machine.ResolutionChanged.Connect([this] { OnResolutionChanged(); });
  connections_ += machine.SystemAndResolutionChanged.Connect(
      [this](float length) { OnSystemAndResolutionChanged(length); });
}

// ---- a change of machine

void clsHX7Project::OnResolutionChanged() {
  OrInFlags(clsMechanicalSystem_);
  // Counts are computed anew with the project's factors: these must be the new ones.
  UpdateMechanicalSystemValues(false);
  clsPosition_.ChangeResolution(intResolution_);
  clsJog_.ChangeResolution(intResolution_);
  clsZone_.ChangeResolution(intResolution_);
  clsHoming_.ChangeResolution(intResolution_);
  clsOverTravel_.ChangeResolution(intResolution_);
  clsEditor_.ChangeResolution(intResolution_);
  bool any = false;
  const std::string items = CollectInvalidated(any);
  // Raised also when only the editor was concerned, whose name the list does not hold.
  if (any) ResolutionDataInvalidated.Raise(items);
}

std::string clsHX7Project::CollectInvalidated(bool& any) {
  std::string items;
  const auto collect = [&](auto& tool, const char* text) {
    if (!tool.DataInvalidated()) return;
    any = true;
    items += text;
    tool.ClearDataInvalidated();
  };
  collect(clsPosition_, ", Index Table");
  collect(clsJog_, ", Jog Table");
  collect(clsZone_, ", Zone Table");
  collect(clsHoming_, ", Homing Parameters");
  collect(clsOverTravel_, ", Over Travel Parameters");
  collect(clsEditor_, "");
  return Left(items, 2) == ", " ? items.substr(2) : items;
}

void clsHX7Project::OnSystemAndResolutionChanged(float length) {
  OrInFlags(clsMechanicalSystem_);
  UpdateMechanicalSystemValues(false);
  clsPosition_.ClearData();
  clsZone_.ClearData();
  clsJog_.ChangeResolution(intResolution_);
  clsHoming_.ChangeResolution(intResolution_);
  clsOverTravel_.ResetDefaults(intResolution_, length);
  clsEditor_.ResetDefaults(intResolution_, length);
  // The editor's reset rewrote records that homing and the machine have just set: their values
  // stand.
  clsHoming_.HandRowsToEditor();
  clsMechanicalSystem_.HandRowsToEditor();
}

}  // namespace velmoor

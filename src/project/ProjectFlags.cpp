// The project's tools, its flags, and the events of its tools on their way up.

#include <algorithm>

#include "link/clsHX7Helix7.h"
#include "mechanics/frmMechanicalSystem.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "session/Session.h"
#include "tables/MotionPlot.h"
#include "tables/TableWindow.h"

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

std::vector<const MotionTable*> clsHX7Project::Tables() const {
  return {&clsPosition_, &clsJog_, &clsZone_};
}

// ---- flags

bool clsHX7Project::IsDirty(Tool tool) {
  if (const MotionTable* const table = TableOf(tool)) return table->IsDirty();
  if (const ParameterToolBase* const tools = ParameterToolOf(tool)) return tools->IsDirty();
  return clsMechanicalSystem_.IsDirty();
}

std::string clsHX7Project::WhatIsDirty() {
  std::string list;
  for (const ToolInfo& info : Tools()) {
    if (IsDirty(info.tool)) list += (list.empty() ? "" : ", ") + std::string(info.pending);
  }
  return list;
}

// ---- windows

bool clsHX7Project::Show(Tool tool) {
  switch (tool) {
    case Tool::mechanicalSystem:
      return clsMechanicalSystem_.Show_MechanicalSystem();
    case Tool::editor:
      return clsEditor_.Show_Editor();
    case Tool::tuning:
      return clsTuning_.Show_Tuning();
    case Tool::interface:
      return clsInterface_.Show_Interface();
    case Tool::flexibleIO:
      return clsFlexibleIO_.Show_FlexibleIO();
    case Tool::overTravel:
      return clsOverTravel_.Show_OverTravel();
    case Tool::homing:
      return clsHoming_.Show_Homing();
    case Tool::position:
      return clsPosition_.Show_Position();
    case Tool::jog:
      return clsJog_.Show_Jog();
    case Tool::zone:
      return clsZone_.Show_Zone();
  }
  return false;
}

GridWindow& clsHX7Project::WindowOf(Tool tool) {
  if (MotionTable* const table = TableOf(tool)) return table->Window();
  if (ParameterToolBase* const parameters = ParameterToolOf(tool)) return parameters->Window();
  return clsMechanicalSystem_.Window();
}

std::optional<Travel> clsHX7Project::ProgrammeTravel() const {
  const MotionPlot plot = PlotMotion(clsPosition_, FollowProgramme(clsPosition_, 1), {});
  if (plot.points.empty()) return std::nullopt;
  const auto [low, high] = std::ranges::minmax(plot.points, {}, &PlotPoint::position);
  if (low.position == high.position) return std::nullopt;
  return Travel{low.position, high.position};
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

// The pattern that parameter tools and tables have in common.
template <typename ToolObject>
void clsHX7Project::ConnectTool(Tool id, ToolObject& tool) {
  connections_ += tool.Applied.Connect([this] { blnNeedsSaving_ = true; });
  connections_ += tool.Closed.Connect([this, id] { ToolClosed.Raise(id); });
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
  for (const Tool id : kParameterTools) {
    ParameterToolBase& tool = *ParameterToolOf(id);
    connections_ += tool.EditStateChanged.Connect([this, id] { EditStateChanged.Raise(id); });
  }
  for (const ToolInfo& info : velmoor::Tools()) {
    connections_ += WindowOf(info.tool).Requested.Connect(
        [this, id = info.tool](WindowRequest what) { ToolRequested.Raise(id, what); });
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
  connections_ += machine.MechanicalSystemStatus.Connect(
      [this](const std::string& text) { ToolStatus.Raise(id, text); });
  connections_ += machine.MechanicalSystemDownloading.Connect(
      [this](std::int16_t row, std::int16_t total) { ToolDownloading.Raise(id, row, total); });
  connections_ += machine.MechanicalSystemUploading.Connect(
      [this](std::int16_t row, std::int16_t total) { ToolUploading.Raise(id, row, total); });
  connections_ += machine.MechanicalSystemCheckSumFailed.Connect(
      [this] { MechanicalSystemCheckSumFailed.Raise(); });
  connections_ +=
      machine.MechanicalSystemNoCheckSum.Connect([this] { MechanicalSystemNoCheckSum.Raise(); });
  connections_ +=
      machine.MechanicalSystemZeroSystem.Connect([this] { MechanicalSystemZeroSystem.Raise(); });
}

}  // namespace velmoor

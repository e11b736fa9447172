// The travel limits of the axis, and how the axis counts. The mechanical system rewrites these rows
// when the machine changes between linear and rotary.
#pragma once

#include <string>

#include "tools/ParameterToolBase.h"
#include "tools/frmProperties.h"

namespace velmoor {

// One least step below a whole turn: the positive limit of a rotary table whose turn is `length`.
[[nodiscard]] std::string RotaryUpperLimit(float length, std::int16_t digits);

class clsHX7OverTravel final : public ParameterToolBase, public OverTravelTool {
 public:
  clsHX7OverTravel();

  bool Show_OverTravel() { return ShowWindow("Over Travel Configuration", FormMode::modeless); }
  void Unload_OverTravel() { UnloadWindow(); }

  // Sends the dirty rows.
  bool Download() { return DownloadRows(false); }

  // Keeps the catalogue's limits as those to which a linear machine returns.
  void InitOverTravelLimits();
  void UpdateOverTravel(std::int16_t digits, float length) override;
  bool ChangeResolution(std::int16_t digits);
  // Back to the catalogue's values in the present units; `length` is the travel of one turn.
  bool ResetDefaults(std::int16_t digits, float length);

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override;
  void AfterUpload() override { UpdateOtherBlockMatrices(); }

 private:
  struct Limits {
    std::string axisKind, upper, lower;  // Pn81A, Pn81B, Pn81C
  };
  [[nodiscard]] Limits LimitsFor(std::int16_t digits, float length,
                                 const std::string& axisKind) const;
  [[nodiscard]] std::string InitialLimit(const std::string& strPn) const;
  void UpdateFlexibleIOBlockMatrix() const;
  void UpdateOtherBlockMatrices();
  void UpdateEditorBlockMatrixPostMechSys();
  void frm_PropertiesOverTravelChanged();

  // The limits in user units as the catalogue has them, not as the user typed them.
  std::string strOldPn81B_;
  std::string strOldPn81C_;
  frmProperties frm_{*this, "OverTravel"};
  Connection overTravelChanged_;
};

}  // namespace velmoor

#include "tools/clsHX7FlexibleIO.h"
#include "session/Session.h"

namespace velmoor {

clsHX7FlexibleIO::clsHX7FlexibleIO() : ParameterToolBase("clsFlexibleIO") {
  AttachWindow(frm_);
  overTravelChanged_ =
      frm_.PropertiesOverTravelChanged.Connect([this] { frm_PropertiesOverTravelChanged(); });
}

bool clsHX7FlexibleIO::Takes(const ParameterDefinition& definition) const {
  const std::string& strPn = definition.user_constant;
  return (strPn >= "Pn803" && strPn <= "Pn818") || NeedsNewOptionVersion(strPn);
}

void clsHX7FlexibleIO::UpdateOverTravelBlockMatrix() const {
  CopyValuesInto(OpenedProject().OverTravelSister());
}

void clsHX7FlexibleIO::UpdateOtherBlockMatrices() {
  UpdateEditorBlockMatrix();
  UpdateOverTravelBlockMatrix();
  PostUpload();
  OpenedProject().OverTravelSister().PostUpload();
}

// The sister shows the limits at once, before any Apply; a Cancel does not call them back.
void clsHX7FlexibleIO::frm_PropertiesOverTravelChanged() {
  CopyEditsInto(OpenedProject().OverTravelSister());
  OpenedProject().OverTravelSister().PostUpload();
}

}  // namespace velmoor

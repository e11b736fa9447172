#include "tools/clsHX7FlexibleIO.h"

namespace velmoor {

bool clsHX7FlexibleIO::Takes(const ParameterDefinition& definition) const {
  const std::string& strPn = definition.user_constant;
  return (strPn >= "Pn803" && strPn <= "Pn818") || NeedsNewOptionVersion(strPn);
}

void clsHX7FlexibleIO::UpdateOverTravelBlockMatrix() const {
  CopyValuesInto(project().OverTravelSister());
}

void clsHX7FlexibleIO::UpdateOtherBlockMatrices() {
  UpdateEditorBlockMatrix();
  UpdateOverTravelBlockMatrix();
  PostUpload();
  project().OverTravelSister().PostUpload();
}

}  // namespace velmoor

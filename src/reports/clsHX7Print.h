// Printing a project: the dialog, and whether there is a printer for it.
#pragma once

namespace velmoor {

class clsHX7Project;

class clsHX7Print {
 public:
  // Returns when the dialog has closed. It opens without a printer too.
  void Show_PrintProject(clsHX7Project& clsProject);
};

}  // namespace velmoor

// A report as a PDF file, which needs no printer.
#pragma once

#include <string>

#include "platform/PrintDocument.h"

namespace velmoor {

class clsHX7Project;

// Writes the document into `path`, whole or not at all. False: that is the project's own file, of
// which the user was told. Throws FileError.
[[nodiscard]] bool WritePdf(const clsHX7Project& project, const PrintDocument& document,
                            Paper paper, const std::string& path);
// The same into a file that the user chooses. False after Cancel, or a failure of which the user
// was told.
bool SaveAsPdf(const clsHX7Project& project, const PrintDocument& document, Paper paper);

}  // namespace velmoor

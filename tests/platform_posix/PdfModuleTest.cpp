// The module that makes PDF documents, where there is none.
#include "platform/posix/PdfModule.h"

#include <gtest/gtest.h>

namespace velmoor::posix {
namespace {

std::string ErrorOf(const std::string& path) {
  PdfModule module(path);
  try {
    return module.Pdf({}, Paper::a4);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

TEST(PdfModuleTest, AModuleThatIsMissingOrNoneIsAnErrorWithTheSystemsWords) {
  const std::string missing = ErrorOf("/nowhere/velmoor-pages.so");
  EXPECT_EQ(missing.substr(0, 48), "No PDF can be made: /nowhere/velmoor-pages.so: c");
  // A library, but without the entry.
  EXPECT_NE(ErrorOf("libm.so.6").find("velmoor_make_pdf_maker"), std::string::npos);
}

}  // namespace
}  // namespace velmoor::posix

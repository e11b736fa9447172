// One text of the catalogue, of any subject.

#include "Target.h"
#include "compiler/Checks.h"
#include "compiler/Outputs.h"
#include "compiler/Reader.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor::catalogue;
  static const char* const kNames[] = {"parameters-x.txt", "lists.txt",    "digits.txt",
                                       "alarms.txt",       "template.txt", "language-german.txt"};
  std::string_view text = velmoor::fuzz::Text(data, size);
  const std::string name = kNames[velmoor::fuzz::Choose(text, std::size(kNames))];
  Problems problems;
  const Catalogue catalogue = ReadCatalogue({{name, std::string(text)}}, problems);
  CheckCatalogue(catalogue, problems);
  if (problems.Lines().empty()) (void)CatalogueTables(catalogue, problems);
  return 0;
}

// Answer lines to uploads, of the whole project and of one tool, with what comes of them in the
// file.
//
// Apart from the other readers: a commit takes a thousand times as long as they do.

#include "ProgramSession.h"
#include "Target.h"
#include "operations/UploadFlow.h"

namespace velmoor::fuzz {
namespace {

void UploadTool(unsigned tool) {
  clsHX7Project& project = campaign::Program::Project();
  if (project.UploadParts({static_cast<Tool>(tool)})) (void)project.CommitUpload();
  project.DropUpload();
}

}  // namespace
}  // namespace velmoor::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  using namespace velmoor::fuzz;
  static ProgramSession session("uploads");
  std::string_view text = Text(data, size);
  const unsigned choice = Choose(text, 2 * (velmoor::kTools + 1));
  const unsigned tool = choice / 2;
  session.TakeAnswers(text);
  gMainForm->Helix7()->SetEcho(choice % 2 == 0);
  if (tool == velmoor::kTools) {
    (void)RunUploadStages(campaign::Program::Project());
    campaign::Program::Project().DropUpload();
  } else {
    UploadTool(tool);
  }
  return 0;
}

#include "platform/win32/PdfModule.h"

#include <stdexcept>

#include "platform/win32/Text.h"
#include "platform/win32/Windows.h"

namespace velmoor::win32 {
namespace {

// What a module offers by this name. The caller deletes the maker.
using Entry = PdfMaker* (*)();
constexpr char kEntry[] = "velmoor_make_pdf_maker";

}  // namespace

std::string PdfModule::Pdf(const PrintDocument& document, Paper paper) {
  if (!maker_) {
    const HMODULE module = LoadLibraryW(Wide(path_).c_str());
    const FARPROC entry = module != nullptr ? GetProcAddress(module, kEntry) : nullptr;
    if (entry == nullptr) {
      throw std::runtime_error("No PDF can be made: " + path_ + ": " + SystemText(GetLastError()));
    }
    maker_.reset(reinterpret_cast<Entry>(reinterpret_cast<void*>(entry))());
  }
  return maker_->Pdf(document, paper);
}

}  // namespace velmoor::win32

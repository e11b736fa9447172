#include "platform/posix/PdfModule.h"

#include <dlfcn.h>

#include <stdexcept>

namespace velmoor::posix {

std::string PdfModule::Pdf(const PrintDocument& document, Paper paper) {
  if (!maker_) {
    void* const module = ::dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const entry = module != nullptr ? ::dlsym(module, kPdfModuleEntry) : nullptr;
    if (entry == nullptr) throw std::runtime_error(std::string("No PDF can be made: ") + dlerror());
    maker_.reset(reinterpret_cast<PdfModuleEntry>(entry)());
  }
  return maker_->Pdf(document, paper);
}

}  // namespace velmoor::posix

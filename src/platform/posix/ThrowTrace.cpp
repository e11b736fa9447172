#include "platform/posix/ThrowTrace.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <typeinfo>

namespace {

constexpr int kDeepest = 48;

struct Trace {
  std::array<void*, kDeepest> calls{};
  int count = 0;
};
thread_local Trace gLastThrow;

}  // namespace

// The sanitizers have a hook of their own in this place, and another compiler declares it
// otherwise.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__clang__)
extern "C" [[noreturn]] void __cxa_throw(void* thrown, void* type, void (*destroy)(void*)) {
  using Throw = void (*)(void*, void*, void (*)(void*));
  static const auto real = reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"));
  gLastThrow.count = backtrace(gLastThrow.calls.data(), kDeepest);
  real(thrown, type, destroy);
  std::abort();
}
#endif

namespace velmoor::posix {
namespace {

constexpr int kOwnCalls = 1;  // the hook itself

std::string Describe(void* call) {
  Dl_info info{};
  if (dladdr(call, &info) == 0) return "?";
  std::string text = info.dli_sname != nullptr ? ReadableName(info.dli_sname) : "?";
  if (info.dli_fname != nullptr) {
    const std::string file(info.dli_fname);
    text += "  (" + file.substr(file.find_last_of('/') + 1) + ")";
  }
  return text;
}

}  // namespace

std::string ReadableName(const char* name) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> readable(
      abi::__cxa_demangle(name, nullptr, nullptr, &status), std::free);
  return status == 0 && readable ? readable.get() : name;
}

std::vector<std::string> LastThrowTrace() {
  std::vector<std::string> trace;
  for (int i = kOwnCalls; i < gLastThrow.count; ++i) {
    trace.push_back(Describe(gLastThrow.calls[static_cast<std::size_t>(i)]));
  }
  return trace;
}

}  // namespace velmoor::posix

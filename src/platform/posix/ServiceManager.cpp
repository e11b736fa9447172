#include "platform/posix/ServiceManager.h"

#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {

namespace {

// Code is never written to: what is needed again comes back from its file.
int ReturnCode(dl_phdr_info* object, std::size_t /*size*/, void* /*data*/) {
  const auto page = static_cast<ElfW(Addr)>(::sysconf(_SC_PAGESIZE));
  for (int i = 0; i < object->dlpi_phnum; ++i) {
    const ElfW(Phdr)& part = object->dlpi_phdr[i];
    if (part.p_type != PT_LOAD || (part.p_flags & (PF_X | PF_W)) != PF_X) continue;
    const ElfW(Addr) begin = (object->dlpi_addr + part.p_vaddr) / page * page;
    const ElfW(Addr) end = object->dlpi_addr + part.p_vaddr + part.p_memsz;
    (void)::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
  }
  return 0;
}

}  // namespace

void TellServiceManager(const std::string& lines) {
  const char* const name = std::getenv("NOTIFY_SOCKET");
  sockaddr_un place{};
  if (name == nullptr || std::strlen(name) == 0 || std::strlen(name) >= sizeof place.sun_path)
    return;
  place.sun_family = AF_UNIX;
  std::memcpy(place.sun_path, name, std::strlen(name));
  const auto bytes = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + std::strlen(name));
  // "@" stands for the zero character of a name without a file.
  if (place.sun_path[0] == '@') place.sun_path[0] = '\0';
  const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  (void)::sendto(socket.Get(), lines.data(), lines.size(), MSG_NOSIGNAL | MSG_DONTWAIT,
                 reinterpret_cast<const sockaddr*>(&place), bytes);
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// What watches the memory takes many times as much of it.
void BoundMemory(std::size_t /*bytes*/) {}
#else
void BoundMemory(std::size_t bytes) {
  const rlimit limit{.rlim_cur = bytes, .rlim_max = bytes};
  (void)::setrlimit(RLIMIT_DATA, &limit);
  // One heap for all threads.
  (void)::mallopt(M_ARENA_MAX, 1);
}
#endif

void ReturnMemory() {
  (void)::malloc_trim(0);
  (void)::dl_iterate_phdr(ReturnCode, nullptr);
}

}  // namespace velmoor::posix

#include "platform/large_pages.h"

#include <cstdint>
#include <cstdlib>
#include <initializer_list>

#if defined(__linux__) && defined(__GLIBC__)
#include <malloc.h>
#include <sys/mman.h>
#endif

namespace platform {

#if defined(__linux__) && defined(__GLIBC__)
namespace {

constexpr std::size_t largePage = 2UL * 1024 * 1024;
constexpr int heapStep = 16 * largePage;  // of addresses: memory comes by touching
constexpr int usualStep = 128 * 1024;
constexpr std::size_t moreThanThere = 136UL * 1024;  // than the heap has at the start
constexpr std::size_t bookkeeping = 64;              // beside a piece, generously

/// Where the heap goes on behind a piece that nobody uses; 0 without memory.
std::uintptr_t skip(void*& piece, std::size_t bytes) {
  piece = std::malloc(bytes);
  const auto begin = reinterpret_cast<std::uintptr_t>(piece);  // NOLINT: an address
  return begin == 0 ? 0 : begin + bytes + bookkeeping;
}

}  // namespace

void useLargePages() {
  ::mallopt(M_ARENA_MAX, 1);  // threads take from it as well
  static void* toNewStep = nullptr;
  static void* toBound = nullptr;
  for (const int option : {M_TOP_PAD, M_MMAP_THRESHOLD, M_TRIM_THRESHOLD})
    ::mallopt(option, heapStep);
  const std::uintptr_t next = skip(toNewStep, moreThanThere);
  ::mallopt(M_TOP_PAD, usualStep);
  const std::uintptr_t bound = (next / largePage + 1) * largePage;
  if (next == 0 || skip(toBound, bound - next) == 0) return;
  ::madvise(reinterpret_cast<void*>(bound), heapStep - largePage, MADV_HUGEPAGE);  // NOLINT
}
#else
void useLargePages() {}
#endif

}  // namespace platform

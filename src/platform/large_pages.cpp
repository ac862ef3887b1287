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

constexpr std::size_t megabyte = 1024UL * 1024;
constexpr std::size_t largePage = 2 * megabyte;
constexpr int largestPiece = 32 * megabyte;  // of the heap: the system library allows no more
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

void useLargePages(std::size_t megabytes) {
  const std::size_t heap = megabytes * megabyte;  // of addresses: memory comes by touching
  ::mallopt(M_ARENA_MAX, 1);                      // threads take from it as well
  static void* toNewStep = nullptr;
  static void* toBound = nullptr;
  ::mallopt(M_MMAP_THRESHOLD, largestPiece);
  for (const int option : {M_TOP_PAD, M_TRIM_THRESHOLD}) ::mallopt(option, static_cast<int>(heap));
  const std::uintptr_t next = skip(toNewStep, moreThanThere);
  ::mallopt(M_TOP_PAD, usualStep);
  const std::uintptr_t bound = (next / largePage + 1) * largePage;
  if (next == 0 || skip(toBound, bound - next) == 0) return;
  ::madvise(reinterpret_cast<void*>(bound), heap - largePage, MADV_HUGEPAGE);  // NOLINT
}
#else
void useLargePages(std::size_t) {}
#endif

}  // namespace platform

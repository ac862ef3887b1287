#include "text/large_text.h"

#ifdef __linux__
#include <sys/mman.h>

#include <cstdint>
#endif

namespace text {
namespace {

constexpr std::size_t largePage = 2UL * 1024 * 1024;
constexpr std::size_t bookkeeping = 64;  // what the allocator keeps beside a piece, generously

/// A piece that fills whole large pages is laid on their bounds.
std::size_t wholePages(std::size_t bytes) {
  return (bytes + bookkeeping + largePage - 1) / largePage * largePage - bookkeeping;
}

#ifdef __linux__
void adviseLargePages(char* start, std::size_t bytes) {
  constexpr std::uintptr_t page = 4096;
  const auto first = (reinterpret_cast<std::uintptr_t>(start) / page) * page;  // NOLINT: an address
  const std::size_t before = reinterpret_cast<std::uintptr_t>(start) - first;  // NOLINT: an address
  ::madvise(start - before, before + bytes, MADV_HUGEPAGE);  // advice: a refusal changes nothing
}
#else
void adviseLargePages(char*, std::size_t) {}
#endif

}  // namespace

void reserveLarge(std::string& out, std::size_t bytes) {
  if (bytes < largePage) return out.reserve(bytes);
  out.reserve(wholePages(bytes));
  adviseLargePages(out.data(), out.capacity());
}

}  // namespace text

#include "platform/large_pages.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

TEST(LargePages, MemoryHoldsWhatIsPutIntoIt) {
  platform::useLargePages(platform::heapOfCommand);
  std::mt19937 random(7);
  std::vector<std::string> pieces(400);
  for (int round = 0; round < 5'000; ++round) {
    const std::size_t place = random() % pieces.size();
    const std::string& piece = pieces[place];
    ASSERT_EQ(piece.find_first_not_of(static_cast<char>('a' + place % 26)), std::string::npos);
    const std::size_t most = round % 1000 == 0 ? 40'000'000 : 20'000;
    pieces[place] = std::string(random() % most, static_cast<char>('a' + place % 26));
  }
}

}  // namespace

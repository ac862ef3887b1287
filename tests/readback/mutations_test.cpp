#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <random>

#include "generator/program_writer.h"
#include "readback/verification.h"
#include "support/program_lines.h"
#include "support/random_case.h"
#include "text/strings.h"

namespace {

using support::Lines;
using text::concat;

enum Kind {
  declarationDropped,
  nameMisspelt,
  argumentAdded,
  argumentDropped,
  closingDropped,
  channelShifted,
  numberChanged,
  kinds
};

/// One fault put into any line of a program; "" when the line is not one for it.
class Mutator {
 public:
  explicit Mutator(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }

  std::string faulty(Kind kind, const std::string& code) {
    switch (kind) {
      case declarationDropped:
        return support::startsWithAny(code, {"Const ", "Dim ", "Public ", "Alias ", "Units "}) ? " "
                                                                                               : "";
      case nameMisspelt:
        return misspelt(code);
      case argumentAdded:
        return support::isCall(code) ? code.substr(0, code.size() - 1) + ",1)" : "";
      case argumentDropped:
        return withoutArgument(code);
      case closingDropped:
        return support::startsWithAny(code, {"Next", "End", "Loop"}) ? " " : "";
      case channelShifted:
        return shifted(code);
      default:
        return renumbered(code);
    }
  }

 private:
  /// Begins of names, or of numbers that are no part of one.
  static std::vector<std::size_t> begins(const std::string& code, bool (*fits)(char)) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < code.size(); ++i)
      if (fits(code[i]) && (i == 0 || (!support::isNamePart(code[i - 1]) && code[i - 1] != '$' &&
                                       code[i - 1] != '.')))
        found.push_back(i);
    return found;
  }

  std::string misspelt(const std::string& code) {
    const auto names = begins(code, text::isLetter);
    if (names.empty()) return {};
    const std::size_t at = names[below(names.size())];
    return code.substr(0, at + 1) + code.substr(at);
  }

  std::string withoutArgument(const std::string& code) {
    const auto cuts = support::commas(code);
    if (!support::isCall(code) || cuts.empty()) return {};
    const std::size_t at = below(cuts.size());
    const std::size_t end = at + 1 < cuts.size() ? cuts[at + 1] : code.size() - 1;
    return code.substr(0, cuts[at]) + code.substr(end);
  }

  static std::string raised(const std::string& code, std::size_t at) {
    std::size_t end = at;
    while (end < code.size() && text::isDigit(code[end])) ++end;
    return concat(code.substr(0, at), std::stoll(code.substr(at, end - at)) + 1, code.substr(end));
  }

  /// The slot or the channel of a measurement: its first two numbers.
  std::string shifted(const std::string& code) {
    if (!support::startsWithAny(code, {"Volt", "TC", "Br", "Pulse", "FFTFilt", "ModuleTemp"}))
      return {};
    const auto commas = support::commas(code);
    const std::size_t from = commas.size() > 1 ? commas[1] : 0;
    for (const std::size_t at : begins(code, text::isDigit))
      if (at > from && below(2) == 0) return raised(code, at);
    return {};
  }

  std::string renumbered(const std::string& code) {
    const auto numbers = begins(code, text::isDigit);
    return numbers.empty() ? "" : raised(code, numbers[below(numbers.size())]);
  }

  std::mt19937 random_;
};

/// Of a thousand one-line faults 99 in 100 are found by the checker or by reading back; those that
/// are not are listed.
TEST(Mutations, AreFoundByCheckerOrReadBack) {
  constexpr int wanted = 1001;
  Mutator mutator(5);
  std::array<int, kinds> tried = {}, missed = {};
  std::string list;
  int all = 0, silent = 0;
  for (unsigned seed = 0; all < wanted; ++seed) {
    const support::RandomCase one = support::randomCase(seed);
    const Lines lines = support::linesOf(SAVEDLD::generate(one.project, one.stamp).text);
    for (int n = 0; n < 400 && all < wanted; ++n) {
      const auto kind = static_cast<Kind>(n % kinds);
      const std::size_t at = mutator.below(lines.size());
      const std::string code = support::codeOf(lines[at]);
      const std::string faulty = mutator.faulty(kind, code);
      if (faulty.empty() || tried[kind] >= wanted / kinds) continue;
      Lines changed = lines;
      changed[at] = faulty;
      ++tried[kind];
      ++all;
      if (!readback::verifyProgram(support::joined(changed), one.project, one.stamp.dunmoreHost)
               .equal())
        continue;
      ++missed[kind];
      ++silent;
      list += concat("seed ", seed, ", line ", at + 1, ", fault ", int{kind}, ": ", code, " -> ",
                     faulty, "\n");
    }
  }
  std::printf("%d faults, %d not found\n%s", all, silent, list.c_str());
  for (const int count : tried) EXPECT_EQ(count, wanted / kinds);
  EXPECT_LE(silent * 100, all);
}

}  // namespace

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>

#include "generator/program_writer.h"
#include "logscript/check.h"
#include "logscript/scan_times.h"
#include "support/demo_project.h"
#include "support/program_lines.h"
#include "support/random_case.h"
#include "text/strings.h"

namespace {

using logscript::Finding;
using text::concat;

/// Errors and warnings as a person sees them.
std::string problems(std::string_view program) {
  std::string out;
  for (const Finding& finding : logscript::check(program))
    if (logscript::infoOf(finding.code).severity != logscript::Severity::hint)
      out += logscript::report(finding, "program", program);
  return out;
}

std::string randomProgram(unsigned seed) {
  const support::RandomCase one = support::randomCase(seed);
  return SAVEDLD::generate(one.project, one.stamp).text;
}

std::vector<std::string> goldenPrograms() {
  std::vector<std::string> programs;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::string(KGEN_GOLDEN_DIR) + "/programs"))
    if (entry.path().extension() != ".TI7") programs.push_back(support::wholeFile(entry.path()));
  return programs;
}

TEST(GeneratedPrograms, HaveNoFaults) {
  for (const std::string& program : goldenPrograms()) EXPECT_EQ(problems(program), "");
  for (unsigned seed = 0; seed < 200 && !HasFailure(); ++seed)
    EXPECT_EQ(problems(randomProgram(seed)), "") << seed;
}

TEST(GeneratedPrograms, CutAnywhereAreReadWithoutCrash) {
  constexpr std::size_t cut = 97;
  for (const std::string& program : goldenPrograms()) {
    if (program.size() > 50000) continue;  // the others have every kind of line, too
    for (std::size_t size = program.size() % cut; size < program.size(); size += cut) {
      const std::string start = program.substr(0, size);
      EXPECT_TRUE(logscript::hasErrors(logscript::check(start)) || size + 120 > program.size());
      logscript::scanTimes(logscript::parse(start));
    }
  }
}

/// One fault put into a line of a program; empty when the line is not one for it.
class Mutator {
 public:
  explicit Mutator(std::mt19937& random) : random_(random) {}

  enum Kind {
    declarationDropped,
    nameMisspelt,
    argumentAdded,
    argumentDropped,
    closingDropped,
    channelDoubled,
    kinds
  };

  std::string faulty(Kind kind, const std::string& line, const std::string& whole) {
    const std::string code = support::codeOf(line);
    switch (kind) {
      case declarationDropped:
        return isUsedDeclaration(code, whole) ? " " : "";
      case nameMisspelt:
        return misspelt(code, whole);
      case argumentAdded:
        return withArgument(code);
      case argumentDropped:
        return withoutArgument(code);
      case closingDropped:
        return support::startsWithAny(code, {"Next", "End", "Loop"}) ? " " : "";
      default:
        return doubled(code);
    }
  }

 private:
  std::size_t below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }

  static std::size_t uses(const std::string& name, const std::string& whole) {
    std::size_t count = 0;
    for (std::size_t at = whole.find(name); at != std::string::npos;
         at = whole.find(name, at + 1)) {
      const std::size_t lineStart = whole.rfind('\n', at) + 1;
      const bool comment = whole.substr(lineStart, at - lineStart).find('\'') != std::string::npos;
      if (!comment && (at == 0 || !support::isNamePart(whole[at - 1])) &&
          !support::isNamePart(whole[at + name.size()]))
        ++count;
    }
    return count;
  }

  static std::string nameAfter(const std::string& code, std::size_t at) {
    std::size_t end = at;
    while (end < code.size() && support::isNamePart(code[end])) ++end;
    return code.substr(at, end - at);
  }

  static bool isUsedDeclaration(const std::string& code, const std::string& whole) {
    if (!support::startsWithAny(code, {"Const ", "Dim ", "Public "}) ||
        code.find(',') < code.find('('))
      return false;
    return uses(nameAfter(code, code.find(' ') + 1), whole) > 1;
  }

  /// A letter doubled in a name that the rest of the program uses.
  std::string misspelt(const std::string& code, const std::string& whole) {
    if (code.empty() || support::startsWithAny(code, {"Units", "Alias", "Data "})) return {};
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < code.size(); ++i)
      if (text::isLetter(code[i]) &&
          (i == 0 || (!support::isNamePart(code[i - 1]) && code[i - 1] != '$')))
        starts.push_back(i);
    if (starts.empty()) return {};
    const std::size_t at = starts[below(starts.size())];
    if (code.find('"') < at || uses(nameAfter(code, at), whole) < 2) return {};
    return code.substr(0, at + 1) + code.substr(at);
  }

  /// Sample and Excite may have an argument more or less; which was meant only reading back knows.
  static bool hasOneForm(const std::string& code) {
    return support::isCall(code) && !support::startsWithAny(code, {"Sample", "Excite"});
  }

  static std::string withArgument(const std::string& code) {
    return hasOneForm(code) ? code.substr(0, code.size() - 1) + ",1)" : std::string();
  }

  std::string withoutArgument(const std::string& code) {
    const std::vector<std::size_t> cuts = support::commas(code);
    if (!hasOneForm(code) || cuts.empty()) return {};
    const std::size_t at = below(cuts.size());
    const std::size_t end = at + 1 < cuts.size() ? cuts[at + 1] : code.size() - 1;
    return code.substr(0, cuts[at]) + code.substr(end);
  }

  /// A measurement whose channel becomes that of the instruction before: written twice.
  static std::string doubled(const std::string& code) {
    return support::startsWithAny(code,
                                  {"VoltSE(", "VoltDiff(", "TCDIFF(", "TCSE(", "Br", "PulseCount("})
               ? code + "\n" + code
               : std::string();
  }

  std::mt19937& random_;
};

TEST(Mutations, AreReported) {
  std::mt19937 random(20);
  Mutator mutator(random);
  std::map<int, int> tried, missed;
  std::string list;
  for (unsigned seed = 0; seed < 60; ++seed) {
    const std::string program = randomProgram(seed);
    const support::Lines lines = support::linesOf(program);
    const std::string clean = problems(program);
    for (int n = 0; n < 600; ++n) {
      const auto kind = static_cast<Mutator::Kind>(n % Mutator::kinds);
      const std::size_t at =
          std::uniform_int_distribution<std::size_t>(0, lines.size() - 1)(random);
      const std::string faulty = mutator.faulty(kind, lines[at], program);
      if (faulty.empty() || tried[kind] > 400) continue;
      support::Lines changed = lines;
      changed[at] = faulty;
      ++tried[kind];
      if (problems(support::joined(changed)) != clean) continue;
      ++missed[kind];
      list += concat(seed, ":", at + 1, " ", int{kind}, ": ", support::codeOf(lines[at]), " -> ",
                     faulty, "\n");
    }
  }
  int all = 0, silent = 0;
  for (const auto& [kind, count] : tried) {
    all += count;
    silent += missed[kind];
    EXPECT_GT(count, 20) << kind;
  }
  EXPECT_GT(all, 1000);
  EXPECT_LE(silent * 100, all) << list;
}

}  // namespace

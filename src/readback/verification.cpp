#include "readback/verification.h"

#include <algorithm>
#include <set>

#include "logscript/check.h"
#include "model/repair.h"
#include "readback/reading.h"
#include "readback/sections.h"
#include "readback/sequence.h"

namespace readback {
namespace {

using logscript::Finding;
using text::concat;

/// A piece of a program as messages show it: short and without signs that move a cursor.
std::string brief(std::string_view piece) {
  constexpr std::size_t longest = 100;
  std::string out(piece.substr(0, longest));
  for (char& c : out)
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = '?';
  return text::asUtf8(out) + (piece.size() > longest ? "..." : "");
}

/// Compares what a program says with what is expected of it.
class Comparison {
 public:
  Comparison(const logscript::Program& program, const logscript::Program& expected,
             const Expectation& expectation)
      : program_(program),
        expected_(expected),
        expectation_(expectation),
        wanted_(readingOf(expected)),
        found_(readingOf(program, wanted_.constants)) {}

  std::vector<Difference> run() {
    named(found_.constants, wanted_.constants, "the constant ");
    named(found_.variables, wanted_.variables, "the variable ");
    named(found_.aliases, wanted_.aliases, "the alias ");
    named(found_.units, wanted_.units, "the unit of ");
    const auto size = static_cast<std::uint32_t>(program_.text.size());
    sequence(found_.data, wanted_.data, size);
    sequence(found_.order, wanted_.order, size);
    for (const auto& [name, items] : wanted_.bodies) body(name, items);
    std::stable_sort(differences_.begin(), differences_.end(),
                     [](const Difference& a, const Difference& b) {
                       return std::pair(a.line, a.column) < std::pair(b.line, b.column);
                     });
    return std::move(differences_);
  }

 private:
  const Expectation::Line& lineOf(const Item& wanted) const {
    return expectation_.at(expected_.line(wanted.offset));
  }

  void tell(std::uint32_t offset, std::string text, std::string_view is, std::string_view expected,
            Setting setting) {
    const std::uint32_t at = std::min(offset, static_cast<std::uint32_t>(program_.text.size()));
    const std::uint32_t line = program_.line(at);
    differences_.push_back({line, at - program_.lineStarts[line - 1] + 1, std::move(text),
                            brief(is), brief(expected), std::move(setting)});
  }

  void missing(std::uint32_t offset, std::string text, const Item& wanted) {
    tell(offset, std::move(text), "", shown(wanted), lineOf(wanted).setting);
  }
  void surplus(const std::string& what, const Item& item) {
    tell(item.offset, concat(what, " is nowhere in the project"), shown(item), "", everyProgram);
  }

  /// Parts of two items of one head.
  void parts(const Item& item, const Item& wanted) {
    const Expectation::Line& line = lineOf(wanted);
    if (item.parts.size() != wanted.parts.size())
      return tell(item.offset,
                  concat(item.head, " has ", item.parts.size(), " parts and ", wanted.parts.size(),
                         " are expected"),
                  shown(item), shown(wanted), line.setting);
    for (std::size_t i = 0; i < item.parts.size(); ++i) {
      if (samePart(item.parts[i], wanted.parts[i])) continue;
      const bool ownKey = i < line.keys.size() && !line.keys[i].empty();
      tell(item.offsets[i],
           concat(partTitle(wanted, i), " is ", brief(item.parts[i]), " and ",
                  brief(wanted.parts[i]), " is expected"),
           item.parts[i], wanted.parts[i], ownKey ? line.setting.with(line.keys[i]) : line.setting);
    }
  }

  void named(const Items& found, const Items& wanted, std::string_view title) {
    for (const auto& [name, item] : wanted) {
      const auto own = found.find(name);
      if (own == found.end())
        missing(placeAfter(found, wanted, item),
                concat(title, item.head, " is missing, behind this line or elsewhere"), item);
      else
        parts(own->second, item);
    }
    for (const auto& [name, item] : found)
      if (wanted.find(name) == wanted.end()) surplus(concat(title, item.head), item);
  }

  /// Where the declaration stands that should come before a missing one.
  static std::uint32_t placeAfter(const Items& found, const Items& wanted, const Item& missing) {
    std::uint32_t before = 0, place = 0;
    for (const auto& [name, item] : wanted) {
      const auto own = found.find(name);
      if (own == found.end() || item.offset >= missing.offset || item.offset < before) continue;
      before = item.offset;
      place = own->second.offset;
    }
    return place;
  }

  void body(const std::string& name, const std::vector<Item>& wanted) {
    const auto own = found_.bodies.find(name);
    if (own != found_.bodies.end()) return sequence(own->second, wanted, endOf(own->second));
    if (name == text::lower(programBody))
      tell(0, "the program between BeginProg and EndProg is missing", "", "", everyProgram);
  }

  [[nodiscard]] std::uint32_t endOf(const std::vector<Item>& items) const {
    return items.empty() ? 0 : items.back().offset;
  }

  void sequence(const std::vector<Item>& found, const std::vector<Item>& wanted,
                std::uint32_t end) {
    Pairs pairs = commonSequence(found.size(), wanted.size(), [&](std::size_t i, std::size_t j) {
      return sameItem(found[i], wanted[j]);
    });
    pairs.emplace_back(found.size(), wanted.size());
    std::size_t i = 0, j = 0;
    for (const auto& [nextFound, nextWanted] : pairs) {
      gap({found.begin() + static_cast<std::ptrdiff_t>(i),
           found.begin() + static_cast<std::ptrdiff_t>(nextFound)},
          {wanted.begin() + static_cast<std::ptrdiff_t>(j),
           wanted.begin() + static_cast<std::ptrdiff_t>(nextWanted)},
          nextFound < found.size() ? found[nextFound].offset : end);
      i = nextFound + 1;
      j = nextWanted + 1;
    }
  }

  using Similar = bool (*)(const Item&, const Item&);
  static bool sameTarget(const Item& a, const Item& b) {
    return sameHead(a, b) && !a.parts.empty() && !b.parts.empty() &&
           samePart(a.parts.front(), b.parts.front());
  }
  static bool sameHead(const Item& a, const Item& b) {
    return text::equalsIgnoringCase(a.head, b.head);
  }

  /// Items between two places that agree: those that are alike differ in their parts, the others
  /// are missing or too much.
  void gap(std::vector<Item> found, std::vector<Item> wanted, std::uint32_t end) {
    for (const Similar similar : {sameTarget, sameHead})
      for (auto item = wanted.begin(); item != wanted.end();) {
        const auto own = std::find_if(found.begin(), found.end(),
                                      [&](const Item& each) { return similar(each, *item); });
        if (own == found.end()) {
          ++item;
          continue;
        }
        parts(*own, *item);
        found.erase(own);
        item = wanted.erase(item);
      }
    for (const Item& item : wanted)
      missing(end, concat(brief(shown(item)), " is missing before this line"), item);
    for (const Item& item : found) surplus(brief(shown(item)), item);
  }

  const logscript::Program& program_;
  const logscript::Program& expected_;
  const Expectation& expectation_;
  Reading wanted_, found_;
  std::vector<Difference> differences_;
};

/// What a finding says, without the lines that it names and in one case: two programs are laid out
/// and spelt each in its own way.
std::string saidBy(const Finding& finding) {
  std::string out;
  for (const char c : finding.text)
    if (!text::isDigit(c) || !out.ends_with("line ")) out += logscript::folded(c);
  return out;
}

std::vector<Finding> errorsIn(const logscript::Program& program) {
  std::vector<Finding> errors;
  for (Finding& finding : logscript::check(program))
    if (logscript::infoOf(finding.code).severity == logscript::Severity::error)
      errors.push_back(std::move(finding));
  return errors;
}

/// Errors of the program that the texts of the project don't make in any program.
std::vector<Finding> ownErrors(const logscript::Program& program,
                               const logscript::Program& expected) {
  std::set<std::string> known;
  std::vector<Finding> errors = errorsIn(program);
  if (errors.empty()) return errors;
  for (const Finding& finding : errorsIn(expected)) known.insert(saidBy(finding));
  std::erase_if(errors, [&](const Finding& finding) { return known.count(saidBy(finding)) > 0; });
  return errors;
}

}  // namespace

std::string nameOf(const Setting& setting) {
  if (setting.section.empty()) return "of every program";
  std::string name(setting.section);
  if (!setting.key.empty()) name += concat(" ", setting.key);
  if (!setting.owner.empty()) name += concat(setting.key.empty() ? " " : ", ", setting.owner);
  return name;
}

std::string report(const Difference& difference, std::string_view file) {
  const bool surplus = difference.expected.empty() && difference.setting.section.empty();
  return concat(file, ":", difference.line, ":", difference.column, ": ", difference.text,
                surplus ? "" : concat(" (", nameOf(difference.setting), ")"), "\n");
}

Verification verifyProgram(std::string_view text, const model::Project& project, bool dunmoreHost) {
  std::vector<std::string> notes;  // they belong to the making of a program
  const std::optional<model::Project> mended = model::repaired(project, notes);
  const Outline outline(mended ? *mended : project, dunmoreHost);
  const Expectation expectation = expectedProgram(outline);
  const logscript::Program program = logscript::parse(text);
  const logscript::Program expected = logscript::parse(expectation.text());
  Verification result;
  result.errors = ownErrors(program, expected);
  if (program.givenUp) return result;
  result.differences = Comparison(program, expected, expectation).run();
  std::erase_if(result.differences, [&](const Difference& difference) {  // told once
    return std::any_of(result.errors.begin(), result.errors.end(),
                       [&](const Finding& error) { return error.line == difference.line; });
  });
  return result;
}

}  // namespace readback

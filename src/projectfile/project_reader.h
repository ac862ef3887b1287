#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "projectfile/project_file.h"
#include "projectfile/section_keys.h"

namespace projectfile {

/// The text of a range rules over its code, unless the text is unknown.
void settleRangeCodes(model::Project& project);

/// Fills a project from the lines of a file, which come in pieces of any size. A file that turns
/// out to be unusable leaves it half filled.
class ProjectReader {
 public:
  ProjectReader(model::Project& project, const KGEN_GENFILE::LoadOptions& options);

  /// Takes the whole lines at the front of `text`, at the end of the file also the rest. Returns
  /// the bytes taken; the caller brings the others again in front of what follows them.
  std::size_t take(std::string_view text, bool atEnd);

  /// What makes the file unusable, with the place; nothing more is read after it.
  [[nodiscard]] const std::optional<std::string>& failure() const { return failure_; }

  /// After the last line: settles what depends on several lines. False when nothing in the file
  /// says that it is a project.
  bool finish();

  KGEN_GENFILE::LoadReport& report() { return report_; }

 private:
  struct Section {
    SectionKeys keys;
    bool described = false;
  };

  bool holdsNul(std::string_view text);
  void takeLine(std::string_view line, bool mayBeHeader);
  void takeFirstLine(std::string_view line);
  void enterSection(std::string_view header);
  void takeValueLine(std::string_view line);
  bool takeExpected(std::string_view line);
  bool takeSought(std::string_view line, std::size_t equals);
  bool store(std::uint32_t entry, std::string_view value, std::string_view key);
  void storeValue(const SectionKeys::Entry& entry, const ValueRef& place, std::string_view value,
                  std::string_view key);
  template <class Integer>
  void storeInteger(const SectionKeys::Entry& entry, Integer& place, std::string_view value,
                    std::string_view key);
  void note(std::size_t line, std::string text);
  void ignore(std::string_view line);

  void moveLegacyQuantities();
  void chooseModel();
  void settleWriteIfs();
  void adoptOldEventTexts();
  void limitFilterBlocks();
  void emptyUncountedBlocks();

  Target target_;
  KGEN_GENFILE::LoadOptions options_;
  KGEN_GENFILE::LoadReport report_;
  std::optional<std::string> failure_;

  std::vector<Section> sections_;  // beside knownSections()
  SectionKeys* keys_ = nullptr;    // of the current section; nullptr: unknown
  std::uint32_t expected_ = 0;     // entry of the next key, if the order is the usual one
  std::uint32_t previous_ = 0;
  KeyTailReader tail_;
  bool afterHeader_ = false;
  bool looksLikeProject_ = false;
};

}  // namespace projectfile

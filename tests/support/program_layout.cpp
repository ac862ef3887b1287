#include "support/program_layout.h"

#include <algorithm>
#include <cmath>

namespace support {
namespace {

constexpr std::size_t commentColumn = 65;  // characters of code before a comment
constexpr std::size_t mostLines = 3000;

/// Comments that do not stand at the comment column: blanks before them, or added to the padding.
struct CommentSpacing {
  std::string_view begin;
  std::size_t blanks;
  bool padded;
};
constexpr CommentSpacing ownSpacing[] = {
    {"'EnableTransmit, ", 2, false}, {"'DisableTransmit, ", 2, false},
    {"'Set Switches - ", 1, false},  {"'Persist CANIF ", 13, false},
    {"'VoltFilt SubScan", 6, true},  {"'Strain", 1, false},
};

/// Banners whose signs are not counted from the title.
struct FixedBanner {
  std::string_view title;
  std::size_t left, right;
};
constexpr FixedBanner fixedBanners[] = {
    {" Logger CONFIGURATION ", 13, 13}, {" Burst Trigger ", 25, 25},
    {" File Mark Logic ", 25, 25},      {" Table Full Logic ", 24, 24},
    {" Output Table Control ", 22, 22}, {" CANChk Table ", 26, 24},
};

std::size_t ruleLength(std::size_t title) {
  return static_cast<std::size_t>(std::nearbyint((64.0 - static_cast<double>(title)) / 2));
}

std::size_t blanksBefore(const ProgramLine& line) {
  const std::size_t padding =
      line.code.size() > commentColumn ? 1 : commentColumn - line.code.size();
  for (const CommentSpacing& own : ownSpacing)
    if (line.comment.starts_with(own.begin)) return own.padded ? padding + own.blanks : own.blanks;
  return padding;
}

bool printable(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// A comment of a whole line that is drawn with signs, taken apart.
struct Banner {
  std::size_t left = 0, right = 0;
  char leftSign = 0, rightSign = 0;
  std::string title;
};

Banner bannerIn(const std::string& comment) {
  Banner banner;
  const std::size_t start = comment.find_first_not_of(' ', 1);
  if (start == std::string::npos) return banner;
  banner.leftSign = comment[start];
  banner.rightSign = comment.back();
  const std::size_t end = comment.find_first_not_of(banner.leftSign, start);
  if (end == std::string::npos) return banner;
  banner.left = end - start;
  const std::size_t last = comment.find_last_not_of(banner.rightSign);
  banner.right = comment.size() - 1 - last;
  banner.title = comment.substr(end, last + 1 - end);
  return banner;
}

bool isRule(char left, char right) {
  return (left == '\\' && right == '/') || (left == '_' && right == '_') ||
         (left == '-' && right == '-');
}

void checkBanner(const ProgramLine& line, int number, std::vector<Fault>& faults) {
  const Banner banner = bannerIn(line.comment);
  if (banner.left < 2 || banner.right < 2) {
    if (line.comment.find("____") != std::string::npos) faults.push_back({number, "half a banner"});
    return;
  }
  if (!isRule(banner.leftSign, banner.rightSign)) {
    faults.push_back({number, "a banner of mixed signs"});
    return;
  }
  const auto* fixed = std::find_if(std::begin(fixedBanners), std::end(fixedBanners),
                                   [&](const auto& f) { return f.title == banner.title; });
  const std::size_t rule = ruleLength(banner.title.size());
  const bool known = fixed != std::end(fixedBanners);
  if (banner.left != (known ? fixed->left : rule) || banner.right != (known ? fixed->right : rule))
    faults.push_back({number, "a banner of the wrong width"});
}

void checkLine(const ProgramLine& line, int number, std::vector<Fault>& faults) {
  if (!printable(line.code) || !printable(line.comment))
    faults.push_back({number, "a character that is not printable ASCII"});
  if (line.comment.empty()) {
    if (line.blanks > 0) faults.push_back({number, "blanks at the end"});
  } else if (line.code.empty()) {
    if (line.comment != "'***** Program End *****") checkBanner(line, number, faults);
  } else if (line.blanks != blanksBefore(line)) {
    faults.push_back({number, "the comment stands in the wrong column"});
  }
}

ProgramLine splitLine(std::string_view text) {
  bool quoted = false;
  std::size_t end = 0;
  for (; end < text.size() && (quoted || text[end] != '\''); ++end)
    if (text[end] == '"') quoted = !quoted;
  const std::size_t last = text.substr(0, end).find_last_not_of(' ');
  const std::size_t code = last == std::string_view::npos ? 0 : last + 1;
  return {std::string(text.substr(0, code)), std::string(text.substr(end)), end - code};
}

}  // namespace

std::vector<ProgramLine> programLines(std::string_view text, std::vector<Fault>& faults) {
  std::vector<ProgramLine> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (end == text.size() || !line.ends_with('\r'))
      faults.push_back({static_cast<int>(lines.size()) + 1, "the line does not end in CR LF"});
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(splitLine(line));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

void checkLayout(const std::vector<ProgramLine>& lines, std::vector<Fault>& faults) {
  for (std::size_t i = 0; i < lines.size(); ++i)
    checkLine(lines[i], static_cast<int>(i) + 1, faults);
  if (lines.size() > mostLines)
    faults.push_back({static_cast<int>(mostLines) + 1, "more lines than the logger takes"});
}

}  // namespace support

#pragma once

#include <string>
#include <string_view>
#include <vector>

/// How the lines of a logger program look, whatever they mean.
namespace support {

struct Fault {
  int line = 0;  // from 1
  std::string text;
  bool operator==(const Fault&) const = default;
};

/// A line of a program: code without its trailing blanks, and the comment from its "'" on.
struct ProgramLine {
  std::string code, comment;
  std::size_t blanks = 0;  // between code and comment, or at the end of a line without comment
};

/// The lines of a text; one that does not end in CR LF is a fault.
std::vector<ProgramLine> programLines(std::string_view text, std::vector<Fault>& faults);

/// Characters, comment columns, banners and length of the program.
void checkLayout(const std::vector<ProgramLine>& lines, std::vector<Fault>& faults);

}  // namespace support

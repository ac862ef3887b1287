#include "generator/program_text.h"

#include "generator/program_writer.h"

namespace generator {
namespace {

constexpr std::size_t commentColumn = 65;  // characters of code before a comment
constexpr std::size_t bannerWidth = 64;
constexpr std::size_t usualSize = 1U << 19U;  // room that is not written to costs nothing

}  // namespace

ProgramText::ProgramText() { text_.reserve(usualSize); }

void ProgramText::beginLine() {
  if (++lines_ > SAVEDLD::maxProgramLines)
    throw SAVEDLD::ProgramTooLong(
        text::concat("the program needs more than ", SAVEDLD::maxProgramLines, " lines"));
  afterEmptyLine_ = false;
}

void ProgramText::endLine() { text_ += "\r\n"; }

void ProgramText::append(std::string_view line) {
  beginLine();
  text_ += line;
  endLine();
  afterEmptyLine_ = line.empty();
}

void ProgramText::padCode(std::size_t start) {
  const std::size_t size = text_.size() - start;
  if (size < commentColumn) text_.append(commentColumn - size, ' ');
  if (size > commentColumn) text_ += ' ';
}

void ProgramText::sectionBanner(std::string_view title) {
  line("'", text::ruled(title, bannerWidth, '\\', '/'));
  append("");
}

void ProgramText::spacedSectionBanner(std::string_view title) {
  if (!afterEmptyLine_) append("");
  sectionBanner(title);
}

void ProgramText::subBanner(std::string_view title) {
  line("'", text::ruled(title, bannerWidth, '_', '_'));
}

void ProgramText::bodyBanner(std::string_view title) {
  line("'      ", text::ruled(title, bannerWidth, '_', '_'));
}

void ProgramText::hyphenBanner(std::string_view title) {
  line("'", text::ruled(title, bannerWidth, '-', '-'));
}

void ProgramText::fixedBanner(std::string_view title, std::size_t underscores) {
  const std::string rule(underscores, '_');
  line("'      ", rule, title, rule);
}

}  // namespace generator

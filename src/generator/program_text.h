#pragma once

#include <string>
#include <string_view>

#include "text/strings.h"

namespace generator {

/// The program as it grows, line by line; throws SAVEDLD::ProgramTooLong beyond the last line
/// that a program may have.
class ProgramText {
 public:
  ProgramText();

  /// One line of the program. A line break inside makes two lines of the file out of one here.
  void append(std::string_view line);

  /// A line of pieces joined together.
  template <class... Pieces>
  void line(const Pieces&... pieces) {
    beginLine();
    (text::appendPiece(text_, pieces), ...);
    endLine();
  }

  /// Code padded to the comment column, then the comment (with its "'"):
  /// `out.code("Dim ", name).comment("'Declare ", name)`.
  class CodeLine {
   public:
    template <class... Pieces>
    void comment(const Pieces&... pieces) {
      out_.padCode(start_);
      (text::appendPiece(out_.text_, pieces), ...);
      out_.endLine();
    }

   private:
    friend class ProgramText;
    explicit CodeLine(ProgramText& out) : out_(out), start_(out.text_.size()) {}
    ProgramText& out_;
    std::size_t start_;
  };
  template <class... Pieces>
  [[nodiscard]] CodeLine code(const Pieces&... pieces) {
    beginLine();
    const CodeLine line(*this);
    (text::appendPiece(text_, pieces), ...);
    return line;
  }

  /// "'\\\ TITLE ///" and an empty line; the spaced form sees to one before it.
  void sectionBanner(std::string_view title);
  void spacedSectionBanner(std::string_view title);
  /// "'___ title ___".
  void subBanner(std::string_view title);
  /// The same, six blanks further right: inside the scan.
  void bodyBanner(std::string_view title);
  /// "'--- title ---".
  void hyphenBanner(std::string_view title);
  /// Six blanks in, a fixed count of underscores on each side.
  void fixedBanner(std::string_view title, std::size_t underscores);

  [[nodiscard]] int lines() const { return lines_; }
  /// Moves the finished text out.
  std::string take() { return std::move(text_); }

 private:
  void beginLine();
  void padCode(std::size_t start);
  void endLine();

  std::string text_;
  int lines_ = 0;
  bool afterEmptyLine_ = false;
};

}  // namespace generator

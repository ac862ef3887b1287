#pragma once

#include <QPlainTextEdit>
#include <QSyntaxHighlighter>

#include "ui/texts.h"

namespace ui {

/// Colours a logger program by the words of its language.
class ProgramColours final : public QSyntaxHighlighter {
  Q_OBJECT
 public:
  ProgramColours(QTextDocument* document, const QWidget& palette);

 protected:
  void highlightBlock(const QString& line) override;

 private:
  const QWidget& palette_;
};

/// A program to read, with colours and line numbers.
class ProgramView final : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit ProgramView(QWidget* parent = nullptr);
  /// Keeps the place that is shown as far as the new text has it.
  void setProgram(std::string_view program);
  /// Numbers in front of the lines.
  void setNumbered(bool numbered);
  void showLine(int line);  // from 1

  [[nodiscard]] int numberWidth() const;
  void paintNumbers(QPaintEvent& event);

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void placeNumbers();
  ProgramColours* colours_;
  QWidget* numbers_;
  QString shown_;
};

}  // namespace ui

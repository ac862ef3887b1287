#pragma once

#include <QPlainTextEdit>
#include <functional>
#include <string>

#include "desktop/find_bar.h"

namespace desktop {

/// A text of the project with its find bar. It is shown anew only while somebody can see it.
class DocumentPage final : public QWidget {
  Q_OBJECT
 public:
  using Show = std::function<void(const std::string& text)>;
  /// `show` puts a text into the box.
  DocumentPage(QPlainTextEdit* box, Show show, QWidget* parent);

  void setText(std::string text);
  void openFind() { findBar().open(); }
  void findNext() { findBar().findNext(); }
  void findPrevious() { findBar().findPrevious(); }

 private:
  void showEvent(QShowEvent* event) override;
  void showText();
  FindBar& findBar();

  QPlainTextEdit* box_;
  Show show_;
  FindBar* find_ = nullptr;  // comes when it is asked for
  std::string text_;
  bool outdated_ = false;
};

/// A page for a text in a fixed font that keeps its place when the text changes.
DocumentPage* plainTextPage(const QString& name, const QString& help, QWidget* parent);

}  // namespace desktop

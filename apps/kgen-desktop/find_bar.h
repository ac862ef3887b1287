#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>

namespace desktop {

/// Finds words in a text below which it stands: next, previous, and how many there are. Esc hides
/// it.
class FindBar final : public QWidget {
  Q_OBJECT
 public:
  FindBar(QPlainTextEdit& text, QWidget* parent);
  /// Shows the bar with what is selected, ready to type.
  void open();
  /// The text is another one.
  void recount();
  void findNext();
  void findPrevious();

 private:
  QToolButton* addButton(Qt::ArrowType arrow, const QString& caption, const QString& help);
  void search(const QString& words);
  void step(QTextDocument::FindFlags flags);
  void mark();
  void tellCount();
  void close();
  void keyPressEvent(QKeyEvent* event) override;

  QPlainTextEdit& text_;
  QLineEdit* words_;
  QLabel* count_;
};

}  // namespace desktop

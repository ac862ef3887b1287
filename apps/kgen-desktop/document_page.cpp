#include "desktop/document_page.h"

#include <QFontDatabase>
#include <QVBoxLayout>

#include "ui/form.h"
#include "ui/shown_text.h"

namespace desktop {

DocumentPage::DocumentPage(QPlainTextEdit* box, Show show, QWidget* parent)
    : QWidget(parent), box_(box), show_(std::move(show)) {
  QPalette palette = box_->palette();  // what is found shows while the find bar has the focus
  palette.setColor(QPalette::Inactive, QPalette::Highlight,
                   palette.color(QPalette::Active, QPalette::Highlight));
  palette.setColor(QPalette::Inactive, QPalette::HighlightedText,
                   palette.color(QPalette::Active, QPalette::HighlightedText));
  box_->setPalette(palette);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(box_, 1);
}

void DocumentPage::setText(std::string text) {
  if (text == text_) return;
  text_ = std::move(text);
  outdated_ = true;
  if (isVisible()) showText();
}

void DocumentPage::showText() {
  outdated_ = false;
  show_(text_);
  if (find_ != nullptr) find_->recount();
}

FindBar& DocumentPage::findBar() {
  if (find_ == nullptr) {
    find_ = new FindBar(*box_, this);
    layout()->addWidget(find_);
  }
  return *find_;
}

void DocumentPage::showEvent(QShowEvent* event) {
  if (outdated_) showText();
  QWidget::showEvent(event);
}

DocumentPage* plainTextPage(const QString& name, const QString& help, QWidget* parent) {
  auto* box = new QPlainTextEdit(parent);
  box->setReadOnly(true);
  box->setLineWrapMode(QPlainTextEdit::NoWrap);
  box->setTabChangesFocus(true);
  box->setUndoRedoEnabled(false);
  box->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  ui::describe(*box, name, help);
  const auto show = [box, shown = QString()](const std::string& text) mutable {
    const QString next = ui::qstring(text).remove('\r');
    ui::showText(*box, shown, next);
    shown = next;
  };
  return new DocumentPage(box, show, parent);
}

}  // namespace desktop

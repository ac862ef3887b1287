#include "ui/program_view.h"

#include <QFontDatabase>
#include <QPainter>
#include <QTextBlock>

#include "logscript/lexer.h"
#include "ui/shown_text.h"

namespace ui {
namespace {

enum class Shade { keyword, instruction, constant, number, text, comment };

/// Colours with a contrast of at least 4.5 to 1 on light and on dark grounds.
QColor colourOf(Shade shade, bool dark) {
  switch (shade) {
    case Shade::keyword:
      return dark ? QColor(0x7a, 0xb8, 0xff) : QColor(0x00, 0x3f, 0xa8);
    case Shade::instruction:
      return dark ? QColor(0xd9, 0xa0, 0xf5) : QColor(0x7a, 0x1f, 0xa2);
    case Shade::constant:
      return dark ? QColor(0x6f, 0xd6, 0xc4) : QColor(0x00, 0x64, 0x5a);
    case Shade::number:
      return dark ? QColor(0xf2, 0xb4, 0x6c) : QColor(0x8a, 0x4b, 0x00);
    case Shade::text:
      return dark ? QColor(0xf0, 0x9a, 0x9a) : QColor(0xa3, 0x15, 0x15);
    case Shade::comment:
      break;
  }
  return dark ? QColor(0x8f, 0xc0, 0x8f) : QColor(0x2d, 0x6a, 0x2d);
}

std::optional<Shade> shadeOf(const logscript::Token& token) {
  using logscript::WordKind;
  if (token.kind == logscript::TokenKind::number) return Shade::number;
  if (token.kind == logscript::TokenKind::text) return Shade::text;
  if (token.kind != logscript::TokenKind::name) return std::nullopt;
  switch (logscript::Names::kindOf(token.name)) {
    case WordKind::name:
      return std::nullopt;
    case WordKind::keyword:
      return Shade::keyword;
    case WordKind::instruction:
    case WordKind::function:
      return Shade::instruction;
    default:
      return Shade::constant;
  }
}

/// The strip in front of the lines.
class NumberStrip final : public QWidget {
 public:
  explicit NumberStrip(ProgramView& view) : QWidget(&view), view_(view) {}
  [[nodiscard]] QSize sizeHint() const override { return {view_.numberWidth(), 0}; }

 protected:
  void paintEvent(QPaintEvent* event) override { view_.paintNumbers(*event); }

 private:
  ProgramView& view_;
};

}  // namespace

ProgramColours::ProgramColours(QTextDocument* document, const QWidget& palette)
    : QSyntaxHighlighter(document), palette_(palette) {}

void ProgramColours::highlightBlock(const QString& line) {
  const bool dark = palette_.palette().color(QPalette::Base).lightness() < 128;
  // One sign of the line is one byte here, so that places in both agree.
  const QByteArray bytes = line.toLatin1();
  const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  static const logscript::Names vocabulary;
  logscript::Names names = vocabulary;
  std::vector<std::uint32_t> lineStarts;
  logscript::Lexer lexer(text, names, lineStarts);
  std::uint32_t end = 0;
  for (logscript::Token token = lexer.next();
       token.kind != logscript::TokenKind::endOfText && token.end > token.offset;
       token = lexer.next()) {
    if (const auto shade = shadeOf(token))
      setFormat(static_cast<int>(token.offset), static_cast<int>(token.end - token.offset),
                colourOf(*shade, dark));
    end = token.end;
  }
  const qsizetype comment = line.indexOf('\'', static_cast<qsizetype>(end));
  if (comment >= 0)
    setFormat(static_cast<int>(comment), static_cast<int>(line.size() - comment),
              colourOf(Shade::comment, dark));
}

ProgramView::ProgramView(QWidget* parent)
    : QPlainTextEdit(parent), colours_(new ProgramColours(document(), *this)), numbers_(nullptr) {
  setReadOnly(true);
  setLineWrapMode(NoWrap);
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setTabChangesFocus(true);
  setUndoRedoEnabled(false);
}

void ProgramView::setProgram(std::string_view program) {
  const QString text = qstring(program).remove('\r');
  if (text == shown_) return;
  showText(*this, shown_, text);
  shown_ = text;
}

void ProgramView::setNumbered(bool numbered) {
  if (!numbered || numbers_ != nullptr) return;
  numbers_ = new NumberStrip(*this);
  connect(this, &QPlainTextEdit::blockCountChanged, this, &ProgramView::placeNumbers);
  connect(this, &QPlainTextEdit::updateRequest, numbers_, [this](const QRect& rect, int dy) {
    dy != 0 ? numbers_->scroll(0, dy)
            : numbers_->update(0, rect.y(), numbers_->width(), rect.height());
  });
  placeNumbers();
}

void ProgramView::showLine(int line) {
  QTextCursor cursor(document()->findBlockByNumber(line - 1));
  cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  centerCursor();
}

int ProgramView::numberWidth() const {
  return fontMetrics().horizontalAdvance(QString::number(std::max(blockCount(), 999))) + 12;
}

void ProgramView::placeNumbers() {
  setViewportMargins(numberWidth(), 0, 0, 0);
  const QRect inside = contentsRect();
  numbers_->setGeometry(inside.left(), inside.top(), numberWidth(), inside.height());
}

/// Other colours on another ground, also of the lines that stay.
void ProgramView::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) colours_->rehighlight();
}

void ProgramView::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  if (numbers_ != nullptr) placeNumbers();
}

void ProgramView::paintNumbers(QPaintEvent& event) {
  QPainter painter(numbers_);
  painter.fillRect(event.rect(), palette().color(QPalette::Window));
  painter.setPen(palette().color(QPalette::WindowText));
  painter.setFont(font());
  for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
    const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
    if (place.top() > event.rect().bottom()) break;
    painter.drawText(QRectF(0, place.top(), numbers_->width() - 6, place.height()), Qt::AlignRight,
                     QString::number(block.blockNumber() + 1));
  }
}

}  // namespace ui

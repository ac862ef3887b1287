#include "ui/printing.h"

#include <QDateTime>
#include <QFontDatabase>
#include <QPainter>
#include <QPrintDialog>
#include <algorithm>

#include "companion/document_lines.h"
#include "text/strings.h"
#include "ui/frm_print.h"
#include "ui/texts.h"

namespace ui {
namespace {

constexpr int tabWidth = 8;
const QString goesOn = "    ";  // in front of the rest of a line

QString withoutTabs(const QString& line) {
  QString out;
  for (const QChar c : line) {
    if (c == '\t')
      out += QString(tabWidth - out.size() % tabWidth, ' ');
    else if (c != '\r')
      out += c;
  }
  return out;
}

QStringList rowsOf(const QString& line, int columns) {
  QStringList rows;
  QString rest = withoutTabs(line);
  while (rest.size() > columns) {
    rows += rest.left(columns);
    rest = goesOn + rest.mid(columns);
  }
  return rows << rest;
}

/// Lines of a text; the end of its last line begins none.
QStringList linesOf(const QString& text) {
  QStringList lines = text.split('\n');
  if (lines.back().isEmpty()) lines.removeLast();
  return lines;
}

/// Measures of a page in the dots of a printer.
class PagePlan {
 public:
  explicit PagePlan(const QPrinter& printer)
      : area_(QPointF(0, 0), printer.pageLayout().paintRectPixels(printer.resolution()).size()),
        font_(QFontDatabase::systemFont(QFontDatabase::FixedFont)) {
    constexpr int usualHalves = 18, leastHalves = 8;  // of a point
    for (int halves = usualHalves; halves >= leastHalves; --halves) {
      font_.setPointSizeF(halves / 2.0);
      const QFontMetricsF metrics(font_, &printer);
      letter_ = {metrics.horizontalAdvance('0'), metrics.lineSpacing()};
      if (letter_.width() * companion::lineWidth <= area_.width()) break;
    }
  }
  [[nodiscard]] const QFont& font() const { return font_; }
  [[nodiscard]] double rowHeight() const { return letter_.height(); }
  [[nodiscard]] QRectF header() const {
    return {area_.left(), area_.top(), area_.width(), rowHeight() * 1.4};
  }
  [[nodiscard]] QRectF body() const { return area_.adjusted(0, rowHeight() * 2.4, 0, 0); }
  [[nodiscard]] PageGrid grid() const {
    return {std::max(static_cast<int>(body().width() / letter_.width()), 20),
            std::max(static_cast<int>(body().height() / rowHeight()), 5)};
  }

 private:
  QRectF area_;
  QFont font_;
  QSizeF letter_;
};

class PagePainter {
 public:
  PagePainter(QPrinter& printer, int mostPages)
      : printer_(printer), plan_(printer), mostPages_(mostPages) {}

  bool begin() {
    if (!painter_.begin(&printer_)) return false;
    painter_.setFont(plan_.font());
    painter_.setPen(Qt::black);
    return true;
  }
  bool end() { return painter_.end() && printer_.printerState() != QPrinter::Error; }

  bool print(const PrintDocument& document) {
    if (!document.picture.isNull()) {
      if (!startPage(document, 1, 1)) return false;
      drawPicture(document.picture);
      return true;
    }
    const std::vector<QStringList> pages = pagesOf(document.text, plan_.grid());
    for (std::size_t p = 0; p < pages.size(); ++p) {
      if (!startPage(document, p + 1, pages.size())) return false;
      drawRows(pages[p]);
    }
    return true;
  }

 private:
  /// The header, on a new page unless it is the first one.
  bool startPage(const PrintDocument& document, std::size_t page, std::size_t pages) {
    if (printed_ == mostPages_) return false;
    if (printed_++ > 0 && !printer_.newPage()) return false;
    const QRectF header = plan_.header();
    const QFontMetricsF metrics(painter_.font(), &printer_);
    const QString left = metrics.elidedText(document.project + "   " + document.title,
                                            Qt::ElideMiddle, header.width() * 0.6);
    painter_.drawText(header, Qt::AlignLeft | Qt::AlignTop, left);
    painter_.drawText(header, Qt::AlignRight | Qt::AlignTop,
                      QString("%1   Page %2 of %3").arg(document.date).arg(page).arg(pages));
    painter_.drawLine(header.bottomLeft(), header.bottomRight());
    return true;
  }
  void drawRows(const QStringList& rows) {
    QRectF row = plan_.body();
    row.setHeight(plan_.rowHeight());
    for (const QString& text : rows) {
      painter_.drawText(row, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, text);
      row.translate(0, plan_.rowHeight());
    }
  }
  /// As large as on the screen, or as fits.
  void drawPicture(const QPixmap& picture) {
    constexpr double dotsOfScreen = 96;
    const QRectF body = plan_.body();
    QSizeF size = picture.deviceIndependentSize() * (printer_.resolution() / dotsOfScreen);
    if (size.width() > body.width() || size.height() > body.height())
      size.scale(body.size(), Qt::KeepAspectRatio);
    painter_.setRenderHint(QPainter::SmoothPixmapTransform);
    painter_.drawPixmap(QRectF(body.topLeft(), size), picture, picture.rect());
  }

  QPrinter& printer_;
  PagePlan plan_;
  QPainter painter_;
  int mostPages_;
  int printed_ = 0;
};

}  // namespace

std::vector<QStringList> pagesOf(const QString& text, const PageGrid& grid) {
  std::vector<QStringList> pages;
  for (const QString& part : text.split('\f')) {
    pages.emplace_back();
    for (const QString& line : linesOf(part))
      for (const QString& row : rowsOf(line, grid.columns)) {
        if (pages.back().size() == grid.rows) pages.emplace_back();
        pages.back() += row;
      }
  }
  return pages;
}

int pageCount(const QPrinter& printer, const PrintDocument& document) {
  if (!document.picture.isNull()) return 1;
  return static_cast<int>(pagesOf(document.text, PagePlan(printer).grid()).size());
}

bool printDocuments(QPrinter& printer, const std::vector<PrintDocument>& documents, int mostPages) {
  PagePainter painter(printer, mostPages);
  if (!painter.begin()) return false;
  for (const PrintDocument& document : documents)
    if (!painter.print(document)) break;
  return painter.end();
}

ports::Message printingFailed(const QPrinter& printer) {
  const QString file = printer.outputFileName();
  const QString place =
      file.isEmpty() ? "The printer " + printer.printerName() : "The file " + file;
  ports::Message message;
  message.title = "PRINT";
  message.text = text::concat(utf8(place), " does not take what is printed.\r\n",
                              "Check it, or choose another one.");
  return message;
}

void printWindow(QWidget& window, ports::MessageService& messages) {
  const QPixmap picture = window.grab();
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, &window);
  if (dialog.exec() != QDialog::Accepted) return;
  const QString date = QDateTime::currentDateTime().toString("MM-dd-yyyy hh:mm");
  if (!printDocuments(printer, {{window.windowTitle(), {}, date, {}, picture}}))
    messages.show(printingFailed(printer));
}

void showPrintSelect(QWidget& owner, const WindowPorts& ports) {
  try {
    frmPrint window(owner.window()->grab(), ports.session, ports.messages, &owner);
    window.setHelp([&ports, &window] { ports.desk.showHelp(window.objectName()); });
    window.exec();
  } catch (const std::exception& fault) {  // the machine has no time of day
    ports.messages.show({.title = "PRINT", .text = fault.what()});
  }
}

}  // namespace ui

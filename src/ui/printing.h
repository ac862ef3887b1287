#pragma once

#include <QPixmap>
#include <QPrinter>
#include <QStringList>
#include <QWidget>
#include <limits>
#include <vector>

#include "ui/window_ports.h"

namespace ui {

/// What a page takes in a fixed font.
struct PageGrid {
  int columns = 82;
  int rows = 60;
};

/// A text cut into pages. Lines that are too long go on in the next row, a form feed begins a new
/// page, and a text without lines is one empty page.
std::vector<QStringList> pagesOf(const QString& text, const PageGrid& grid);

/// Something to print: a text, or a picture. Project, title and date stand on each page.
struct PrintDocument {
  QString project;
  QString title;  // "Program CR.KX7"
  QString date;
  QString text = {};
  QPixmap picture = {};
};

/// The pages of a document on the paper that the printer is set to.
int pageCount(const QPrinter& printer, const PrintDocument& document);

/// Prints documents one after the other, each with pages numbered by themselves, and stops after
/// `mostPages`. False when the printer, or the file in its place, refuses.
bool printDocuments(QPrinter& printer, const std::vector<PrintDocument>& documents,
                    int mostPages = std::numeric_limits<int>::max());

/// Says that printing failed, and what to do.
ports::Message printingFailed(const QPrinter& printer);

/// Prints a picture of a window on the printer that the user chooses.
void printWindow(QWidget& window, ports::MessageService& messages);

/// The print window: what to print (summary, program, table information, wiring), preview, PDF.
void showPrintSelect(QWidget& owner, const WindowPorts& ports);

}  // namespace ui

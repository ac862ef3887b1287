#include "ui/frm_print.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPushButton>

#include "control/document_text.h"
#include "control/panel_texts.h"
#include "model/document_stamp.h"
#include "text/strings.h"
#include "ui/form.h"

namespace ui {
namespace {

constexpr int mostPreviewPages = 40;  // more take longer than anyone looks at them

struct ItemTexts {
  const char* caption;
  std::string_view help;
};
constexpr std::array<ItemTexts, frmPrint::items> itemTexts = {{
    {"&Window", control::panel::help::printWindow},
    {"&Summary", control::panel::help::printSummary},
    {"P&rogram", "Press to print the program of the logger."},
    {"&Table information (.TI7)", "Press to print what the output tables store."},
    {"Wirin&g (.WR7)", "Press to print which wire goes where."},
}};

}  // namespace

frmPrint::frmPrint(QPixmap window, control::Session& session, ports::MessageService& messages,
                   QWidget* parent)
    : QDialog(parent),
      window_(std::move(window)),
      session_(session),
      messages_(messages),
      printer_(QPrinter::HighResolution) {
  setObjectName("frmPrint");
  setWindowTitle("Print");
  constexpr double marginMm = 15;
  printer_.setPageMargins(QMarginsF(marginMm, marginMm, marginMm, marginMm),
                          QPageLayout::Millimeter);
  auto* columns = new QHBoxLayout;
  columns->addWidget(choices());
  columns->addWidget(previewColumn(), 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns, 1);
  layout->addWidget(bottom());
  choose(summaryItem);
  resize(860, 680);
}

QWidget* frmPrint::choices() {
  auto* group = new QGroupBox("What to print", this);
  auto* layout = new QVBoxLayout(group);
  for (std::size_t i = 0; i < items; ++i) {
    auto* box = new QCheckBox(itemTexts[i].caption, group);
    describe(*box, itemTexts[i].caption, qstring(itemTexts[i].help));
    connect(box, &QCheckBox::toggled, this, &frmPrint::showPreview);
    layout->addWidget(box);
    boxes_[i] = box;
  }
  layout->addStretch(1);
  return group;
}

QWidget* frmPrint::previewColumn() {
  auto* column = new QWidget(this);
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  preview_ = new QPrintPreviewWidget(&printer_, column);
  describe(*preview_, "Preview", "Shows the pages as they will be printed.");
  for (QWidget* each : preview_->findChildren<QWidget*>())
    describe(*each, "Preview", preview_->toolTip());
  connect(preview_, &QPrintPreviewWidget::paintRequested, this,
          [this](QPrinter* printer) { printDocuments(*printer, chosen(), mostPreviewPages); });
  note_ = new QLabel(column);
  layout->addWidget(preview_, 1);
  layout->addWidget(note_);
  return column;
}

QWidget* frmPrint::bottom() {
  auto* box = new QDialogButtonBox(this);
  const auto add = [&](const char* caption, std::string_view words,
                       QDialogButtonBox::ButtonRole role, auto act) {
    QPushButton* button = box->addButton(caption, role);
    describe(*button, caption, qstring(words));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    return button;
  };
  add("&Help", control::panel::help::extendedHelp, QDialogButtonBox::HelpRole, [this] { help_(); });
  add("Printer Set&up...", control::panel::help::printSetup, QDialogButtonBox::ActionRole,
      [this] { setUpPrinter(); });
  add("Save as P&DF...", "Press to print to a PDF file.", QDialogButtonBox::ActionRole,
      [this] { askForPdf(); });
  add("Cancel", control::panel::help::cancelPrint, QDialogButtonBox::RejectRole,
      [this] { reject(); });
  add("&Print...", "Press to choose a printer and print.", QDialogButtonBox::AcceptRole, [this] {
    print();
  })->setDefault(true);
  return box;
}

void frmPrint::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) return help_();
  QDialog::keyPressEvent(event);
}

void frmPrint::choose(Item item, bool chosen) {
  boxes_[static_cast<std::size_t>(item)]->setChecked(chosen);
}

std::vector<PrintDocument> frmPrint::chosen() {
  std::vector<PrintDocument> documents;
  for (std::size_t i = 0; i < items; ++i)
    if (boxes_[i]->isChecked()) documents.push_back(document(static_cast<Item>(i)));
  return documents;
}

/// Made when it is wanted first.
const PrintDocument& frmPrint::document(Item item) {
  std::optional<PrintDocument>& place = documents_[static_cast<std::size_t>(item)];
  if (!place) place = made(item);
  return *place;
}

PrintDocument frmPrint::made(Item item) {
  const model::DocumentStamp stamp = session_.stamp();
  const QString title =
      withoutMnemonic(itemTexts[static_cast<std::size_t>(item)].caption).section(" (", 0, 0);
  const std::string date =
      text::concat(model::dateText(stamp.now), " ", model::timeText(stamp.now));
  PrintDocument document{qstring(stamp.baseName), title, qstring(date), {}, {}};
  if (item == windowItem)
    document.picture = window_;
  else
    document.text = textOf(item);
  return document;
}

QString frmPrint::textOf(Item item) {
  using control::Document;
  if (item == summaryItem) return qstring(session_.summary());
  const Document document = item == programItem  ? Document::program
                            : item == tablesItem ? Document::tables
                                                 : Document::wiring;
  return qstring(control::documentText(document, session_.project(), session_.stamp()));
}

void frmPrint::showPreview() {
  int pages = 0;
  for (const PrintDocument& document : chosen()) pages += pageCount(printer_, document);
  if (pages == 0)
    note_->setText("Nothing is chosen.");
  else if (pages > mostPreviewPages)
    note_->setText(
        QString("%1 pages, of which the first %2 are shown.").arg(pages).arg(mostPreviewPages));
  else
    note_->setText(pages == 1 ? QString("1 page.") : QString("%1 pages.").arg(pages));
  preview_->updatePreview();
}

void frmPrint::setUpPrinter() {
  if (QPageSetupDialog(&printer_, this).exec() == QDialog::Accepted) showPreview();
}

void frmPrint::print() {
  const std::vector<PrintDocument> documents = chosen();
  if (documents.empty()) return;
  QPrintDialog dialog(&printer_, this);
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
  if (dialog.exec() != QDialog::Accepted) return;
  if (!printDocuments(printer_, documents)) messages_.show(printingFailed(printer_));
  accept();
}

void frmPrint::askForPdf() {
  QFileDialog dialog(this, "PRINT TO PDF", qstring(session_.GenFilePath), "PDF (*.pdf)");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix("pdf");
  dialog.selectFile(qstring(session_.stamp().baseName) + ".pdf");
  if (dialog.exec() == QDialog::Accepted && printToPdf(dialog.selectedFiles().front())) accept();
}

bool frmPrint::printToPdf(const QString& file) {
  QPrinter pdf(QPrinter::HighResolution);
  pdf.setOutputFormat(QPrinter::PdfFormat);
  pdf.setOutputFileName(file);
  pdf.setPageLayout(printer_.pageLayout());
  pdf.setDocName(qstring(session_.stamp().baseName));
  if (printDocuments(pdf, chosen())) return true;
  messages_.show(printingFailed(pdf));
  return false;
}

}  // namespace ui

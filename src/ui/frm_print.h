#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <array>
#include <functional>
#include <optional>

#include "ui/printing.h"

namespace ui {

/// What to print, how it looks on paper, and where it goes: to a printer or a PDF file.
class frmPrint final : public QDialog {
  Q_OBJECT
 public:
  enum Item { windowItem, summaryItem, programItem, tablesItem, wiringItem, items };

  /// `window` is a picture of the window that printing was asked in.
  frmPrint(QPixmap window, control::Session& session, ports::MessageService& messages,
           QWidget* parent);

  /// What the help button and F1 do.
  void setHelp(std::function<void()> help) { help_ = std::move(help); }
  void choose(Item item, bool chosen = true);
  /// The documents that are ticked, in their order.
  [[nodiscard]] std::vector<PrintDocument> chosen();
  /// False when the file can't be written, which is told.
  bool printToPdf(const QString& file);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* choices();
  QWidget* previewColumn();
  QWidget* bottom();
  const PrintDocument& document(Item item);
  [[nodiscard]] PrintDocument made(Item item);
  [[nodiscard]] QString textOf(Item item);
  void showPreview();
  void setUpPrinter();
  void print();
  void askForPdf();

  QPixmap window_;
  control::Session& session_;
  ports::MessageService& messages_;
  QPrinter printer_;
  std::array<QCheckBox*, items> boxes_ = {};
  std::array<std::optional<PrintDocument>, items> documents_;
  QPrintPreviewWidget* preview_ = nullptr;
  QLabel* note_ = nullptr;
  std::function<void()> help_ = [] {};
};

}  // namespace ui

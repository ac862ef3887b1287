#include <gtest/gtest.h>

#include <QFile>

#include "control_bench.h"
#include "support_qt/palettes.h"
#include "support_qt/usable_by_all.h"
#include "ui/frm_print.h"

namespace {

using support::ControlBench;
using Pages = std::vector<QStringList>;

QByteArray contentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

class PrintWindow : public testing::Test {
 protected:
  PrintWindow() { bench.openExample("pump_house"); }
  std::unique_ptr<ui::frmPrint> open() {
    return std::make_unique<ui::frmPrint>(bench.control->grab(), bench.control->session(),
                                          bench.messages, nullptr);
  }
  ControlBench bench;
};

TEST(PagesOf, CutsATextIntoRowsAndPages) {
  const ui::PageGrid grid{10, 3};
  EXPECT_EQ(ui::pagesOf("", grid), Pages{QStringList()});
  EXPECT_EQ(ui::pagesOf("a\r\nb\r\nc\r\n", grid), (Pages{{"a", "b", "c"}}));
  EXPECT_EQ(ui::pagesOf("a\nb\nc\nd", grid), (Pages{{"a", "b", "c"}, {"d"}}));
  EXPECT_EQ(ui::pagesOf("a\fb\n\nc", grid), (Pages{{"a"}, {"b", "", "c"}}));
  EXPECT_EQ(ui::pagesOf("0123456789ABCDEFG", grid), (Pages{{"0123456789", "    ABCDEF", "    G"}}));
  EXPECT_EQ(ui::pagesOf("a\tb", grid), (Pages{{"a       b"}}));
}

TEST_F(PrintWindow, PrintsEverythingThatIsTickedToAPdfFile) {
  const auto window = open();
  for (int item = 0; item < ui::frmPrint::items; ++item)
    window->choose(static_cast<ui::frmPrint::Item>(item));
  const std::vector<ui::PrintDocument> documents = window->chosen();
  ASSERT_EQ(documents.size(), 5U);
  EXPECT_FALSE(documents[0].picture.isNull());
  EXPECT_TRUE(documents[1].text.contains("Shortest Possible Scan Time"));
  EXPECT_TRUE(documents[2].text.contains("BeginProg"));
  EXPECT_EQ(documents[3].project, "pump_house");
  EXPECT_EQ(documents[3].date, "07-04-2026 13:05:09");
  EXPECT_NE(documents[3].text, documents[4].text);
  const QString file = QString::fromStdString(bench.folder) + "/all.pdf";
  ASSERT_TRUE(window->printToPdf(file));
  QPrinter paper(QPrinter::HighResolution);
  paper.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
  qsizetype pages = 0;
  for (const ui::PrintDocument& document : documents) pages += ui::pageCount(paper, document);
  EXPECT_GT(pages, 5);
  EXPECT_EQ(contentOf(file).count("/Type /Page\n"), pages);
}

TEST_F(PrintWindow, TellsOfAFileThatCantBeWritten) {
  EXPECT_FALSE(open()->printToPdf("/nowhere/at/all.pdf"));
  ASSERT_EQ(bench.messages.titles(), std::vector<std::string>{"PRINT"});
  EXPECT_TRUE(bench.messages.shown[0].text.starts_with("The file /nowhere/at/all.pdf"));
}

TEST_F(PrintWindow, IsPicturedInLightAndDark) {
  for (const bool dark : {false, true}) {
    const QPalette usual = QApplication::palette();
    if (dark) QApplication::setPalette(support::darkPalette());
    const auto window = open();
    window->choose(ui::frmPrint::wiringItem);
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    support::keepPicture(*window, dark ? "frmPrint_dark" : "frmPrint_light");
    support::expectUsableByAll(*window);
    QApplication::setPalette(usual);
  }
}

}  // namespace

#include "ui/frm_iso_setup.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>

#include "control_bench.h"
#include "ui/number_box.h"

namespace {

using model::BlockKind;
using support::ControlBench;
using support::controlOf;

constexpr int isolated = 6;

class IsolatedWindow : public testing::Test {
 protected:
  /// One block of a voltage, without reversal, and a scan of so many microseconds.
  void open(double scanMicros) {
    bench.openExample("battery_test");
    model::Project project = bench.project();
    project.scan.ExecutionTime = scanMicros / 10;
    project.scan.ExecTimeUnits = 0;
    project.isolated = {};
    for (std::size_t n = 1; n <= model::maxBlocks; ++n) {
      project.block(BlockKind::isolated, n).InputType = 0;
      if (n > 1) project.block(BlockKind::isolated, n).Reps = 0;
    }
    bench.control->session().edit(std::move(project), "test");
    window = &bench.open<ui::frmIsoSetup>(isolated);
  }
  void enter(const char* caption, const QString& text) {
    support::type(controlOf<ui::NumberBox>(*window, caption), text);
  }
  void choose(const QString& integration) {
    auto& box = controlOf<QComboBox>(*window, "Integration:");
    box.setCurrentIndex(box.findText(integration));
    Q_EMIT box.activated(box.currentIndex());
  }
  [[nodiscard]] QString shown(const char* caption) const {
    return controlOf<QLabel>(*window, caption).text();
  }
  [[nodiscard]] const model::IsolatedSetup& shared() const { return window->working().isolated; }

  ControlBench bench;
  ui::frmIsoSetup* window = nullptr;
};

TEST_F(IsolatedWindow, ShowsThePlanWhileTyping) {
  open(10'000);
  enter("Integration time:", "1000");  // rounded down to a multiple of 96
  EXPECT_EQ(shared().Integration, 960);
  EXPECT_EQ(shown("Filter order:"), "5");
  EXPECT_EQ(shown("Integrated for:"), "960 uSec");
  EXPECT_EQ(shown("Time available:"), "8,680 uSec");
  EXPECT_EQ(shown("Cutoff frequency:"), "212 Hz");
  choose("Force order");
  EXPECT_EQ(shared().Integration, -5);
  enter("Forced order:", "1");
  EXPECT_EQ(shared().Integration, -1);
  EXPECT_EQ(shown("Integrated for:"), "8,640 uSec");
  choose("60 Hz rejection");
  EXPECT_EQ(shared().Integration, 16670);
  EXPECT_EQ(shared().IntegrationRange, 1);
  EXPECT_TRUE(bench.messages.shown.empty());
}

TEST_F(IsolatedWindow, TellsOfATimeThatDoesNotFit) {
  open(10'000);
  enter("Integration time:", "20000");
  EXPECT_EQ(shown("Filter order:"), "no plan");
  EXPECT_TRUE(bench.messages.shown.empty());
  window->accept();
  ASSERT_EQ(bench.messages.titles(),
            (std::vector<std::string>{"7128 Isolated Module Timing Problem"}));
  EXPECT_NE(bench.messages.shown.back().text.find("--Integration Time Can't Fit--"),
            std::string::npos);
  EXPECT_EQ(bench.project().isolated.Integration, 19968);
}

TEST_F(IsolatedWindow, KeepsTheSubscanWithin30Minutes) {
  open(1'000'000);
  enter("Main scans each subscan:", "2000");
  EXPECT_EQ(shared().ScansPerSubScan, 1800);
  ASSERT_FALSE(bench.messages.shown.empty());
  EXPECT_EQ(bench.messages.shown.back().title, "Subscan Interval Too Long");
  EXPECT_TRUE(bench.messages.shown.back().text.starts_with(
      "The generated subscan interval cannot be longer than 30 minutes.\r\n"));
}

}  // namespace

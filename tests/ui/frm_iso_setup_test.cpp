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

  ports::Answer answer = ports::Answer::no;
  ControlBench bench{[this](const ports::Message& message) {
    return message.buttons == ports::Buttons::yesNo ? answer : ports::Answer::ok;
  }};
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

TEST_F(IsolatedWindow, TellsOfEachTimingProblemWhenDone) {
  const struct {
    double scan;
    const char* order;  // forced, or nothing
    std::string problem;
  } cases[] = {{1'000, "",
                "--Scan Interval Too Small--\r\nThe current scan interval of 1000 usec\r\n"
                "does not allow for any measurement time. \r\n"},
               {1'420, "",
                "--Scan Interval Too Small--\r\n"
                "The current scan interval of 1420 usec allows only 100 usec\r\n"},
               {1'620, "4",
                "--Not Enough Filter Coefficients--\r\n"
                "In order to allow the minimum filter coefficients of 5,\r\n"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.problem);
    open(each.scan);
    choose(*each.order == 0 ? "Time below" : "Force order");
    *each.order == 0 ? enter("Integration time:", "192") : enter("Forced order:", each.order);
    bench.messages.shown.clear();
    window->accept();
    EXPECT_FALSE(window->isVisible());
    ASSERT_EQ(bench.messages.shown.size(), 1U);
    const ports::Message& told = bench.messages.shown.front();
    EXPECT_EQ(told,
              (ports::Message{.title = "7128 Isolated Module Timing Problem", .text = told.text}));
    EXPECT_TRUE(told.text.starts_with("Please resolve the following timing problem :\r\n\r\n" +
                                      each.problem))
        << told.text;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
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

/// Who looks at the scalars first comes to Done again, and hears of timing then.
TEST_F(IsolatedWindow, TellsOfTimingOnceAfterTheScalars) {
  open(1'000);
  choose("Time below");
  auto& channels = controlOf<ui::SheetView>(*window, "channels");
  channels.setCurrentIndex(channels.model()->index(0, 3));
  channels.pasteText("9\n");
  enter("Multiplier:", "3");
  bench.messages.shown.clear();
  answer = ports::Answer::yes;
  window->accept();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(bench.messages.titles(), std::vector<std::string>{"DEFAULT SCALING CHANGED"});
  answer = ports::Answer::no;
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(bench.messages.titles(),
            (std::vector<std::string>{"DEFAULT SCALING CHANGED", "DEFAULT SCALING CHANGED",
                                      "7128 Isolated Module Timing Problem"}));
}

TEST_F(IsolatedWindow, KeepsTheSubscanWithin30Minutes) {
  open(1'000'000);
  enter("Main scans each subscan:", "2000");
  EXPECT_EQ(shared().ScansPerSubScan, 1800);
  EXPECT_EQ(bench.messages.shown,
            std::vector{(ports::Message{
                .title = "Subscan Interval Too Long",
                .text = "The generated subscan interval cannot be longer than 30 minutes.\r\n"
                        "The number of main scans per subscan will be reset.\r\n\r\n"
                        "The largest value for this setting using the current\r\n"
                        "scan rate is 1800."})});
}

}  // namespace

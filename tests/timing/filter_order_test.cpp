#include "timing/filter_order.h"

#include <gtest/gtest.h>

#include <limits>

#include "timing/filter_response.h"
#include "timing/recorder.h"

namespace timing_test {
namespace {

using timing::cFilterOrder;

struct Planner : Recorder, cFilterOrder {
  Planner() : cFilterOrder(static_cast<Recorder&>(*this), static_cast<Recorder&>(*this)) {}

  std::int32_t plan(std::int32_t scan, std::int32_t time, bool open = false, bool reversed = false,
                    std::int16_t scans = 1) {
    const std::int32_t result = CalcFOrderOrIntTime(scan, time, open, reversed, scans);
    scansLeft = scans;
    return result;
  }
  std::int16_t scansLeft = 1;
};

struct PlanCase {
  std::int32_t scan, time;
  std::int16_t scans;
  std::int32_t result, integration, order, coefficients;
  float cutoff;
};

TEST(Planner, OrdersAndTimesOfUsualAndOddRequests) {
  const PlanCase cases[] = {
      {10'000, 1'000, 1, 5, 960, 5, 46, 212.34375F},
      {10'000, 0, 1, 1, 0, 1, 0, -1},                   // an order of 0 is a time of 0
      {10'000, 95, 1, 1, 0, 1, 0, -1},                  // no whole sample
      {10'000, 96, 1, 1, 96, 1, 1, 4614.0625F},         // one sample
      {10'000, 8'680, 1, 1, 8'640, 1, 90, 51.267361F},  // fits exactly
      {10'000, 8'681, 1, -1, -1, -1, -1, -1},
      {10'000, -3, 1, 2'880, 2'880, 3, 88, 90.951385F},
      {10'000, -7, 1, 1'728, 1'728, 5, 86, 117.96875F},
      {10'000, std::numeric_limits<std::int32_t>::min(), 1, 1'728, 1'728, 5, 86, 117.96875F},
      {1'000'000, 30'000, 1, 2, 29'952, 2, 623, 10.647702F},     // 5 orders have too many
      {1'000'000, 90'000, 1, 1, 89'952, 1, 937, 4.9242930F},     // even one has
      {1'000'000, -5, 1, 199'680, 199'680, 5, 646, 1.0208834F},  // samples averaged before
      {2'000, -5, 2, 576, 576, 5, 26, 353.90625F},
  };
  for (const PlanCase& each : cases) {
    SCOPED_TRACE(testing::Message() << each.scan << ' ' << each.time);
    Planner planner;
    EXPECT_EQ(planner.plan(each.scan, each.time, false, false, each.scans), each.result);
    EXPECT_EQ(planner.IntegrationTimeUSec(), each.integration);
    EXPECT_EQ(planner.FilterOrder(), each.order);
    EXPECT_EQ(planner.NumFilterCoeffs(), each.coefficients);
    EXPECT_FLOAT_EQ(planner.CutoffFrequency(), each.cutoff);
    EXPECT_TRUE(planner.faults.empty());
  }
}

TEST(Planner, HalvesOfAReversedSubscanRoundToEven) {
  Planner planner;
  EXPECT_EQ(planner.CalcMeasTimeFromScan(10'001, false, true), 3'260);
  EXPECT_EQ(planner.CalcMeasTimeFromScan(10'003, false, true), 3'262);
  EXPECT_EQ(planner.CalcMeasTimeFromScan(3'879, false, true), 200);
  EXPECT_EQ(planner.CalcMeasTimeFromScan(5'000, true, true), 0);
  EXPECT_EQ(planner.CalcScanFromMeasTime(200, true, true), 5'400);
}

TEST(Planner, RemembersItsQuestionAndItsLastMeasurementTime) {
  Planner planner;
  EXPECT_EQ(planner.plan(1'400, 500), -1);
  EXPECT_EQ(planner.plan(1'400, 500), -1);
  EXPECT_EQ(planner.messages.size(), 1U);  // the repeated question is silent
  EXPECT_EQ(planner.plan(10'000, 1'000), 5);
  EXPECT_EQ(planner.plan(1'400, 1'000), 5);  // with the time of the plan before
  EXPECT_EQ(planner.messages.size(), 2U);
  EXPECT_EQ(planner.MeasTimeAvail(), 8'680);
  EXPECT_EQ(planner.OverheadUsec(), 1'400 - 8'680);
}

TEST(Planner, HalfAnHourIsTheLongestSubscan) {
  Planner planner;
  EXPECT_EQ(planner.plan(1'000'000, 960, false, false, 2'000), 5);
  EXPECT_EQ(planner.scansLeft, 1'800);
  planner.plan(1'000'000, 960, false, false, 2'000);
  ASSERT_EQ(planner.messages.size(), 2U);  // also on a repeated question
  EXPECT_EQ(planner.messages[1].title, "Subscan Interval Too Long");
  EXPECT_EQ(planner.messages[1].text,
            "The Isolated subscan interval (M7128) cannot be longer than 30 minutes.\r\n"
            "The number of main scans per subscan will be reset.\r\n\r\n"
            "The largest value for this setting using the current\r\n"
            "scan rate is 1800.");
  EXPECT_EQ(timing::subscanLimitMessage(3, true).text.substr(0, 64),
            "The generated subscan interval cannot be longer than 30 minutes.");
  // Rounding leaves a subscan beyond 32 bits.
  EXPECT_EQ(planner.plan(1'200'000'000, 960, false, false, 2), -1);
  EXPECT_EQ(planner.faults, std::vector<std::string>{"cFilterOrder.CalcFOrderOrIntTime: Overflow"});
}

TEST(Planner, TimingProblemsAreToldInFull) {
  const std::string head = "Please resolve the following timing problem :\r\n\r\n";
  const std::string increase =
      "Please increase the scan interval to 5400 usec or greater\r\n"
      "to allow a measurement time of at least 200 usec. Also\r\n"
      "ensure that the integration time does not \r\n"
      "exceed 200 usec\r\n"
      "plus the amount of new scan time beyond 5400 usec.\r\n\r\n";
  const std::string advice =
      "Alternatively, you may choose to set the number of 'main \r\n"
      "scans per subscan' setting (found in the Advanced\r\n"
      "Configuration) to a value of ";
  struct {
    std::int32_t scan, time;
    bool options;
    std::int16_t scans;
    std::string text;
  } const cases[] = {
      {5'000, 960, true, 1,
       "--Scan Interval Too Small--\r\n"
       "The current scan interval of 5000 usec allows only 0 usec\r\n"
       "for measurement time.\r\nThis is because of an overhead\r\ntime of 5000 usec.\r\n" +
           increase + advice + "2 or greater."},
      {1'000, 960, true, 2,
       "--Scan Interval Too Small--\r\n"
       "The current scan interval of 2000 usec\r\n"
       "does not allow for any measurement time. \r\n"
       "This is due to an overhead time of 3500 usec.\r\n" +
           increase + advice + "6 or greater."},
      {4'000, 10'000, false, 1,
       "--Integration Time Can't Fit--\r\n"
       "The integration time of 10000 usec cannot fit\r\n"
       "within the available measurement time \r\nof 2680 usec.\r\n"
       "Please increase the scan interval to 11320 usec\r\n"
       "or reduce the integration time to 2680 usec.\r\n" +
           advice + "3 or greater."},
      {1'620, -4, false, 1,
       "--Not Enough Filter Coefficients--\r\n"
       "In order to allow the minimum filter coefficients of 5,\r\n"
       "there must be \r\na minimum available measurement\r\ntime of 480 usec.\r\n"
       "The current available measurment time of 300 usec only allows for only 1 filter\r\n"
       "coefficient(s).\r\nChange your forced filter order (integration\r\n"
       " time) to -2 or increase your integration time to allow\r\n"
       "a minimum available \r\nmeasurement time of 480."},
  };
  for (const auto& each : cases) {
    Planner planner;
    EXPECT_EQ(planner.plan(each.scan, each.time, each.options, each.options, each.scans), -1);
    ASSERT_EQ(planner.messages.size(), 1U);
    EXPECT_EQ(planner.messages[0].title, "7128 Isolated Module Timing Problem");
    EXPECT_EQ(planner.messages[0].text, head + each.text);
  }
}

TEST(Planner, FaultsAreReportedWithTheirProcedureAndLeaveNoMessage) {
  Planner planner;
  EXPECT_EQ(planner.plan(0, 960), -1);
  EXPECT_EQ(planner.CalcIntegrationTime(5'000, 0), -1);
  EXPECT_EQ(planner.CalcRawIntegrationTime(5'000, 0, 1), -1);
  EXPECT_EQ(planner.CalcNumFilterCoeffs(5, 960, 0), -1);
  EXPECT_EQ(planner.CalcRawFilterOrder(0, std::numeric_limits<std::int32_t>::min(), 1), -1);
  EXPECT_EQ(planner.CalcCutoffFrequency(9, 960), 1'042);
  const std::string order =
      "Cutoff Frequency Error: Invalid Filter Order. Frequency of First Zero will be used";
  const std::vector<std::string> expected = {
      "cFilterOrder.CalcMeasTimeAvail: Division by zero",
      "cFilterOrder.CalcIntegrationTime: Division by zero",
      "cFilterOrder.CalcRawIntegrationTime: Division by zero",
      "cFilterOrder.CalcNumFilterCoeffs: Division by zero",
      "cFilterOrder.CalcRawFilterOrder: Overflow",
      "cFilterOrder.CalcCutoffFrequency: " + order};
  EXPECT_EQ(planner.faults, expected);
  EXPECT_TRUE(planner.messages.empty());
}

/// For the sanitizers: every procedure takes every argument.
TEST(Planner, ExtremeArgumentsOfEachProcedure) {
  constexpr auto low = std::numeric_limits<std::int32_t>::min();
  constexpr auto high = std::numeric_limits<std::int32_t>::max();
  Planner planner;
  for (const std::int32_t a : {low, low + 1, -96, -1, 0, 1, 95, 96, 97, 21'824, high - 1, high})
    for (const std::int32_t b : {low, -97, -1, 0, 1, 5, 192, high}) {
      planner.CalcMeasTimeAvail(a, b > 0, b % 2 != 0);
      EXPECT_NE(planner.CalcScanFromMeasTime(a, b > 0, b % 2 != 0), 1);
      planner.CalcFilterOrder(a, b);
      planner.CalcIntegrationTime(a, b);
      planner.CalcNumPreFiltAvg(a);
      planner.CalcCutoffFrequency(a, b);
      for (const std::int32_t c : {low, -1, 0, 1, high}) {
        planner.CalcRawFilterOrder(a, b, c);
        planner.CalcNumFilterCoeffs(a, b, c);
        planner.CalcRawIntegrationTime(a, b, c);
      }
      EXPECT_LE(planner.OverheadUsec(), high);
    }
  EXPECT_FALSE(planner.faults.empty());
}

TEST(Planner, ResultsAsAWindowShowsThem) {
  EXPECT_EQ(timing::shownMicros(8'680), "8,680 uSec");
  EXPECT_EQ(timing::shownMicros(0), "0 uSec");
  const std::pair<float, const char*> cutoffs[] = {
      {-1, "0.001 Hz"},      {0.001F, "0.001 Hz"},   {0.0014F, "0.001 Hz"},
      {2.0005F, "2.001 Hz"}, {9.9994F, "9.999 Hz"},  {9.9996F, "10.000 Hz"},
      {10, "10 Hz"},         {212.34375F, "212 Hz"}, {4614.0625F, "4,614 Hz"}};
  for (const auto& [hertz, shown] : cutoffs) EXPECT_EQ(timing::shownCutoff(hertz), shown);
}

TEST(FilterResponse, HalfThePowerPassesAtTheCutoffFactors) {
  const double factors[] = {0.44295, 0.31892, 0.26194, 0.22751, 0.20385};
  for (int order = 1; order <= 5; ++order)
    EXPECT_NEAR(timing::cutoffRatio(order), factors[order - 1], 0.5e-5) << order;
}

TEST(FilterResponse, PointsRunFromZeroToTheHighestFrequency) {
  const auto points = timing::filterResponse(1'000, 2, 2'000, 9);
  ASSERT_EQ(points.size(), 9U);
  EXPECT_EQ(points.front().magnitude, 1);
  EXPECT_NEAR(points[2].magnitude, 4 / 9.8696044, 1e-7);  // (2 / pi) squared
  EXPECT_EQ(points[4].magnitude, 0);
  EXPECT_EQ(points[4].decibels, timing::lowestDecibels);
  EXPECT_EQ(points.back().hertz, 2'000);
  EXPECT_EQ(timing::filterResponse(1'000, 1, 500, 0).size(), 2U);
}

}  // namespace
}  // namespace timing_test

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

#include "timing/filter_order.h"
#include "timing/recorder.h"

/// The planner against the same rules worked out in whole-number fractions.
namespace timing_test {
namespace {

using Int = std::int64_t;

Int floorOf(Int a, Int b) { return a / b - (a % b != 0 && (a < 0) != (b < 0) ? 1 : 0); }
Int ceilOf(Int a, Int b) { return -floorOf(-a, b); }
Int evenOf(Int a, Int b) {  // nearest, ties to even
  if (b < 0) return evenOf(-a, -b);
  const Int low = floorOf(a, b);
  const Int twice = 2 * (a - low * b);
  return low + (twice > b || (twice == b && low % 2 != 0) ? 1 : 0);
}

struct Call {
  Int scan, time;
  bool open, reversed;
  Int scans;
};

/// What the call does to everything that can be seen.
struct Model {
  Int interval = -1, integration = -1, available = -1, averaged = -1, order = -1, coefficients = -1;
  Int firstCoefficients = -1, given = -1, givenOrder = -1, calculated = -1, scans = -1, advice = -1;
  bool open = false, reversed = false, forced = false;
  float raw = -1, cutoff = -1, zero = -1, factor = -1;
  bool shown = true;
  std::vector<std::string> heard;
  std::vector<std::string> faults;

  [[nodiscard]] Int parts() const { return reversed ? 2 : 1; }
  [[nodiscard]] Int taken() const { return reversed ? 420 + 1320 : 1320; }
  [[nodiscard]] Int needed(Int time) const {
    return (time + taken()) * parts() + (open ? 1520 : 0);
  }
  void fault(const std::string& procedure, const std::string& what) {
    faults.push_back("cFilterOrder." + procedure + ": " + what);
  }
  void say(const std::string& what) {
    if (shown) heard.push_back(what);
  }

  void advise(Int need, Int scan, const std::string& procedure, const std::string& message) {
    if (scan == 0) return fault(procedure, "Division by zero");
    const Int scansNeeded = ceilOf(need, scan);
    if (scansNeeded > 32767 || scansNeeded < -32768) return fault(procedure, "Overflow");
    advice = scansNeeded;
    say(message);
  }

  Int answer(Call& call) {
    heard.clear();
    faults.clear();
    if (call.scan * call.scans > 1'800'000'000) {
      call.scans = scans = evenOf(1'800'000'000, call.scan);
      heard.emplace_back("limit " + std::to_string(scans));
    }
    const Int subscan = call.scan * call.scans;
    if (subscan != static_cast<std::int32_t>(subscan)) {
      fault("CalcFOrderOrIntTime", "Overflow");
      return -1;
    }
    shown = !(subscan == interval && call.time == given && call.open == open &&
              call.reversed == reversed && call.scans == scans);
    interval = subscan;
    given = call.time;
    open = call.open;
    reversed = call.reversed;
    scans = call.scans;
    measure();
    if (available < 0) return -1;
    forced = call.time < 0;
    if (!forced && call.time > available) {
      const Int need = needed(call.time);
      if (need > 2147483647)
        fault("CalcFOrderOrIntTime", "Overflow");
      else
        advise(need, call.scan, "CalcFOrderOrIntTime", "fit");
      return -1;
    }
    const Int result = forced ? timeFor(-call.time) : orderFor(call.time);
    respond();
    return result;
  }

  void measure() {
    const Int time = evenOf(interval - (open ? 1520 : 0) - parts() * taken(), parts());
    if (time >= 200)
      available = time;
    else if (time < -2147483648LL)
      fault("CalcMeasTimeAvail", "Overflow");
    else if (scans == 0)
      fault("CalcMeasTimeAvail", "Division by zero");
    else
      advise(needed(200), evenOf(interval, scans), "CalcMeasTimeAvail",
             time < 0 ? "none" : "small");
  }

  Int orderFor(Int time) {
    const Int samples = floorOf(time, 96);
    integration = samples * 96;
    averaged = 1;
    raw = samples == 1 ? -1.0F
                       : static_cast<float>(static_cast<double>(available - 96) /
                                            static_cast<double>(integration - 96));
    order = 1;
    while (order < 5 && raw >= static_cast<float>(order + 1)) ++order;
    // The first guess is a quotient of the time as given; then down to what fits.
    if ((samples - 1) * order + 1 > 680)
      order = std::max<Int>(1, std::min<Int>(5, floorOf(Int{679} * 96, time - 96)));
    while (order > 1 && (samples - 1) * order + 1 > 680) --order;
    coefficients = (samples - 1) * order + 1;
    return calculated = order;
  }

  Int timeFor(Int wanted) {
    order = givenOrder = std::min<Int>(5, wanted);
    averaged = floorOf(available - 96, Int{96} * 680) + 1;
    firstCoefficients = floorOf(available - 96 * averaged, 96 * averaged * order) + 1;
    coefficients = (firstCoefficients - 1) * order + 1;
    if (firstCoefficients < 2) {
      say("coefficients");
      return -1;
    }
    return integration = firstCoefficients * 96 * averaged;
  }

  void respond() {
    if (integration < 1) {
      cutoff = zero = factor = -1;
      return;
    }
    const float factors[] = {0.44295F, 0.31892F, 0.26194F, 0.22751F, 0.20385F};
    zero = static_cast<float>(1e6 / static_cast<double>(integration));
    factor = factors[order - 1];
    cutoff = zero * factor;
  }

  [[nodiscard]] std::string properties() const {
    std::ostringstream out;
    out.precision(9);
    out << interval << ' ' << integration << " -1 " << open << ' ' << reversed << ' ' << available
        << ' ' << averaged << ' ' << raw << ' ' << order << ' ' << coefficients << ' '
        << firstCoefficients << ' ' << forced << ' ' << given << " -1 " << givenOrder << ' '
        << calculated << ' ' << cutoff << ' ' << std::max<Int>(interval - available, -2147483648LL)
        << ' ' << zero << ' ' << factor << ' ' << scans << ' ' << advice << ' ';
    return out.str();
  }
};

std::string propertiesOf(const timing::cFilterOrder& planner) {
  std::ostringstream out;
  out.precision(9);
  timing::visitProperties(planner, [&out](const char*, auto value) { out << value << ' '; });
  return out.str();
}

std::vector<std::string> kindsOf(const std::vector<ports::Message>& messages) {
  std::vector<std::string> kinds;
  for (const ports::Message& message : messages) {
    const auto has = [&message](const char* part) {
      return message.text.find(part) != std::string::npos;
    };
    if (message.title == "Subscan Interval Too Long")
      kinds.push_back("limit " + message.text.substr(message.text.rfind(' ') + 1));
    else
      kinds.emplace_back(has("any measurement time. ")    ? "none"
                         : has("Scan Interval Too Small") ? "small"
                         : has("Can't Fit")               ? "fit"
                                                          : "coefficients");
    if (kinds.back().ends_with('.')) kinds.back().pop_back();
  }
  return kinds;
}

class Calls {
 public:
  Call next() {
    if (chance(15)) return last_;
    last_ = {scan(), time(), chance(30), chance(30), scans()};
    return last_;
  }
  bool chance(int percent) { return within(1, 100) <= percent; }

 private:
  Int within(Int low, Int high) { return std::uniform_int_distribution<Int>(low, high)(random_); }
  Int scan() {
    switch (within(0, 9)) {
      case 0:
        return within(-3, 3);
      case 1:
        return within(2147000000, 2147483647) * (chance(70) ? 1 : -1);
      case 2:
        return within(1, 2'000'000'000);
      case 3:
      case 4:
        return within(10'000, 5'000'000);
      default:
        return within(1300, 12'000);
    }
  }
  Int time() {
    switch (within(0, 7)) {
      case 0:
        return within(-2147483648, 2147483647);
      case 1:
      case 2:
        return within(-8, 2);
      case 3:
        return within(1, 60) * 96 + within(-1, 1);
      case 4:
        return within(10'000, 300'000);
      default:
        return within(0, 12'000);
    }
  }
  Int scans() {
    if (chance(60)) return 1;
    return chance(80) ? within(1, 12) : within(-32768, 32767);
  }

  std::mt19937 random_{20240511};
  Call last_{10'000, 1'000, false, false, 1};
};

TEST(Planner, RandomSequencesAgreeWithWholeNumberFractions) {
  Calls calls;
  for (int sequence = 0; sequence < 10'000; ++sequence) {
    Recorder recorder;
    timing::cFilterOrder planner(recorder, recorder);
    Model model;
    for (int step = 0; step < 6; ++step) {
      Call call = calls.next();
      SCOPED_TRACE(testing::Message()
                   << "sequence " << sequence << " step " << step << ": " << call.scan << ' '
                   << call.time << ' ' << call.open << ' ' << call.reversed << ' ' << call.scans);
      recorder.messages.clear();
      recorder.faults.clear();
      auto scans = static_cast<std::int16_t>(call.scans);
      const std::int32_t result = planner.CalcFOrderOrIntTime(static_cast<std::int32_t>(call.scan),
                                                              static_cast<std::int32_t>(call.time),
                                                              call.open, call.reversed, scans);
      ASSERT_EQ(result, model.answer(call));
      ASSERT_EQ(scans, call.scans);
      ASSERT_EQ(propertiesOf(planner), model.properties());
      ASSERT_EQ(kindsOf(recorder.messages), model.heard);
      ASSERT_EQ(recorder.faults, model.faults);
    }
  }
}

}  // namespace
}  // namespace timing_test

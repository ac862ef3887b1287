#include "timing/filter_order.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "text/numbers.h"
#include "text/strings.h"

namespace timing {
namespace {

using text::concat;
using text::halfEven;

constexpr double fixedOverhead = 1320;
constexpr double openThermocoupleOverhead = 1520;
constexpr double reversalOverhead = 420;  // of each half of the subscan

enum FaultNumber { invalidOrder = 1, overflow = 2, divisionByZero = 3 };

template <class Int>
bool fits(double value) {
  return value >= std::numeric_limits<Int>::min() && value <= std::numeric_limits<Int>::max();
}

double measurementIn(double subscan, bool openThermocouple, bool reversal) {
  const double parts = reversal ? 2 : 1;
  return halfEven((subscan - (openThermocouple ? openThermocoupleOverhead : 0)) / parts -
                  (reversal ? reversalOverhead : 0) - fixedOverhead);
}

/// The integration time that a whole number of samples makes.
double wholeSamples(std::int32_t integTime) {
  return std::floor(integTime / double{sampleMicros}) * sampleMicros;
}

std::int32_t withinOrders(std::int64_t order) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(order, lowestOrder, highestOrder));
}

std::string joined(const std::vector<std::string>& lines) {
  std::string out;
  for (const std::string& line : lines) out += concat(out.empty() ? "" : "\r\n", line);
  return out;
}

}  // namespace

/// One run of a procedure. Its first arithmetic fault is reported; from then on every value that
/// it computes is -1 or not a number, without another report.
class cFilterOrder::Procedure {
 public:
  Procedure(std::string_view name, ports::ErrorReporter& errors) : name_(name), errors_(errors) {}

  [[nodiscard]] bool faulted() const { return faulted_; }

  double quotient(double dividend, double divisor) {
    if (divisor == 0) {
      report(divisionByZero, "Division by zero");
      return std::numeric_limits<double>::quiet_NaN();
    }
    return dividend / divisor;
  }

  /// A value that was rounded already.
  template <class Int = std::int32_t>
  Int whole(double value) {
    if (!faulted_ && !fits<Int>(value)) report(overflow, "Overflow");
    return faulted_ ? Int{-1} : static_cast<Int>(value);
  }

  void report(int number, std::string_view description) {
    if (!faulted_) errors_.report(number, description, concat("cFilterOrder.", name_));
    faulted_ = true;
  }

 private:
  std::string_view name_;
  ports::ErrorReporter& errors_;
  bool faulted_ = false;
};

struct cFilterOrder::Request {
  std::int32_t scan;  // main scan interval
  std::int32_t integTime;
  bool openTC;
  bool reversal;
  std::int16_t scansPerSubScan;

  [[nodiscard]] double subscan() const { return static_cast<double>(scan) * scansPerSubScan; }
};

std::int64_t subscanFor(std::int64_t measurementMicros, bool openThermocouple, bool reversal) {
  const auto part = measurementMicros + static_cast<std::int64_t>(fixedOverhead) +
                    static_cast<std::int64_t>(reversal ? reversalOverhead : 0);
  return part * (reversal ? 2 : 1) +
         static_cast<std::int64_t>(openThermocouple ? openThermocoupleOverhead : 0);
}

ports::Message subscanLimitMessage(int scansPerSubscan, bool inWindow) {
  return {.title = "Subscan Interval Too Long",
          .text = joined(
              {concat("The ", inWindow ? "generated subscan interval" : "Isolated subscan interval",
                      inWindow ? "" : " (M7128)", " cannot be longer than 30 minutes."),
               "The number of main scans per subscan will be reset.", "",
               "The largest value for this setting using the current",
               concat("scan rate is ", scansPerSubscan, ".")})};
}

std::int16_t mostScansPerSubScan(double scanMicros) {
  constexpr double most = std::numeric_limits<std::int16_t>::max();
  const double scans = halfEven(static_cast<double>(longestSubscanMicros) / scanMicros);
  return static_cast<std::int16_t>(std::min(scans, most));
}

std::string shownMicros(std::int32_t micros) {
  return concat(text::formatted(micros, "###,##0"), " uSec");
}

std::string shownCutoff(float hertz) {
  constexpr float least = 0.001F;
  constexpr float wholeFrom = 10;
  if (hertz <= least) return "0.001 Hz";
  const double decimal = text::readNumber(text::shortestSingle(hertz));
  return concat(text::formatted(decimal, hertz < wholeFrom ? "#,##0.000" : "#,##0"), " Hz");
}

// ---- the plan

std::int32_t cFilterOrder::CalcFOrderOrIntTime(std::int32_t ScanInterval, std::int32_t IntegTime,
                                               bool OpenTC, bool InputRev,
                                               std::int16_t& ScansPerSubScan) {
  Procedure procedure("CalcFOrderOrIntTime", errors_);
  limitSubscan(ScanInterval, ScansPerSubScan);
  const Request request{ScanInterval, IntegTime, OpenTC, InputRev, ScansPerSubScan};
  procedure.whole(request.subscan());
  if (procedure.faulted()) return -1;
  showMessages_ = remember(request);
  CalcMeasTimeAvail(scanIntervalUSec_, OpenTC, InputRev);
  if (measTimeAvail_ < 0) return -1;
  return plan(procedure, request);
}

/// The message is shown even on a repeated question: the caller's value changes.
void cFilterOrder::limitSubscan(std::int32_t scanInterval, std::int16_t& scansPerSubScan) {
  if (static_cast<double>(scanInterval) * scansPerSubScan <=
      static_cast<double>(longestSubscanMicros))
    return;
  scansPerSubScan = mostScansPerSubScan(scanInterval);
  scansPerSubScan_ = scansPerSubScan;
  messages_.show(subscanLimitMessage(scansPerSubScan));
}

/// True when anything differs from the last question. The subscan fits 32 bits.
bool cFilterOrder::remember(const Request& request) {
  const auto subscan = static_cast<std::int32_t>(request.subscan());
  if (subscan == scanIntervalUSec_ && request.integTime == inputIntegTime_ &&
      request.openTC == openTCCheck_ && request.scansPerSubScan == scansPerSubScan_ &&
      request.reversal == inputReversal_)
    return false;
  inputIntegTime_ = request.integTime;
  scanIntervalUSec_ = subscan;
  openTCCheck_ = request.openTC;
  inputReversal_ = request.reversal;
  scansPerSubScan_ = request.scansPerSubScan;
  return true;
}

/// The measurement time may be one that an earlier subscan had room for.
std::int32_t cFilterOrder::plan(Procedure& procedure, const Request& request) {
  std::int32_t result = -1;
  forcedFilterOrder_ = request.integTime < 0;
  if (forcedFilterOrder_) {
    result = forceOrder(request.integTime);
  } else if (request.integTime > measTimeAvail_) {
    complainOfFit(procedure, request);
    return -1;
  } else {
    integrationTimeUSec_ = procedure.whole(wholeSamples(request.integTime));
    result = CalcFilterOrder(measTimeAvail_, request.integTime);
  }
  CalcCutoffFrequency(filterOrder_, integrationTimeUSec_);
  return result;
}

std::int32_t cFilterOrder::forceOrder(std::int32_t integTime) {
  inputFilterOrder_ = withinOrders(-static_cast<std::int64_t>(integTime));
  filterOrder_ = inputFilterOrder_;
  return CalcIntegrationTime(measTimeAvail_, filterOrder_);
}

// ---- measurement time

std::int32_t cFilterOrder::CalcMeasTimeFromScan(std::int32_t ScanInterval, bool OpenTC,
                                                bool InputRev) const {
  return Procedure("CalcMeasTimeFromScan", errors_)
      .whole(measurementIn(ScanInterval, OpenTC, InputRev));
}

std::int32_t cFilterOrder::CalcScanFromMeasTime(std::int32_t MeasTime, bool OpenTC,
                                                bool InputRev) const {
  return Procedure("CalcScanFromMeasTime", errors_)
      .whole(static_cast<double>(subscanFor(MeasTime, OpenTC, InputRev)));
}

/// A subscan that is too small leaves the measurement time as it was.
void cFilterOrder::CalcMeasTimeAvail(std::int32_t ScanInterval, bool OpenTC, bool InputRev) {
  Procedure procedure("CalcMeasTimeAvail", errors_);
  scanIntervalUSec_ = ScanInterval;
  openTCCheck_ = OpenTC;
  inputReversal_ = InputRev;
  const std::int32_t measTime = procedure.whole(measurementIn(ScanInterval, OpenTC, InputRev));
  if (measTime >= leastMeasurementMicros)
    measTimeAvail_ = measTime;
  else
    complainOfScan(procedure, measTime);
}

std::int32_t cFilterOrder::OverheadUsec() const {
  const std::int64_t overhead = static_cast<std::int64_t>(scanIntervalUSec_) - measTimeAvail_;
  return static_cast<std::int32_t>(
      std::max<std::int64_t>(overhead, std::numeric_limits<std::int32_t>::min()));
}

void cFilterOrder::recommendScans(Procedure& procedure, double need, double scan) {
  const double exact = procedure.quotient(need, scan);
  const double rounded = halfEven(exact);
  const auto scans = procedure.whole<std::int16_t>(rounded + (rounded < exact ? 1 : 0));
  if (!procedure.faulted()) recScansPerSub_ = scans;
}

// ---- order and integration time

float cFilterOrder::CalcRawFilterOrder(std::int32_t MeasTime, std::int32_t IntegTime,
                                       std::int32_t PreFiltAvg) const {
  Procedure procedure("CalcRawFilterOrder", errors_);
  const double averaged = double{sampleMicros} * PreFiltAvg;
  const double integration = procedure.whole(wholeSamples(IntegTime));
  if (procedure.faulted() || integration == averaged) return -1;
  return static_cast<float>((MeasTime - averaged) / (integration - averaged));
}

std::int32_t cFilterOrder::CalcNumFilterCoeffs(std::int32_t Order, std::int32_t IntegTime,
                                               std::int32_t PreFiltAvg) const {
  Procedure procedure("CalcNumFilterCoeffs", errors_);
  const double samples = wholeSamples(IntegTime) / sampleMicros;
  return procedure.whole(halfEven((procedure.quotient(samples, PreFiltAvg) - 1) * Order + 1));
}

std::int32_t cFilterOrder::CalcNumPreFiltAvg(std::int32_t MeasTime) const {
  return Procedure("CalcNumPreFiltAvg", errors_)
      .whole(std::floor((MeasTime / double{sampleMicros} - 1) / maxCoefficients + 1));
}

std::int32_t cFilterOrder::CalcFilterOrder(std::int32_t MeasTime, std::int32_t IntegTime) {
  numPreFiltAvg_ = 1;
  rawFilterOrder_ = CalcRawFilterOrder(MeasTime, IntegTime, 1);
  const auto raw = static_cast<double>(rawFilterOrder_);
  filterOrder_ = static_cast<std::int32_t>(
      std::clamp(std::floor(raw), double{lowestOrder}, double{highestOrder}));
  numFilterCoeffs_ = CalcNumFilterCoeffs(filterOrder_, IntegTime, 1);
  if (numFilterCoeffs_ > maxCoefficients) lowerOrder(IntegTime);
  calculatedFilterOrder_ = filterOrder_;
  return filterOrder_;
}

/// Order 1 stays even with too many coefficients. The estimate takes the time as it was given, not
/// in whole samples.
void cFilterOrder::lowerOrder(std::int32_t integTime) {
  const double estimate =
      std::floor((maxCoefficients - 1) / (integTime / double{sampleMicros} - 1));
  filterOrder_ =
      static_cast<std::int32_t>(std::clamp(estimate, double{lowestOrder}, double{highestOrder}));
  numFilterCoeffs_ = CalcNumFilterCoeffs(filterOrder_, integTime, 1);
  while (numFilterCoeffs_ > maxCoefficients && filterOrder_ > lowestOrder) {
    --filterOrder_;
    numFilterCoeffs_ = CalcNumFilterCoeffs(filterOrder_, integTime, 1);
  }
}

std::int32_t cFilterOrder::CalcIntegrationTime(std::int32_t MeasTime, std::int32_t Order) {
  Procedure procedure("CalcIntegrationTime", errors_);
  if (MeasTime <= 0) return integrationTimeUSec_ = -1;
  numPreFiltAvg_ = CalcNumPreFiltAvg(MeasTime);
  const double samples = MeasTime / double{sampleMicros} / numPreFiltAvg_;
  numOrd1FilterCoeffs_ = procedure.whole(std::floor(procedure.quotient(samples - 1, Order) + 1));
  numFilterCoeffs_ = procedure.whole((numOrd1FilterCoeffs_ - 1.0) * Order + 1);
  if (procedure.faulted()) return -1;
  if (numOrd1FilterCoeffs_ < 2) {
    complainOfCoefficients(procedure, MeasTime, Order);
    return -1;
  }
  const double planned = double{sampleMicros} * numOrd1FilterCoeffs_ * numPreFiltAvg_;
  return integrationTimeUSec_ = procedure.whole(planned);
}

std::int32_t cFilterOrder::CalcRawIntegrationTime(std::int32_t MeasTime, std::int32_t Order,
                                                  std::int32_t PreFiltAvg) const {
  Procedure procedure("CalcRawIntegrationTime", errors_);
  const double rest = MeasTime - double{sampleMicros} * PreFiltAvg;
  return procedure.whole(std::floor(procedure.quotient(rest, Order) + sampleMicros));
}

// ---- frequencies

std::int32_t cFilterOrder::CalcCutoffFrequency(std::int32_t Order, std::int32_t IntegTime) {
  if (IntegTime < 1) {
    cutoffFrequency_ = filterCutoffFactor_ = firstZeroFrequency_ = -1;
  } else {
    firstZeroFrequency_ = static_cast<float>(1e6 / IntegTime);
    filterCutoffFactor_ = factorFor(Order);
    cutoffFrequency_ = firstZeroFrequency_ * filterCutoffFactor_;
  }
  return static_cast<std::int32_t>(halfEven(static_cast<double>(cutoffFrequency_)));
}

float cFilterOrder::factorFor(std::int32_t order) const {
  static constexpr float factors[] = {0.44295F, 0.31892F, 0.26194F, 0.22751F, 0.20385F};
  if (order >= lowestOrder && order <= highestOrder) return factors[order - lowestOrder];
  if (showMessages_)
    Procedure("CalcCutoffFrequency", errors_)
        .report(invalidOrder,
                "Cutoff Frequency Error: Invalid Filter Order. Frequency of First Zero will be "
                "used");
  return 1;
}

// ---- messages

bool cFilterOrder::shows(const Procedure& procedure) const {
  return showMessages_ && !procedure.faulted();
}

void cFilterOrder::show(const Lines& lines) const {
  messages_.show(
      {.title = "7128 Isolated Module Timing Problem",
       .text = concat("Please resolve the following timing problem :\r\n\r\n", joined(lines))});
}

cFilterOrder::Lines cFilterOrder::scansAdvice() const {
  return {"Alternatively, you may choose to set the number of 'main ",
          "scans per subscan' setting (found in the Advanced",
          concat("Configuration) to a value of ", recScansPerSub_, " or greater.")};
}

void cFilterOrder::complainOfScan(Procedure& procedure, std::int32_t measTime) {
  const std::int64_t need = subscanFor(leastMeasurementMicros, openTCCheck_, inputReversal_);
  const double scan =
      procedure.whole(halfEven(procedure.quotient(scanIntervalUSec_, scansPerSubScan_)));
  recommendScans(procedure, static_cast<double>(need), scan);
  if (!shows(procedure)) return;

  const std::int64_t overhead = static_cast<std::int64_t>(scanIntervalUSec_) - measTime;
  Lines lines = {"--Scan Interval Too Small--"};
  const auto add = [&lines](const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
  };
  if (measTime < 0)
    add({concat("The current scan interval of ", scanIntervalUSec_, " usec"),
         "does not allow for any measurement time. ",
         concat("This is due to an overhead time of ", overhead, " usec.")});
  else
    add({concat("The current scan interval of ", scanIntervalUSec_, " usec allows only ", measTime,
                " usec"),
         "for measurement time.", "This is because of an overhead",
         concat("time of ", overhead, " usec.")});
  add({concat("Please increase the scan interval to ", need, " usec or greater"),
       concat("to allow a measurement time of at least ", leastMeasurementMicros, " usec. Also"),
       "ensure that the integration time does not ",
       concat("exceed ", leastMeasurementMicros, " usec"),
       concat("plus the amount of new scan time beyond ", need, " usec."), ""});
  add(scansAdvice());
  show(lines);
}

void cFilterOrder::complainOfFit(Procedure& procedure, const Request& request) {
  const std::int32_t need = procedure.whole(
      static_cast<double>(subscanFor(request.integTime, request.openTC, request.reversal)));
  recommendScans(procedure, need, request.scan);
  if (!shows(procedure)) return;
  Lines lines = {
      "--Integration Time Can't Fit--",
      concat("The integration time of ", request.integTime, " usec cannot fit"),
      "within the available measurement time ",
      concat("of ", measTimeAvail_, " usec."),
      concat("Please increase the scan interval to ", need, " usec"),
      concat("or reduce the integration time to ", measTimeAvail_, " usec."),
  };
  for (const std::string& line : scansAdvice()) lines.push_back(line);
  show(lines);
}

void cFilterOrder::complainOfCoefficients(const Procedure& procedure, std::int32_t measTime,
                                          std::int32_t order) const {
  if (!shows(procedure)) return;
  const std::int64_t coefficients = static_cast<std::int64_t>(order) + 1;
  const std::string leastTime = text::shortest(coefficients * sampleMicros);
  const auto possible = static_cast<std::int64_t>(halfEven(measTime / double{sampleMicros})) - 1;
  show({"--Not Enough Filter Coefficients--",
        concat("In order to allow the minimum filter coefficients of ", coefficients, ","),
        "there must be ", "a minimum available measurement",
        concat("time of ", leastTime, " usec."),
        concat("The current available measurment time of ", measTime, " usec only allows for only ",
               numFilterCoeffs_, " filter"),
        "coefficient(s).", "Change your forced filter order (integration",
        concat(" time) to -", possible, " or increase your integration time to allow"),
        "a minimum available ", concat("measurement time of ", leastTime, ".")});
}

}  // namespace timing

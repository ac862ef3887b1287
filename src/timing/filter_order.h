#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ports/error_reporter.h"
#include "ports/message_service.h"

namespace timing {

constexpr int sampleMicros = 96;
constexpr int leastMeasurementMicros = 200;
constexpr int maxCoefficients = 680;
constexpr int lowestOrder = 1;
constexpr int highestOrder = 5;
constexpr std::int64_t longestSubscanMicros = 1'800'000'000;

/// The subscan that leaves a time for measuring, without the limits of 32 bits.
std::int64_t subscanFor(std::int64_t measurementMicros, bool openThermocouple, bool reversal);

/// The most main scans of a subscan that the limit of 30 minutes allows.
std::int16_t mostScansPerSubScan(double scanMicros);

/// Says that scans per subscan were set to the largest that the limit of 30 minutes allows; the
/// isolated-block window speaks of the subscan that the user just entered.
ports::Message subscanLimitMessage(int scansPerSubscan, bool inWindow = false);

/// Results as a window shows them: "8,680 uSec", "212 Hz", "1.234 Hz".
std::string shownMicros(std::int32_t micros);
std::string shownCutoff(float hertz);

/// Plans the digital filter of one isolated measurement block: the order from the integration
/// time, or the integration time from the order. Times in us, frequencies in Hz; -1 means not yet
/// calculated or not possible. Remembers its last inputs, so that the same question again is
/// answered without a message, and the last measurement time that a subscan had room for.
class cFilterOrder {
 public:
  cFilterOrder(ports::MessageService& messages, ports::ErrorReporter& errors)
      : messages_(messages), errors_(errors) {}

  /// The filter order; for a negative IntegTime, which forces that order, the integration time; -1
  /// when there is no plan. Lowers ScansPerSubScan when the subscan exceeds 30 minutes.
  std::int32_t CalcFOrderOrIntTime(std::int32_t ScanInterval, std::int32_t IntegTime, bool OpenTC,
                                   bool InputRev, std::int16_t& ScansPerSubScan);

  [[nodiscard]] std::int32_t ScanIntervalUSec() const { return scanIntervalUSec_; }
  [[nodiscard]] std::int32_t IntegrationTimeUSec() const { return integrationTimeUSec_; }
  [[nodiscard]] std::int32_t AltRoundIntgTimeUSec() const { return -1; }  // of an older rule
  [[nodiscard]] bool OpenTCCheck() const { return openTCCheck_; }
  [[nodiscard]] bool InputReversal() const { return inputReversal_; }
  [[nodiscard]] std::int32_t MeasTimeAvail() const { return measTimeAvail_; }
  [[nodiscard]] std::int32_t NumPreFiltAvg() const { return numPreFiltAvg_; }
  [[nodiscard]] float RawFilterOrder() const { return rawFilterOrder_; }
  [[nodiscard]] std::int32_t FilterOrder() const { return filterOrder_; }
  [[nodiscard]] std::int32_t NumFilterCoeffs() const { return numFilterCoeffs_; }
  [[nodiscard]] std::int32_t NumOrd1FilterCoeffs() const { return numOrd1FilterCoeffs_; }
  [[nodiscard]] bool ForcedFilterOrder() const { return forcedFilterOrder_; }
  [[nodiscard]] std::int32_t InputIntegTime() const { return inputIntegTime_; }
  [[nodiscard]] std::int32_t CalcIntegTime() const { return -1; }  // of an older rule
  [[nodiscard]] std::int32_t InputFilterOrder() const { return inputFilterOrder_; }
  [[nodiscard]] std::int32_t CalculatedFilterOrder() const { return calculatedFilterOrder_; }
  [[nodiscard]] float CutoffFrequency() const { return cutoffFrequency_; }
  [[nodiscard]] std::int32_t OverheadUsec() const;
  [[nodiscard]] float FirstZeroFrequency() const { return firstZeroFrequency_; }
  [[nodiscard]] float FilterCutoffFactor() const { return filterCutoffFactor_; }
  [[nodiscard]] std::int16_t ScansPerSubScan() const { return scansPerSubScan_; }
  [[nodiscard]] std::int16_t RecScansPerSub() const { return recScansPerSub_; }

  // The steps of the plan. An arithmetic fault goes to the error reporter; what can't be computed
  // is answered by -1, and no message is built on it.
  std::int32_t CalcFilterOrder(std::int32_t MeasTime, std::int32_t IntegTime);
  float CalcRawFilterOrder(std::int32_t MeasTime, std::int32_t IntegTime,
                           std::int32_t PreFiltAvg) const;
  void CalcMeasTimeAvail(std::int32_t ScanInterval, bool OpenTC, bool InputRev);
  [[nodiscard]] std::int32_t CalcMeasTimeFromScan(std::int32_t ScanInterval, bool OpenTC,
                                                  bool InputRev) const;
  [[nodiscard]] std::int32_t CalcScanFromMeasTime(std::int32_t MeasTime, bool OpenTC,
                                                  bool InputRev) const;
  std::int32_t CalcNumFilterCoeffs(std::int32_t Order, std::int32_t IntegTime,
                                   std::int32_t PreFiltAvg) const;
  std::int32_t CalcNumPreFiltAvg(std::int32_t MeasTime) const;
  std::int32_t CalcIntegrationTime(std::int32_t MeasTime, std::int32_t Order);
  std::int32_t CalcRawIntegrationTime(std::int32_t MeasTime, std::int32_t Order,
                                      std::int32_t PreFiltAvg) const;
  std::int32_t CalcCutoffFrequency(std::int32_t Order, std::int32_t IntegTime);

 private:
  class Procedure;
  struct Request;
  using Lines = std::vector<std::string>;

  void limitSubscan(std::int32_t scanInterval, std::int16_t& scansPerSubScan);
  bool remember(const Request& request);
  std::int32_t plan(Procedure& procedure, const Request& request);
  std::int32_t forceOrder(std::int32_t integTime);
  void lowerOrder(std::int32_t integTime);
  void recommendScans(Procedure& procedure, double need, double scan);
  [[nodiscard]] float factorFor(std::int32_t order) const;

  void complainOfScan(Procedure& procedure, std::int32_t measTime);
  void complainOfFit(Procedure& procedure, const Request& request);
  void complainOfCoefficients(const Procedure& procedure, std::int32_t measTime,
                              std::int32_t order) const;
  [[nodiscard]] bool shows(const Procedure& procedure) const;
  void show(const Lines& lines) const;
  [[nodiscard]] Lines scansAdvice() const;

  ports::MessageService& messages_;
  ports::ErrorReporter& errors_;

  std::int32_t scanIntervalUSec_ = -1;
  std::int32_t integrationTimeUSec_ = -1;
  bool openTCCheck_ = false;
  bool inputReversal_ = false;
  std::int32_t measTimeAvail_ = -1;
  std::int32_t numPreFiltAvg_ = -1;
  float rawFilterOrder_ = -1;
  std::int32_t filterOrder_ = -1;
  std::int32_t numFilterCoeffs_ = -1;
  std::int32_t numOrd1FilterCoeffs_ = -1;
  bool forcedFilterOrder_ = false;
  std::int32_t inputIntegTime_ = -1;
  std::int32_t inputFilterOrder_ = -1;
  std::int32_t calculatedFilterOrder_ = -1;
  float cutoffFrequency_ = -1;
  float firstZeroFrequency_ = -1;
  float filterCutoffFactor_ = -1;
  std::int16_t scansPerSubScan_ = -1;
  std::int16_t recScansPerSub_ = -1;
  bool showMessages_ = true;
};

/// Every property of a planner with its name, in the order in which they are listed to users.
template <class Visitor>
void visitProperties(const cFilterOrder& planner, Visitor&& property) {
  property("ScanIntervalUSec", planner.ScanIntervalUSec());
  property("IntegrationTimeUSec", planner.IntegrationTimeUSec());
  property("AltRoundIntgTimeUSec", planner.AltRoundIntgTimeUSec());
  property("OpenTCCheck", planner.OpenTCCheck());
  property("InputReversal", planner.InputReversal());
  property("MeasTimeAvail", planner.MeasTimeAvail());
  property("NumPreFiltAvg", planner.NumPreFiltAvg());
  property("RawFilterOrder", planner.RawFilterOrder());
  property("FilterOrder", planner.FilterOrder());
  property("NumFilterCoeffs", planner.NumFilterCoeffs());
  property("NumOrd1FilterCoeffs", planner.NumOrd1FilterCoeffs());
  property("ForcedFilterOrder", planner.ForcedFilterOrder());
  property("InputIntegTime", planner.InputIntegTime());
  property("CalcIntegTime", planner.CalcIntegTime());
  property("InputFilterOrder", planner.InputFilterOrder());
  property("CalculatedFilterOrder", planner.CalculatedFilterOrder());
  property("CutoffFrequency", planner.CutoffFrequency());
  property("OverheadUsec", planner.OverheadUsec());
  property("FirstZeroFrequency", planner.FirstZeroFrequency());
  property("FilterCutoffFactor", planner.FilterCutoffFactor());
  property("ScansPerSubScan", planner.ScansPerSubScan());
  property("RecScansPerSub", planner.RecScansPerSub());
}

}  // namespace timing

#include "model/repair.h"

#include <algorithm>

#include "text/strings.h"

namespace model {
namespace {

using text::concat;

constexpr std::string_view dataTypes[] = {"FP2", "IEEE4"};
constexpr std::string_view inputTypes[] = {"Diff", "SE"};
constexpr std::int16_t lastPassBand = 4;

/// Looks for what is to be mended in any project, and mends it in one that may be changed.
template <class AnyProject>
class Repair {
 public:
  static constexpr bool mends = !std::is_const_v<AnyProject>;

  Repair(AnyProject& project, std::vector<std::string>& notes) : project_(project), notes_(notes) {}

  /// True when something needs mending.
  bool run() {
    for (const BlockKind kind : allBlockKinds)
      for (std::size_t n = 1; n <= infoOf(kind).blockLimit; ++n)
        if (inUse(project_, kind, n)) takeBlock(kind, n);
    where_ = "isolated blocks";
    atLeast(project_.isolated.ScansPerSubScan, 1, "scans per subscan");
    for (std::size_t s = 0; s < project_.filterSlots.size(); ++s) takeSlot(s);
    takeOthers();
    return found_;
  }

 private:
  void takeBlock(BlockKind kind, std::size_t number) {
    auto& block = project_.block(kind, number);
    where_ = concat(infoOf(kind).name, " block ", number);
    const auto& ranges = rangesOf(kind);
    if (!ranges.empty()) word(block.Range, ranges, defaultBlock(kind).Range, "range");
    word(block.DataResolution, dataTypes, "FP2", "data type");
    word(block.MeasType, inputTypes, "Diff", "input");
    atLeast(block.SettleTime, 0, "settling time");
    atLeast(block.Integration, 0, "integration time");
    if (kind == BlockKind::bridge) atLeast(block.ExciteReps, 1, "bridges for each excitation");
  }

  void takeSlot(std::size_t slot) {
    where_ = concat("filter slot ", slot + 1);
    auto& passBand = project_.filterSlots[slot].OverSample;
    atLeast(passBand, 0, "pass band");
    if (passBand > lastPassBand) put(passBand, lastPassBand, "pass band");
  }

  void takeOthers() {
    where_ = "battery";
    for (auto& set : project_.powerOut.sets) dataType(set.DataResolution);
    where_ = "reference temperature";
    for (auto* reference :
         {&project_.tcReference, &project_.isoReference, &project_.tcmuxReference})
      dataType(reference->DataResolution);
    for (std::size_t p = 0; p < project_.ports.groups.size(); ++p) {
      where_ = concat("port group ", p + 1);
      dataType(project_.ports.groups[p].DataResolution);
    }
    for (std::size_t k = 0; k < project_.can.items.size(); ++k) {
      where_ = concat("CAN item ", k + 1);
      dataType(project_.can.items[k].DataType);
    }
    for (std::size_t f = 0; f < project_.calculated.fields.size(); ++f) {
      where_ = concat("calculated field ", f + 1);
      dataType(project_.calculated.fields[f].DataResolution);
    }
  }

  template <class Text>
  void dataType(Text& value) {
    word(value, dataTypes, "FP2", "data type");
  }

  /// One of the words, in their spelling.
  template <class Text, class Words>
  void word(Text& value, const Words& words, std::string_view usual, std::string_view what) {
    if (std::find(std::begin(words), std::end(words), value) != std::end(words)) return;
    const auto same = std::find_if(std::begin(words), std::end(words), [&](std::string_view known) {
      return text::equalsIgnoringCase(known, value);
    });
    put(value, std::string(same == std::end(words) ? usual : *same), what);
  }

  template <class Number>
  void atLeast(Number& value, int low, std::string_view what) {
    if (value < low) put(value, static_cast<std::remove_const_t<Number>>(low), what);
  }

  template <class Value, class Usable>
  void put(Value& value, const Usable& usable, std::string_view what) {
    found_ = true;
    if constexpr (mends) {
      notes_.push_back(concat(where_, ": the ", what, " '", value,
                              "' is none that a program can carry; it uses ", usable));
      value = usable;
    }
  }

  AnyProject& project_;
  std::vector<std::string>& notes_;
  std::string where_;
  bool found_ = false;
};

}  // namespace

std::optional<Project> repaired(const Project& project, std::vector<std::string>& notes) {
  if (!Repair<const Project>(project, notes).run()) return std::nullopt;
  Project mended = project;
  Repair<Project>(mended, notes).run();
  return mended;
}

}  // namespace model

#include "model/pick_list.h"

#include <array>

#include "model/channel_plan.h"
#include "model/stored_outputs.h"
#include "text/strings.h"

namespace model {
namespace {

using text::concat;

/// Collects the pick list of a project.
class VariableList {
 public:
  explicit VariableList(const Project& project) : project_(project), plan_(channelPlan(project)) {}

  std::vector<std::string> run(unsigned types) {
    if (types & channelVariables) addChannels();
    if (types & loggerVariables) addLoggerVariables();
    if (types & flagVariables) addIndexed("Flag", maxFlags);
    if (types & portVariables) addPorts();
    if (types & canVariables) addCanValues();
    if (types & calculatedVariables) addCalculatedFields();
    if (types & tableVariables) addTables();
    return std::move(names_);
  }

 private:
  void addIndexed(std::string_view name, std::size_t count) {
    for (std::size_t i = 1; i <= count; ++i) names_.push_back(concat(name, "(", i, ")"));
  }

  void addElements(const std::vector<Element>& elements, const std::string& array) {
    for (std::size_t e = 0; e < elements.size(); ++e) {
      const std::string& alias = elements[e].AliasName;
      names_.push_back(alias.empty() ? concat(array, "(", e + 1, ")") : alias);
    }
  }

  void addChannels() {
    for (const BlockKind kind : allBlockKinds)
      for (std::size_t n = 1; n <= infoOf(kind).blockLimit; ++n) {
        const bool spectra = kind == BlockKind::filter && isFft(project_, n);
        if (!inUse(project_, kind, n) || spectra) continue;
        addElements(project_.block(kind, n).elements, arrayName(project_, kind, n));
      }
  }

  void addLoggerVariables() {
    names_.emplace_back("BattVolt");
    names_.emplace_back("BattCurr");
    addIndexed("TRef", plan_.tcSlots.size());
    addIndexed("IsoTRef", plan_.isoTcSlots.size());
    addIndexed("TCMUXGRef", static_cast<std::size_t>(plan_.multiplexers));
  }

  void addPorts() {
    if (project_.ports.CodeType == 0) addIndexed("Port", portsPerGroup);
    std::array<bool, 2> taken = {};  // a second module's variable carries the slot
    for (std::size_t p = 1; p <= project_.ports.groups.size(); ++p) {
      if (!isReadGroup(project_, plan_, p)) continue;
      const PortGroupPlace& place = plan_.portGroups[p - 1];
      bool& bareIsTaken = taken[place.upper ? 1 : 0];
      const std::string bare = place.upper ? "ReadPortU" : "ReadPortL";
      names_.push_back(bareIsTaken ? concat(bare, place.slot) : bare);
      bareIsTaken = true;
    }
  }

  void addCanValues() {
    for (std::size_t k = 0; k < project_.can.items.size(); ++k) {
      const CanItem& item = project_.can.items[k];
      const bool receives = item.DataStyle != 1;
      if (receives && canItemInUse(project_, item)) addElements(item.values, concat("CBlk", k + 1));
    }
  }

  void addCalculatedFields() {
    for (std::size_t f = 0; f < project_.calculated.fields.size(); ++f) {
      const std::string& name = project_.calculated.fields[f].CalcName;
      names_.push_back(name.empty() ? concat("CalcField", f + 1) : name);
    }
  }

  void addTables() {
    for (const OutputTable& table : project_.tables) {
      if (!table.TableOn) continue;
      names_.push_back(concat(table.TableName, ".Record(1,0)"));
      names_.push_back(concat(table.TableName, ".TableSize(1,1)"));
    }
  }

  const Project& project_;
  ChannelPlan plan_;
  std::vector<std::string> names_;
};

}  // namespace

std::vector<std::string> variableNames(const Project& project, unsigned types) {
  return VariableList(project).run(types);
}

}  // namespace model

#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "model/channel_plan.h"
#include "model/project.h"
#include "projectfile/key_text.h"
#include "projectfile/row.h"

namespace projectfile {

/// A table's write-if conditions in both forms of their keys. Which one counts is known only when
/// the number of conditions is, which may stand behind them.
struct WriteIfForms {
  model::Condition single;
  std::array<model::Condition, model::maxConditions> listed;
};

/// The project that a load fills, and what the load must remember until its end.
struct Target {
  explicit Target(model::Project& start);

  void enterKind(model::BlockKind blockKind);

  model::Project& project;
  std::size_t line = 0;                                    // being read, from 1
  model::BlockKind kind = model::BlockKind::thermocouple;  // of the section being read
  model::BlockSet* set = nullptr;                          // of that kind
  std::size_t blockLimit = 0;                              // of that kind
  model::Element freshElement;                             // of that kind

  std::array<WriteIfForms, model::maxTables> writeIf;
  std::array<std::array<bool, 2>, model::maxTables> eventTextRead = {};  // start, stop
  std::array<bool, model::blockKinds> countRead = {};
  std::array<std::size_t, model::maxUserModules> filterCountLines = {};
  bool quantitiesRead = false;
  bool canRead = false;
  model::ChannelTotals totals;  // as filed, not kept: they are worked out anew
};

/// The keys of one section as the reader looks them up.
class SectionKeys {
 public:
  struct Entry {
    std::string name;
    Form form = Form::none;
    bool isTime = false;
    std::uint32_t next = 0;  // the entry that followed it last time
    Limits limits;
    const void* row = nullptr;
    ValueRef (*locate)(const void* row, Target&, const Indexes&) = nullptr;
  };

  /// Adds a family; `find` gives the owner of its rows, or nullptr for indexes out of bounds.
  template <auto find>
  using OwnerFoundBy =
      std::remove_pointer_t<std::invoke_result_t<decltype(find), Target&, const Indexes&>>;
  template <auto find>
  void add(Form form, std::span<const Row<OwnerFoundBy<find>>> rows, std::string_view prefix = "",
           std::string_view suffix = "") {
    for (const auto& row : rows)
      append({std::string(prefix).append(row.key).append(suffix), form, row.isTime, 0, row.limits,
              &row, &locate<find>});
  }

  /// The entry that is expected after `previous`.
  [[nodiscard]] std::uint32_t expectedAfter(std::uint32_t previous) const {
    return entries_[previous].next;
  }
  void expectAfter(std::uint32_t previous, std::uint32_t entry) { entries_[previous].next = entry; }
  [[nodiscard]] const Entry& operator[](std::uint32_t entry) const { return entries_[entry]; }

  static constexpr std::uint32_t none = ~std::uint32_t{0};
  [[nodiscard]] std::uint32_t find(std::string_view name, Form form) const;

 private:
  template <auto finder>
  static ValueRef locate(const void* row, Target& target, const Indexes& indexes) {
    auto* const owner = finder(target, indexes);
    if (!owner) return {};
    return static_cast<const Row<OwnerFoundBy<finder>>*>(row)->at(*owner);
  }
  void append(Entry entry);

  std::vector<Entry> entries_;
  std::vector<std::uint32_t> hashes_;  // of the names, for a quick search
};

/// A section of the file and how its keys are read.
struct SectionInfo {
  std::string_view header;  // empty: that of the kind
  model::BlockKind kind;    // of the block sections
  void (*describe)(SectionKeys&, model::BlockKind);
};
std::span<const SectionInfo> knownSections();
std::string_view headerOf(const SectionInfo& section);

}  // namespace projectfile

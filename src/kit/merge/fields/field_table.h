// What a merge does with each attribute of a signal type.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "kit/merge/merge.h"

namespace zortunedex::kit::merge {

enum class Rule : std::uint8_t {
  Lists,        ///< always the list's
  Name,         ///< of the broadcaster
  DisplayName,  ///< as the user sees it
  Tuning,
  Identity,  ///< numbers by which a service is known
  Status,    ///< the running status
  Scans,     ///< the scan's
};

struct FieldRule {
  const station_blocks::Field* row;
  Rule rule;
  bool isZeroUnknown;  ///< 0 in a scan says nothing
};

/// Entries of a kind of stream, and the attribute that says which is selected.
struct StreamRule {
  const station_blocks::StreamList* list;
  const station_blocks::Field* selected;  ///< null: there is none
};

class FieldTable {
 public:
  FieldTable(InputSignalType signal, const MergePolicy& policy);

  InputSignalType Signal() const { return m_signal; }
  const station_blocks::Layout& Layout() const { return m_layout; }
  /// In the file's order; without what the file does not give back.
  std::span<const FieldRule> Fields() const { return m_fields; }
  std::span<const StreamRule> Streams() const { return m_streams; }
  /// Null where there are none.
  const station_blocks::ComponentList* Components() const { return m_layout.components; }
  /// Null for a type without running status.
  const station_blocks::Field* Status() const { return m_status; }

 private:
  void AddFields(station_blocks::Rows<station_blocks::Field> rows, const MergePolicy& policy);
  void AddStreams();

  InputSignalType m_signal;
  const station_blocks::Layout& m_layout;
  std::vector<FieldRule> m_fields;
  std::vector<StreamRule> m_streams;
  const station_blocks::Field* m_status = nullptr;
};

}  // namespace zortunedex::kit::merge

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kit/model/field_value.h"

namespace zortunedex::kit {

/// One value that the channels of a signal type have, by the name that a channel has in JSON:
/// "number" and the others that the record answers, the attributes of its block ("symbolRate",
/// "block.serviceType" where the record has the name, too) and those of entries, counted from 1
/// ("AudioStream[2].pid"). The file's names of the record's values ("freq") are taken as well.
class ChannelField {
 public:
  /// InvalidArgument that lists the names there are, the nearest first, for one that is none of
  /// them.
  ChannelField(InputSignalType signal, std::string_view name);

  /// All names, in the order of the JSON; the entries of a list as one, "AudioStream[1..16].pid".
  static std::vector<std::string> Names(InputSignalType signal);

  /// Nothing for an entry that the channel has not, and where its block does not reach.
  FieldValue Of(const Channel& channel, const NarrowText& narrow) const;
  const std::string& Name() const { return m_name; }
  /// Null for a value of the block.
  const RecordField* Record() const { return m_record; }
  station_blocks::Form Form() const { return m_row.form; }

 private:
  bool FindInRecord(const station_blocks::Layout* layout, std::string_view name);
  bool FindInBlock(const station_blocks::Layout& layout, std::string_view name);
  bool FindEntry(const station_blocks::Layout& layout, std::string_view name);

  std::string m_name;
  const RecordField* m_record = nullptr;
  station_blocks::Field m_row = {};  ///< a copy: the places of components are in no table
  std::size_t m_place = 0;           ///< in the block
  std::size_t m_entry = 0;           ///< counted from 1; 0: of no list
  std::size_t m_countOffset = 0;
};

/// A value for people: yes or no for a mark, "-" for nothing.
std::string FieldText(const FieldValue& value);

}  // namespace zortunedex::kit

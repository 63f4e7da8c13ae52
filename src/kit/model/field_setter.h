#pragma once

#include <string>

#include "kit/model/channel.h"
#include "kit/model/narrow_text.h"

namespace zortunedex::kit {

/// One value to be set: of the attribute with that name, or of the attribute that keeps `source`.
struct Assignment {
  std::string field;
  std::string value;
  station_blocks::Source source = station_blocks::Source::Block;
};

/// Gives the attributes of a channel values that are texts. FIELD is a name as the file has it or
/// as the record's values are shown (freq or frequency, block.serviceType), LIST[N].FIELD one of an
/// entry; a list grows as far as it has to. A lock is taken as a mark is given, too.
class FieldSetter {
 public:
  FieldSetter(InputSignalType signal, const NarrowText& narrow);

  /// InvalidArgument for an attribute that the type has not and a value that does not belong there;
  /// Failure for a value that the file cannot hold.
  void Set(Channel& channel, const Assignment& assignment) const;

 private:
  const station_blocks::Field& Find(const Assignment& assignment) const;
  void SetEntry(Channel& channel, const Assignment& assignment, std::size_t bracket) const;
  void SetListEntry(Channel& channel, const station_blocks::StreamList& list, std::size_t entry,
                    const std::string& attribute, const Assignment& assignment) const;
  void SetComponent(Channel& channel, std::size_t entry, const std::string& attribute,
                    const Assignment& assignment) const;
  void SetCount(Channel& channel, const station_blocks::Field& field,
                const std::string& value) const;
  void SetValue(BYTE* block, const station_blocks::Field& field,
                const Assignment& assignment) const;
  void SetText(BYTE* place, std::size_t width, std::size_t limit,
               const Assignment& assignment) const;

  InputSignalType m_signal;
  const station_blocks::Layout& m_layout;
  const NarrowText& m_narrow;
};

}  // namespace zortunedex::kit

// Setting the attributes of a channel from the command line.
#pragma once

#include "kit/model/channel.h"
#include "kit/text/narrow_text.h"
#include "tool/options/options.h"

/// Layout of a signal type. Failure for a type whose channels the file cannot hold.
const station_blocks::Layout& LayoutOf(InputSignalType signal);

/// A channel of that type in which nothing is set: the satellite parameters are NotSet, everything
/// else is zero.
Channel EmptyChannel(const station_blocks::Layout& layout);

/// Most bytes that a text may have to come back whole from the file.
std::size_t TextLimit(const station_blocks::Field& field);
inline constexpr std::size_t kComponentNameLimit = 7;

class FieldSetter {
 public:
  FieldSetter(InputSignalType signal, const NarrowText& narrow);

  /// UsageError for an attribute that the type has not and a value that does not belong there;
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

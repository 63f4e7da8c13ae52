#pragma once

#include <optional>

#include "kit/interchange/format.h"
#include "kit/model/channel_list.h"

namespace zortunedex::kit::interchange {

/// The list of a directory as it is, and what its way out or in needs. Stays where it is made: its
/// context names its parts.
class ListInExchange {
 public:
  /// Reads the list and, for a format that names dishes, what the dishes are turned to as far as
  /// the directory has a catalogue that says so. Without a format it needs no dishes. Failure where
  /// the directory or a file of it cannot be read. `codePage` is that of the list's texts; nothing:
  /// the system's.
  ListInExchange(const Location& location, const Format* format,
                 Unreadable unreadable = Unreadable::Refuse, std::optional<UINT> codePage = {});
  ListInExchange(const ListInExchange&) = delete;
  ListInExchange& operator=(const ListInExchange&) = delete;

  /// The parts, which live as long as this.
  const ChannelList& List() const { return m_list; }
  const NarrowText& Narrow() const { return m_narrow; }
  const ListContext& Context() const { return m_context; }

 private:
  ChannelList m_list;
  NarrowText m_narrow;
  ListContext m_context;
};

}  // namespace zortunedex::kit::interchange

// What a merge leaves for the next one: the scan as it was, so that it can be told who changed
// what.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kit/model/channel_table.h"

namespace zortunedex::kit {

namespace interchange {
struct ListContext;
}

namespace merge {

/// A service that a scan found, or a channel that the scans lack.
struct BaseEntry {
  /// As the scan had it that found it last; what that scan's format cannot hold, and channels that
  /// no scan found, as the list had it.
  Channel channel;
  std::uint32_t absent = 0;  ///< how many scans in a row lacked it where they looked
  std::uint64_t result = 0;  ///< tells the list's channel as it was left from others; 0: not known
  std::uint64_t source = 0;  ///< tells the channel of that scan from others; 0: not known
  bool isSeen = true;        ///< false: no scan found it as long as there is a base
  bool isListed = true;      ///< the list had it: where it is gone, the user deleted it
  bool isMarked = false;     ///< it was, or could not be, marked as gone
  bool isTwin = false;       ///< the same service again: the scan had it twice

  friend bool operator==(const BaseEntry& a, const BaseEntry& b);
};

/// What one merge leaves for the next one of the same list.
struct MergeBase {
  DWORD country = 0;
  InputSignalType signal = InputSignalUnknown;
  std::uint64_t scan = 0;  ///< tells one scan from another, whatever the order of its channels
  std::vector<BaseEntry> entries;
};

/// The base of a list that was made from a scan or a file without a merge: everything is listed.
MergeBase BaseOf(const ChannelTable& scan);

/// {"tunedex":"merge-base","version":1,"country","signal","scan","channels":[...]}, one channel a
/// line, each as `channels show --json` prints it without what is 0, empty or not set.
std::string WriteBase(const MergeBase& base, const interchange::ListContext& context);

/// Raises a Failure in plain words for what is no such document, is damaged, or belongs to another
/// list than the context's.
MergeBase ReadBase(std::string_view bytes, const interchange::ListContext& context);

/// "base-49-DVBSatellite.json", as the history knows it.
std::string BaseFileName(DWORD country, InputSignalType signal);

}  // namespace merge

}  // namespace zortunedex::kit

// Channels, lists, scans and bases for the tests of merges.
#pragma once

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>

#include "kit/merge/merge.h"
#include "support/random.h"

namespace zortunedex::kit {

/// A channel of a signal type by the attributes of the file; both names are `name`.
using Attributes = std::initializer_list<std::pair<const char*, std::uint32_t>>;
Channel MakeStation(InputSignalType signal, UINT index, const std::string& name,
                    Attributes attributes);

/// Number of an attribute of the channel, wherever it lives; fails for one that there is not.
std::uint32_t ValueIn(const Channel& channel, InputSignalType signal, const char* attribute);
void SetValueIn(Channel& channel, InputSignalType signal, const char* attribute,
                std::uint32_t value);
/// The name that is broadcast, in the block and beside it.
void SetBroadcastName(Channel& channel, InputSignalType signal, const std::string& name);
void AddStream(Channel& channel, InputSignalType signal, const char* element, std::uint32_t type,
               std::uint32_t pid, std::uint32_t language);

/// What meets in one merge.
struct MergeWorld {
  ChannelTable list;
  std::optional<merge::MergeBase> base;
  ChannelTable scan;
  merge::MergePolicy policy;
  /// How a channel reads in the scan's format; empty: as it is.
  std::function<Channel(Channel)> told = {};

  const merge::MergeBase* Base() const { return base ? &*base : nullptr; }
  merge::MergePlan Plan() const { return PlanOf(list, Base()); }
  /// The same scan once more, into what became of the list.
  merge::MergePlan PlanOf(const ChannelTable& now, const merge::MergeBase* last) const;
};

/// How a channel reads in a format that rounds frequencies, and has of streams the PIDs alone.
Channel Coarse(Channel channel, InputSignalType signal);

/// Few values each, so that services collide, miss each other narrowly, and are unknown.
class RandomWorlds {
 public:
  RandomWorlds(InputSignalType signal, std::uint32_t seed) : m_signal(signal), m_random(seed) {}

  MergeWorld Next();
  Random& Numbers() { return m_random; }
  merge::MergePolicy Policy();
  ChannelTable List();
  /// Channels of a list as a scan has them, changed in places, and some more.
  ChannelTable Scan(const ChannelTable& list);
  /// What a user may do between two merges.
  void Edit(ChannelTable& list);
  void Shuffle(ChannelTable& table);

 private:
  Channel RandomStation();
  void Mutate(Channel& channel);
  void SetRandom(Channel& channel, const char* attribute);
  void AddStreams(Channel& channel);

  InputSignalType m_signal;
  Random m_random;
};

/// "1 M100, 2 M102 …": the codes in the order of the changes, with the index they are of.
std::string CodesIn(const merge::MergePlan& plan);

/// How many random cases a type is tried with; a build for endurance raises it.
#ifndef ZORTUNEDEX_MERGE_CASES
#define ZORTUNEDEX_MERGE_CASES 25
#endif
inline constexpr int kMergeCases = ZORTUNEDEX_MERGE_CASES;

}  // namespace zortunedex::kit

// A plain model of who is who in a merge: it looks at every pair, again and again, and knows
// nothing of how the merge finds them.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "kit/merge/merge_world.h"

namespace zortunedex::kit {

/// What a channel is recognised by.
struct Sight {
  InputSignalType signal = InputSignalUnknown;
  std::uint32_t service = 0;
  std::uint32_t stream = 0;
  std::uint32_t network = 0;
  std::uint32_t serviceType = 0;
  std::int32_t position = 0;  ///< tenths of degrees, negative to the west
  std::uint32_t polarisation = 0;
  std::uint32_t frequency = 0;
  std::uint32_t rf = 0;
  std::uint32_t station[2] = {};  ///< CNI0 and CNI1
  std::string label;              ///< of the ensemble
  WideText name;

  bool operator==(const Sight&) const = default;
};

Sight SightOf(const Channel& channel, InputSignalType signal);

/// The text of an ensemble's label.
void SetLabel(Channel& channel, const std::string& label);

/// Nothing says that they are two: in a list, where they are on one frequency; in a scan, where
/// they are within reach.
bool AreCopies(const Sight& a, const Sight& b);
bool AreTwins(const Sight& a, const Sight& b);

/// One look at a tier: what is compared as it is, and what is left open.
struct Look {
  std::size_t tier = 0;
  std::int32_t offset = 0;    ///< positions of the list, moved by so much, are those of the scan
  std::uint32_t unknown = 0;  ///< places that one side leaves open while the other knows them all
  bool isOfList = false;      ///< that side is the list
};

class SightModel {
 public:
  /// `isReversed`: looks that nothing puts in an order are taken from the other end.
  SightModel(std::vector<Sight> list, std::vector<Sight> scan, bool isReversed)
      : m_list(std::move(list)), m_scan(std::move(scan)), m_isReversed(isReversed) {}

  void Run();

  std::map<std::size_t, std::size_t> pairs;
  std::set<std::size_t> ambiguous;   ///< of the list
  std::set<std::size_t> candidates;  ///< of the scan
  bool isOpen = false;               ///< equally near ones: nothing says who comes first

  bool IsNew(std::size_t s) const { return !m_taken.contains(s) && !candidates.contains(s); }
  /// The scan looked where the channel is.
  bool IsLookedFor(std::size_t l) const;

 private:
  struct Group {
    std::vector<std::size_t> list;
    std::vector<std::size_t> scan;
  };

  bool IsFree(std::size_t l) const { return !pairs.contains(l) && !ambiguous.contains(l); }
  void Take(std::size_t l, std::size_t s) {
    pairs[l] = s;
    m_taken.insert(s);
  }
  void RunTier(std::size_t tier);
  void RunLook(const Look& look);
  Group GroupOf(std::size_t l, const Look& look) const;
  void Resolve(Group group, const Look& look);
  /// True while two were near.
  template <typename Lines>
  bool PairNearest(const Group& group, Lines lines);
  void PairSeveral(Group group);
  bool PairLone(const Group& group, bool isSite, bool isName);
  void KeepFree(Group& group) const;

  std::vector<Sight> m_list;
  std::vector<Sight> m_scan;
  bool m_isReversed;
  std::set<std::size_t> m_taken;
};

}  // namespace zortunedex::kit

// Who is who, told by a plain model that looks at every pair, for types without identifiers that
// may be left open.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>

#include "kit/merge/merge_world.h"

namespace zortunedex::kit {

namespace {

struct Plain {
  std::vector<std::uint32_t> identity;
  std::vector<std::vector<std::uint32_t>> keys;  ///< of the tiers behind the first; empty: none
  std::uint32_t site = 0;
  WideText name;
};

bool IsModelAtsc(InputSignalType signal) {
  return signal == InputSignalATSCAntenna || signal == InputSignalATSCCable;
}

Plain PlainOf(const Channel& channel, InputSignalType signal) {
  const auto value = [&](const char* attribute) { return ValueIn(channel, signal, attribute); };
  Plain plain;
  plain.name = channel.name;
  if (!IsModelAtsc(signal)) {
    plain.site = channel.frequency;
    if (plain.site != 0) plain.identity = {1};
    return plain;
  }
  plain.site = channel.number;
  const std::uint32_t major = value("majorChannel");
  const std::uint32_t minor = value("minorChannel");
  const std::uint32_t program = value("programNumber");
  if (plain.site != 0 && major != 0) plain.identity = {plain.site, major, minor};
  plain.keys.resize(2);
  if (major != 0) plain.keys[0] = {major, minor};
  if (plain.site != 0 && program != 0) plain.keys[1] = {plain.site, program};
  return plain;
}

class PlainModel {
 public:
  PlainModel(std::vector<Plain> list, std::vector<Plain> scan, std::uint32_t reach)
      : m_list(std::move(list)), m_scan(std::move(scan)), m_reach(reach) {}

  std::map<std::size_t, std::size_t> pairs;
  std::set<std::size_t> ambiguous;

  void Run() {
    PairIdentities();
    const std::size_t tiers = m_list.empty() ? 0 : m_list.front().keys.size();
    for (std::size_t before = m_list.size() + 1; before != pairs.size();) {
      before = pairs.size();
      for (std::size_t tier = 0; tier < tiers; ++tier) RunTier(tier);
    }
  }

 private:
  bool IsFree(std::size_t l, std::size_t s) const {
    return !pairs.contains(l) && !m_taken.contains(s) && !ambiguous.contains(l) &&
           !m_candidates.contains(s);
  }
  void Take(std::size_t l, std::size_t s) {
    pairs[l] = s;
    m_taken.insert(s);
  }
  std::uint32_t Distance(std::size_t l, std::size_t s) const {
    const std::uint32_t a = m_list[l].site;
    const std::uint32_t b = m_scan[s].site;
    return a < b ? b - a : a - b;
  }

  /// Always the nearest two of all; of equally near ones the lower.
  void PairIdentities() {
    for (;;) {
      std::optional<std::tuple<std::uint32_t, std::uint32_t, std::size_t, std::size_t>> best;
      for (std::size_t l = 0; l < m_list.size(); ++l) {
        for (std::size_t s = 0; s < m_scan.size(); ++s) {
          if (!IsFree(l, s) || m_list[l].identity.empty()) continue;
          if (m_list[l].identity != m_scan[s].identity || Distance(l, s) > m_reach) continue;
          const std::tuple offer(Distance(l, s), std::min(m_list[l].site, m_scan[s].site), l, s);
          if (!best || offer < *best) best = offer;
        }
      }
      if (!best) return;
      Take(std::get<2>(*best), std::get<3>(*best));
    }
  }

  /// Pairs l and s where nobody else of their key shares `same` with them.
  template <typename Same>
  bool PairLoneTwo(std::size_t tier, Same same) {
    bool isAny = false;
    for (std::size_t l = 0; l < m_list.size(); ++l) {
      std::vector<std::size_t> theirs;
      for (std::size_t s = 0; s < m_scan.size(); ++s) {
        const bool fits = IsFree(l, s) && !m_list[l].keys[tier].empty() &&
                          m_list[l].keys[tier] == m_scan[s].keys[tier];
        if (fits && same(m_list[l], m_scan[s])) theirs.push_back(s);
      }
      if (theirs.size() != 1) continue;
      std::size_t ours = 0;
      for (std::size_t other = 0; other < m_list.size(); ++other) {
        if (IsFree(other, theirs[0]) && m_list[other].keys[tier] == m_scan[theirs[0]].keys[tier] &&
            same(m_list[other], m_scan[theirs[0]])) {
          ++ours;
        }
      }
      if (ours != 1) continue;
      Take(l, theirs[0]);
      isAny = true;
    }
    return isAny;
  }

  void RunTier(std::size_t tier) {
    const auto isSameSite = [](const Plain& a, const Plain& b) {
      return a.site != 0 && a.site == b.site;
    };
    const auto isSameName = [](const Plain& a, const Plain& b) {
      return !a.name.empty() && a.name == b.name;
    };
    for (bool isAny = true; isAny;) {
      isAny = PairLoneTwo(tier, [&](const Plain& a, const Plain& b) {
        return isSameSite(a, b) && isSameName(a, b);
      });
      isAny |= PairLoneTwo(tier, isSameSite);
      isAny |= PairLoneTwo(tier, isSameName);
      isAny |= PairLoneTwo(tier, [](const Plain&, const Plain&) { return true; });
    }
    std::set<std::size_t> left;
    std::set<std::size_t> right;
    for (std::size_t l = 0; l < m_list.size(); ++l) {
      for (std::size_t s = 0; s < m_scan.size(); ++s) {
        if (!IsFree(l, s) || m_list[l].keys[tier].empty()) continue;
        if (m_list[l].keys[tier] != m_scan[s].keys[tier]) continue;
        left.insert(l);
        right.insert(s);
      }
    }
    ambiguous.insert(left.begin(), left.end());
    m_candidates.insert(right.begin(), right.end());
  }

  std::vector<Plain> m_list;
  std::vector<Plain> m_scan;
  std::uint32_t m_reach;
  std::set<std::size_t> m_taken;
  std::set<std::size_t> m_candidates;
};

/// Services that are identified, each once: copies and twins are told by tests of their own.
std::vector<Channel> EachOnce(const std::vector<Channel>& channels, InputSignalType signal) {
  std::set<std::pair<std::vector<std::uint32_t>, std::uint32_t>> seen;
  std::vector<Channel> once;
  for (const Channel& channel : channels) {
    const Plain plain = PlainOf(channel, signal);
    if (plain.identity.empty() || !seen.emplace(plain.identity, plain.site).second) continue;
    once.push_back(channel);
  }
  return once;
}

class MergeModel : public testing::TestWithParam<InputSignalType> {};

}  // namespace

TEST_P(MergeModel, AgreesOnWhoIsWho) {
  RandomWorlds worlds(GetParam(), 3);
  const std::uint32_t reach = GetParam() == InputSignalFMRadio ? 50 : 0;
  std::size_t matched = 0;
  for (int i = 0; i < 8 * kMergeCases && !HasFailure(); ++i) {
    MergeWorld world = worlds.Next();
    world.base.reset();
    world.policy = {};
    world.policy.scope = merge::Scope::Full;
    world.list.channels = EachOnce(world.list.channels, GetParam());
    world.scan.channels = EachOnce(world.scan.channels, GetParam());
    std::vector<Plain> list;
    std::vector<Plain> scan;
    for (const Channel& channel : world.list.channels) list.push_back(PlainOf(channel, GetParam()));
    for (const Channel& channel : world.scan.channels) scan.push_back(PlainOf(channel, GetParam()));
    PlainModel model(list, scan, reach);
    model.Run();
    std::map<std::size_t, std::size_t> pairs;
    std::set<std::size_t> ambiguous;
    const merge::MergePlan plan = world.Plan();
    for (const merge::Change& change : plan.changes) {
      if (!change.inList) continue;
      if (change.code == merge::Code::Ambiguous) {
        ambiguous.insert(*change.inList);
      } else if (!change.inScan.empty()) {
        pairs[*change.inList] = change.inScan.front();
      }
    }
    EXPECT_EQ(model.pairs, pairs) << "case " << i << ": " << CodesIn(plan);
    EXPECT_EQ(model.ambiguous, ambiguous) << "case " << i;
    matched += pairs.size();
  }
  EXPECT_LT(std::size_t{kMergeCases}, matched);
}

INSTANTIATE_TEST_SUITE_P(Types, MergeModel,
                         testing::Values(InputSignalATSCAntenna, InputSignalATSCCable,
                                         InputSignalFMRadio));

}  // namespace zortunedex::kit

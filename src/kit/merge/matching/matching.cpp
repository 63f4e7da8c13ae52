#include "kit/merge/matching/matching.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>

#include "kit/merge/matching/nearest.h"
#include "kit/merge/matching/several.h"
#include "kit/merge/matching/tiers.h"

namespace zortunedex::kit::merge {
namespace {

/// A match takes a service out of the way of others; more than two or three rounds do not occur.
constexpr int kMostRounds = 8;

constexpr std::size_t kMostKeyParts = 5;
using TierKey = std::array<std::uint32_t, kMostKeyParts>;

/// One look at a tier: nodes of either side with exactly these parts unknown. Keys are compared
/// without what is unknown on one side, and with the left ones' positions moved by `offset`.
struct Pass {
  std::uint32_t leftUnknown = 0;
  std::uint32_t rightUnknown = 0;
  bool isPlain = true;  ///< whatever is unknown: 0 equals 0
  std::int32_t offset = 0;
};

struct KeyedNode {
  TierKey key;
  bool isRight;
  std::size_t node;
  bool operator<(const KeyedNode& other) const {
    return std::tie(key, isRight, node) < std::tie(other.key, other.isRight, other.node);
  }
};

class Matcher {
 public:
  Matcher(const Nodes& left, const Nodes& right, InputSignalType signal)
      : m_left(left), m_right(right), m_signal(signal), m_recognition(RecognitionOf(signal)) {
    m_matching.rightOf.assign(left.Count(), kNone);
    m_matching.ambiguityOfLeft.assign(left.Count(), kNone);
    m_matching.leftOf.assign(right.Count(), kNone);
    m_matching.ambiguityOfRight.assign(right.Count(), kNone);
  }

  Matching Run(const Hints& hints) {
    for (const auto& [left, right] : hints) {
      if (m_matching.IsOpenLeft(left) && m_matching.IsOpenRight(right)) {
        m_matching.Pair(left, right);
      }
    }
    PairEqual();
    for (int round = 0; round < kMostRounds; ++round) {
      const std::size_t before = OpenCount();
      for (const Tier& tier : m_recognition.tiers) RunTier(tier);
      if (OpenCount() == before) break;
    }
    return std::move(m_matching);
  }

 private:
  std::size_t OpenCount() const {
    std::size_t count = 0;
    for (std::size_t i = 0; i < m_left.Count(); ++i) count += m_matching.IsOpenLeft(i) ? 1 : 0;
    return count;
  }

  /// What is the same in everything, then what has the same identity in the same place.
  void PairEqual() {
    PairBy([](const Service& service) { return service; });
    PairBy([this](const Service& service) { return IdentityKey(service, m_signal); });
  }

  template <typename KeyOfService>
  void PairBy(KeyOfService keyOf) {
    std::map<Service, std::size_t> known;
    for (std::size_t i = 0; i < m_right.Count(); ++i) {
      for (const std::size_t place : m_right.members[i]) {
        known.try_emplace(keyOf(m_right.ofPlaces[place]), i);
      }
    }
    for (std::size_t i = 0; i < m_left.Count(); ++i) {
      for (const std::size_t place : m_left.members[i]) {
        const auto found = known.find(keyOf(m_left.ofPlaces[place]));
        if (found == known.end()) continue;
        if (m_matching.IsOpenLeft(i) && m_matching.IsOpenRight(found->second)) {
          m_matching.Pair(i, found->second);
        }
      }
    }
  }

  void RunTier(const Tier& tier) {
    RunOffsets(tier, {});
    for (const std::uint32_t mask : UnknownOf(tier, m_left)) {
      RunOffsets(tier, {mask, 0, false});
    }
    for (const std::uint32_t mask : UnknownOf(tier, m_right)) {
      RunOffsets(tier, {0, mask, false});
    }
  }

  static std::size_t PlaceOfPosition(const Tier& tier) {
    std::size_t i = 0;
    while (i < tier.key.size() && tier.key[i].need != Need::Near) ++i;
    return i;
  }

  /// The nearest positions first.
  void RunOffsets(const Tier& tier, Pass pass) {
    RunPass(tier, pass);
    const std::size_t position = PlaceOfPosition(tier);
    if (position == tier.key.size()) return;
    if (((pass.leftUnknown | pass.rightUnknown) >> position & 1U) != 0) return;
    for (std::int32_t offset = 1; offset <= std::int32_t{kNearPosition}; ++offset) {
      for (const std::int32_t signedOffset : {-offset, offset}) {
        pass.offset = signedOffset;
        RunPass(tier, pass);
      }
    }
  }

  /// The parts of a key that a node leaves open; nothing where the tier does not take it.
  std::optional<std::uint32_t> UnknownIn(const Tier& tier, const Service& service) const {
    if (tier.site == SiteUse::Known && service[m_recognition.site] == 0) return std::nullopt;
    std::uint32_t mask = 0;
    for (std::size_t i = 0; i < tier.key.size(); ++i) {
      if (service[tier.key[i].part] != 0 || tier.key[i].need == Need::Equal) continue;
      if (tier.key[i].need == Need::Known) return std::nullopt;
      mask |= 1U << i;
    }
    return mask;
  }

  std::set<std::uint32_t> UnknownOf(const Tier& tier, const Nodes& nodes) const {
    std::set<std::uint32_t> masks;
    for (const Service& service : nodes.services) {
      const auto mask = UnknownIn(tier, service);
      if (mask && *mask != 0) masks.insert(*mask);
    }
    return masks;
  }

  std::optional<TierKey> KeyOf(const Tier& tier, const Pass& pass, const Service& service,
                               bool isRight) const {
    const auto unknown = UnknownIn(tier, service);
    if (!unknown) return std::nullopt;
    if (!pass.isPlain && *unknown != (isRight ? pass.rightUnknown : pass.leftUnknown)) {
      return std::nullopt;
    }
    TierKey key{};
    for (std::size_t i = 0; i < tier.key.size(); ++i) {
      if (((pass.leftUnknown | pass.rightUnknown) >> i & 1U) != 0) continue;
      key[i] = service[tier.key[i].part];
      if (tier.key[i].need != Need::Near || pass.offset == 0) continue;
      if (key[i] == 0) return std::nullopt;
      if (!isRight) key[i] += static_cast<std::uint32_t>(pass.offset);
    }
    return key;
  }

  void Collect(const Tier& tier, const Pass& pass, bool isRight, std::vector<KeyedNode>& keyed,
               bool& isAnyOpen) const {
    const Nodes& nodes = isRight ? m_right : m_left;
    for (std::size_t i = 0; i < nodes.Count(); ++i) {
      const bool isOpen = isRight ? m_matching.IsOpenRight(i) : m_matching.IsOpenLeft(i);
      // Matched nodes of the right count where a key has to be unique.
      const bool counts = isRight ? tier.site == SiteUse::IfTwice : m_matching.rightOf[i] == kNone;
      if (!isOpen && !counts) continue;
      const auto key = KeyOf(tier, pass, nodes.services[i], isRight);
      if (!key) continue;
      keyed.push_back({*key, isRight, i});
      isAnyOpen = isAnyOpen || isOpen;
    }
  }

  void RunPass(const Tier& tier, const Pass& pass) {
    std::vector<KeyedNode> keyed;
    bool isLeftOpen = false;
    Collect(tier, pass, false, keyed, isLeftOpen);
    if (!isLeftOpen) return;
    bool isRightOpen = false;
    Collect(tier, pass, true, keyed, isRightOpen);
    if (!isRightOpen) return;
    std::sort(keyed.begin(), keyed.end());
    for (std::size_t first = 0; first < keyed.size();) {
      Bucket bucket;
      std::size_t i = first;
      for (; i < keyed.size() && keyed[i].key == keyed[first].key; ++i) {
        (keyed[i].isRight ? bucket.right : bucket.left).push_back(keyed[i].node);
      }
      first = i;
      if (!bucket.IsOneSided()) Resolve(tier, pass, std::move(bucket));
    }
  }

  void Resolve(const Tier& tier, const Pass& pass, Bucket bucket) {
    const bool isUnique = bucket.left.size() == 1 && bucket.right.size() == 1;
    KeepOpen(bucket, m_matching);
    if (bucket.IsOneSided()) return;
    if (tier.site == SiteUse::Hint) return Several(std::move(bucket));
    const bool isSiteRequired = tier.site != SiteUse::IfTwice || HasWeak(bucket);
    PairNearest(bucket);
    if (bucket.IsOneSided()) return;
    if (!isSiteRequired && !pass.isPlain) return Several(std::move(bucket));
    if (!isSiteRequired && isUnique) {
      return m_matching.Pair(bucket.left.front(), bucket.right.front());
    }
    ResolveUnknownSites(bucket);
  }

  bool HasWeak(const Bucket& bucket) const {
    const auto isWeak = [this](const Nodes& side) {
      return [this, &side](std::size_t node) { return IsWeak(side.services[node], m_signal); };
    };
    return std::ranges::any_of(bucket.left, isWeak(m_left)) ||
           std::ranges::any_of(bucket.right, isWeak(m_right));
  }

  void Several(Bucket bucket) {
    ResolveSeveral(std::move(bucket), m_left, m_right, m_signal, m_matching);
  }

  /// Those on the same line first, then those that do not know theirs.
  void PairNearest(Bucket& bucket) {
    std::map<std::uint32_t, Bucket> lines;
    for (const std::size_t node : bucket.left) lines[SiteOfLeft(node).line].left.push_back(node);
    for (const std::size_t node : bucket.right) {
      lines[SiteOfRight(node).line].right.push_back(node);
    }
    for (const auto& [line, nodes] : lines) PairOnLine(nodes);
    KeepOpen(bucket, m_matching);
    if (lines.size() < 2 || !lines.contains(0)) return;
    KeepOpen(lines[0], m_matching);
    PairOnLine({lines[0].left, bucket.right});
    KeepOpen(bucket, m_matching);
    KeepOpen(lines[0], m_matching);
    PairOnLine({bucket.left, lines[0].right});
    KeepOpen(bucket, m_matching);
  }

  Site SiteOfLeft(std::size_t node) const { return SiteOf(m_left.services[node], m_recognition); }
  Site SiteOfRight(std::size_t node) const { return SiteOf(m_right.services[node], m_recognition); }

  void PairOnLine(const Bucket& bucket) {
    std::vector<Point> points;
    for (const std::size_t node : bucket.left) {
      const std::uint32_t value = SiteOfLeft(node).value;
      if (value != 0) points.push_back({value, node, true});
    }
    for (const std::size_t node : bucket.right) {
      const std::uint32_t value = SiteOfRight(node).value;
      if (value != 0) points.push_back({value, node, false});
    }
    for (const auto& [left, right] : NearestPairs(std::move(points), m_recognition.tolerance)) {
      m_matching.Pair(left, right);
    }
  }

  /// A place that is not known fits any.
  void ResolveUnknownSites(Bucket& bucket) {
    Bucket unknownLeft = bucket;
    std::erase_if(unknownLeft.left,
                  [this](std::size_t node) { return SiteOfLeft(node).value != 0; });
    if (!unknownLeft.IsOneSided()) Several(std::move(unknownLeft));
    KeepOpen(bucket, m_matching);
    std::erase_if(bucket.right, [this](std::size_t node) { return SiteOfRight(node).value != 0; });
    if (!bucket.IsOneSided()) Several(std::move(bucket));
  }

  const Nodes& m_left;
  const Nodes& m_right;
  InputSignalType m_signal;
  const Recognition& m_recognition;
  Matching m_matching;
};

}  // namespace

Matching MatchNodes(const Nodes& left, const Nodes& right, InputSignalType signal,
                    const Hints& hints) {
  return Matcher(left, right, signal).Run(hints);
}

}  // namespace zortunedex::kit::merge

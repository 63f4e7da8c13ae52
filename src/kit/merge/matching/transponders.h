#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <utility>

#include "kit/merge/matching/tiers.h"

namespace zortunedex::kit::merge {

/// The transponders of a table, each with the last place that stands on it.
class Transponders {
 public:
  explicit Transponders(InputSignalType signal) : m_recognition(RecognitionOf(signal)) {}

  /// Places ascend. A service whose place on the air is not known has no transponder.
  void Add(const Service& service, std::size_t place);

  /// Last place on the transponder that is nearest to the service's; nothing where none is within
  /// reach. A position or polarisation that is not known fits any.
  std::optional<std::size_t> LastOf(const Service& service) const;
  bool Has(const Service& service) const { return LastOf(service).has_value(); }

 private:
  struct Found {
    std::uint32_t distance;
    std::size_t place;
  };
  /// Position and polarisation, or kAll.
  using Line = std::pair<std::int64_t, std::int64_t>;
  static constexpr std::int64_t kAll = -1;
  using Sites = std::map<std::uint32_t, std::size_t>;

  void Look(const Line& line, std::uint32_t value, std::optional<Found>& best) const;

  const Recognition& m_recognition;
  std::map<Line, Sites> m_lines;
};

}  // namespace zortunedex::kit::merge

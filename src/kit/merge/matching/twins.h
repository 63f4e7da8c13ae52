#pragma once

#include <cstddef>
#include <map>
#include <optional>

#include "kit/merge/matching/tiers.h"

namespace zortunedex::kit::merge {

/// The services of a scan that count, to find others that are one of them again.
class Twins {
 public:
  explicit Twins(InputSignalType signal) : m_signal(signal), m_recognition(RecognitionOf(signal)) {}

  void Add(const Service& service, std::size_t node);
  /// The node that has the same identity within reach.
  std::optional<std::size_t> Find(const Service& service) const;

 private:
  Service KeyOf(const Service& service) const;

  InputSignalType m_signal;
  const Recognition& m_recognition;
  std::map<Service, std::map<std::uint32_t, std::size_t>> m_known;
};

}  // namespace zortunedex::kit::merge

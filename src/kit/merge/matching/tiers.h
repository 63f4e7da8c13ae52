// By what a service is recognised, from the surest to the least sure.
#pragma once

#include <cstdint>
#include <span>

#include "kit/merge/matching/service.h"

namespace zortunedex::kit::merge {

/// How a part of a key is compared.
enum class Need : std::uint8_t {
  Equal,
  Known,  ///< equal, and not 0
  Open,   ///< equal, or 0 on one side
  Near,   ///< as Open, within kNearPosition
};
inline constexpr std::uint32_t kNearPosition = 3;  ///< tenths of a degree

struct KeyPart {
  Part part;
  Need need;
};

/// What the place on the air has to do with a tier.
enum class SiteUse : std::uint8_t {
  Hint,      ///< tells apart several that fit
  Required,  ///< has to fit
  Known,     ///< has to fit, and to be known on both sides
  IfTwice,   ///< has to fit where the key is not unique, or is a weak one
};

struct Tier {
  std::span<const KeyPart> key;
  SiteUse site;
};

/// Where a service is on the air: a frequency, or an RF channel. 0 is not known.
struct Site {
  std::uint32_t value = 0;
  std::uint32_t line = 0;  ///< polarisation
};

struct Recognition {
  std::span<const Tier> tiers;  ///< the first ones make the identity
  Part site;                    ///< Frequency or Rf
  std::uint32_t tolerance;      ///< of sites
  bool hasTransponders;
};

const Recognition& RecognitionOf(InputSignalType signal);

Site SiteOf(const Service& service, const Recognition& recognition);

/// True when both are known and beyond each other's reach.
bool AreApart(const Site& a, const Site& b, std::uint32_t tolerance);

/// Numbers that many satellite networks have, by accident or by default.
bool IsWeak(const Service& service, InputSignalType signal);

/// What two channels of a list have in common that are one service.
Service IdentityKey(const Service& service, InputSignalType signal);

/// True when a service says enough to be told from others.
bool IsIdentified(const Service& service, InputSignalType signal);

}  // namespace zortunedex::kit::merge

// What a channel is recognised by.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "kit/model/channel.h"

namespace zortunedex::kit::merge {

/// Equal texts have equal numbers; the empty one is 0. One for all services that are compared.
class Texts {
 public:
  std::uint32_t NumberOf(const WideText& text);

 private:
  std::map<WideText, std::uint32_t> m_numbers;
};

/// What identifies a service, in the order in which services are listed. What a signal type has
/// not, and what is not known, is 0.
enum class Part : std::uint8_t {
  Frequency,
  Polarisation,
  Rf,
  Position,  ///< tenths of a degree, negative in the west
  Network,
  Stream,
  Number,  ///< of the service
  Major,
  Minor,
  Program,
  Kind,  ///< service type as broadcast
  Cni0,
  Cni1,
  Label,  ///< of the ensemble
  Name,   ///< by the rule of the policy for names
};
inline constexpr std::size_t kParts = 15;

struct Service {
  std::array<std::uint32_t, kParts> parts{};

  std::uint32_t& operator[](Part part) { return parts[static_cast<std::size_t>(part)]; }
  std::uint32_t operator[](Part part) const { return parts[static_cast<std::size_t>(part)]; }
  bool operator==(const Service&) const = default;
  bool operator<(const Service& other) const { return parts < other.parts; }
};

/// How names and labels become numbers.
struct Reading {
  InputSignalType signal = InputSignalUnknown;
  bool looseNames = false;
};

Service ReadService(const Channel& channel, const Reading& reading, Texts& texts);

/// The services of a table's channels, place by place.
std::vector<Service> ReadServices(const std::vector<Channel>& channels, const Reading& reading,
                                  Texts& texts);

/// Takes what is not 0 in `known` over what stands there.
Service Overlaid(Service service, const Service& known);

/// "S19.2E-1-1011-11110", "A33-2.1", "FM-98500".
std::string IdentityText(const Service& service, InputSignalType signal);

}  // namespace zortunedex::kit::merge

// A service as the channel files of other programs have it: what at least two of them can hold.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/interfaces.h"

namespace zortunedex::kit::interchange {

/// One elementary stream.
struct Stream {
  std::uint32_t type = 0;  ///< as in a programme map; 0: not known
  std::uint32_t pid = 0;
  std::string language;  ///< of ISO 639-2, in small letters; empty: none

  bool operator==(const Stream&) const = default;
};

enum class StreamKind { Video, Audio, Teletext, Subtitle, Dsmcc, MhpAit };
inline constexpr std::size_t kStreamKinds = 6;

enum class System { Unknown, First, Second };  ///< DVB-S or DVB-S2, DVB-T or DVB-T2

/// How a service is tuned to. The "not set" of the enumerations is what a receiver has to find out.
struct Tuning {
  std::uint64_t frequency = 0;  ///< kHz
  Polarisation polarisation = BDA_POLARISATION_NOT_SET;
  std::optional<std::int32_t> position;  ///< tenths of a degree, negative in the west
  std::uint64_t symbolRate = 0;          ///< thousands a second
  BinaryConvolutionCodeRate fec = BDA_BCC_RATE_NOT_SET;
  System system = System::Unknown;
  ModulationType modulation = BDA_MOD_NOT_SET;
  SpectralInversion inversion = BDA_SPECTRAL_INVERSION_NOT_SET;
  std::uint32_t rollOff = 0;    ///< of the second generation, in percent; 0: not known
  std::optional<bool> pilot;    ///< of the second generation
  std::uint32_t bandwidth = 0;  ///< MHz; 0: not known
  std::uint32_t rfChannel = 0;  ///< 0: not known
  std::uint32_t dish = 0;       ///< 1 to 4; 0: not known
};

/// Lower numbers are flags and numbers of devices.
inline constexpr std::uint32_t kLowestCaId = 0x100;

/// Identifiers are 0 where they are not known.
struct Service {
  InputSignalType delivery = InputSignalUnknown;
  std::uint32_t index = 0;  ///< 0: the place in the file says it all
  bool favorite = false;
  std::string name;      ///< UTF-8: the one of the two names that is carried
  std::string userName;  ///< the name that the user gave; empty: none of his own
  std::string provider;  ///< or network

  Tuning tuning;

  std::uint32_t serviceType = 0;      ///< as broadcast; ATSC's own for ATSC
  std::uint32_t serviceId = 0;        ///< programme number
  std::uint32_t transportStream = 0;  ///< TSID
  std::uint32_t network = 0;          ///< the original network; for one-segment the network
  std::uint32_t major = 0;            ///< ATSC
  std::uint32_t minor = 0;

  std::uint32_t pcrPid = 0;
  std::array<std::vector<Stream>, kStreamKinds> streams;
  bool scrambled = false;
  std::vector<std::uint16_t> caIds;  ///< of the systems that it is scrambled with

  /// The streams of a kind, in the order of the file.
  std::vector<Stream>& Of(StreamKind kind) { return streams[static_cast<std::size_t>(kind)]; }
  const std::vector<Stream>& Of(StreamKind kind) const {
    return streams[static_cast<std::size_t>(kind)];
  }
};

}  // namespace zortunedex::kit::interchange

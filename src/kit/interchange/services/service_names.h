// Under which names the channel file keeps what services have.
#pragma once

#include "kit/interchange/service.h"

namespace zortunedex::kit::interchange {

struct ServiceNames {
  const char* service;
  const char* network;
  const char* frequency;
};

inline constexpr ServiceNames NamesOf(InputSignalType signal) {
  switch (signal) {
    case InputSignalATSCAntenna:
    case InputSignalATSCCable:
      return {"programNumber", "ONID", "freq"};
    case InputSignalISDBTerrestrialOneSeg:
      return {"ServiceID", "NetworkID", "Frequency"};
    default:
      return {"serviceID", "ONID", "freq"};
  }
}

/// List of the streams of a kind.
inline constexpr const char* ListName(std::size_t kind) {
  constexpr const char* kNames[kStreamKinds] = {"VideoStream",    "AudioStream", "TeletextStream",
                                                "SubtitleStream", "DsmccStream", "MhpAitStream"};
  return kNames[kind];
}

}  // namespace zortunedex::kit::interchange

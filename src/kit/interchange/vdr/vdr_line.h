// One line of a channels.conf.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "kit/interchange/loss.h"
#include "kit/interchange/service.h"
#include "kit/interchange/text_lines.h"

namespace zortunedex::kit::interchange::vdr {

/// The fields of a line, in their order. Behind the service the program does without.
enum Part : std::size_t {
  kName,
  kFrequency,
  kParameters,
  kSource,
  kSymbolRate,
  kVideo,
  kAudio,
  kText,
  kCa,
  kService,
  kNetwork,
  kStream,
  kRadio,
  kParts
};
constexpr std::size_t kFewestParts = 10;

using Parts = std::array<std::string_view, kParts>;

struct Line {
  std::size_t number = 0;
  Parts parts;
  std::size_t count = 0;
  std::string_view rest;  ///< behind the fields
};

/// Cuts a line at its colons.
Line LineOf(const TextLine& text);

/// A line that is a channel.
struct TakenLine {
  Service service;
  Place place;
  std::uint32_t radioId = 0;
};
/// Nothing for one that is not understood. Adds a loss for everything that a service has no place
/// for or that is assumed.
std::optional<TakenLine> TakeLine(const Line& line, InputSignalType signal, Losses& losses);

/// Text that is no UTF-8 is taken for Latin-1, which older files are in.
std::string Utf8Of(std::string_view text);
/// A number as reports show it.
FieldValue Shown(std::uint64_t number);

}  // namespace zortunedex::kit::interchange::vdr

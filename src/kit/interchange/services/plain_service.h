// Services for formats without languages, and what their texts may hold.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "kit/interchange/format.h"
#include "kit/interchange/service.h"

namespace zortunedex::kit::interchange {

/// FromChannel for a format that drops languages: that one would have been assumed says nothing.
Service FromChannelWithoutLanguages(const Channel& channel, const ExportRequest& request,
                                    Losses& losses);

/// What the streams tell: television with pictures, radio with sound alone, both one higher for
/// ATSC. Without either it stays unknown, and where channels of the type have none.
void AssumeServiceType(const Place& place, Service& service, Losses& losses);

/// Well-formed UTF-8 in one line: U+FFFD for bytes that are none, a blank for each control
/// character.
std::string PlainText(std::string_view text);

/// As much of a line as belongs into a report.
std::string Excerpt(std::string_view line);

/// The number where the format has room for it, else 0.
inline std::uint64_t Within(std::uint64_t value, std::uint64_t highest) {
  return value <= highest ? value : 0;
}

/// Highest PID of a transport stream.
inline constexpr std::uint32_t kLastPid = 0x1FFF;

}  // namespace zortunedex::kit::interchange

// How channels.conf says what a service has, in both directions.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "kit/interchange/service.h"

namespace zortunedex::kit::interchange::vdr {

/// "automatic" of every parameter.
inline constexpr std::uint32_t kAutomatic = 999;
/// The program keeps its numbers in 32 bits with a sign.
inline constexpr std::uint64_t kHighestNumber = INT32_MAX;
/// East and west, in tenths of a degree.
inline constexpr std::uint32_t kFarthest = 1'800;
inline constexpr std::uint32_t kHighestPid = 0x1FFF;

/// Stream types behind the `@` of what stands with the Dolby streams: a descriptor's tag stands for
/// private data, ATSC has a type of its own.
inline constexpr std::uint32_t kPrivateData = 6;
inline constexpr std::uint32_t kAc3Tag = 106;
inline constexpr std::uint32_t kAtscAc3 = 129;
/// What the program takes a stream without a type for.
inline constexpr std::uint32_t kUsualVideo = 2;
inline constexpr std::uint32_t kUsualAudio = 4;

/// 23 for 2/3, 999 for what has no number.
std::uint32_t FecNumber(BinaryConvolutionCodeRate fec);
/// NotSet for 999, nothing for what is no number of a rate.
std::optional<BinaryConvolutionCodeRate> FecOf(std::uint32_t number);
/// 2 for QPSK; nothing for what has no number.
std::optional<std::uint32_t> ModulationNumber(ModulationType modulation);
/// NotSet for 999, nothing for what is no number of a modulation.
std::optional<ModulationType> ModulationOf(std::uint32_t number);
/// 0 for a polarisation without a letter.
char PolarisationLetter(Polarisation polarisation);
Polarisation PolarisationOf(char letter);

/// "S19.2E", "S30.0W", "S" for 0, "T", "A".
std::string SourceText(const Service& service);
/// Whether channels of the type come from a source: "S19.2E", "T", "A". Over the air and on cable
/// ATSC has one source and modulations of its own.
bool IsSourceOf(std::string_view source, std::string_view parameters, InputSignalType signal);
/// The position behind an S; nothing for what is none.
std::optional<std::int32_t> PositionOf(std::string_view text);

/// Frequency of the field in kHz, which is in MHz for satellites, else in MHz, kHz or Hz.
std::uint64_t FrequencyOf(std::uint64_t field, InputSignalType signal);
/// Nothing for a frequency that the field cannot say.
std::optional<std::uint64_t> FrequencyField(std::uint64_t kilohertz, InputSignalType signal);

/// Source, network, transport stream, service and radio id: the program keeps one channel of each.
/// Where network and transport stream are 0 the transponder takes their place. Empty for a service
/// that it refuses.
std::string IdentityOf(const Service& service, std::uint32_t radioId);

}  // namespace zortunedex::kit::interchange::vdr

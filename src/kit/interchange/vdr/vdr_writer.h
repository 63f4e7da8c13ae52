// Channels as a channels.conf, the form of the Video Disk Recorder, which scanners write, too.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange::vdr {

inline constexpr InputSignalType kSignals[] = {InputSignalATSCAntenna, InputSignalATSCCable,
                                               InputSignalDVBSatellite, InputSignalDVBTerrestrial};

/// What the form has a field for, but not for every value.
inline constexpr FieldCode kCodes[] = {
    {"innerFECRate", Code::NumberRounded},
    {"modulation", Code::SystemAssumed},
    {"serviceType", Code::TypeAssumed},
    {"CA", Code::CaFlagCleared},
    {"PcrPID", Code::NoPlace},
    {"VideoStream.type", Code::TypeAssumed},
    {"TeletextStream.type", Code::TypeAssumed},
    {"SubtitleStream.type", Code::TypeAssumed},
    // Dolby streams stand behind the others.
    {"AudioStream.pid", Code::MarkDropped},
};

/// Every line is as the program itself writes it. Leaves out what it would not take: channels
/// without an identity (L404), a second one of an identity (L403), numbers beyond its fields
/// (L503).
void Write(const ExportRequest& request, Output& output, Losses& losses);

}  // namespace zortunedex::kit::interchange::vdr

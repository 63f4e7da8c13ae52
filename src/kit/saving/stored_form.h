// What the channel file can hold, and what comes back from it.
#pragma once

#include <optional>
#include <string>

#include "kit/model/channel.h"
#include "kit/model/narrow_text.h"

namespace zortunedex::kit {

/// The channel as it reads back after a save. Differs from the channel where the file does not keep
/// a value: bytes that no attribute names, the component index and the streams of T-DMB, languages
/// beyond four bits a letter, satellite parameters without a word, a display name that is empty.
Channel AsStored(const Channel& channel, InputSignalType signal, const NarrowText& narrow,
                 IChannelInfoMgr* list);

/// Raises a Failure that names the first text of the channel that the file would not give back: one
/// that is outside the code page, too long, or not writable in the form. The pre-formatted form
/// writes values as they stand.
void RequireStorable(const Channel& channel, InputSignalType signal, const NarrowText& narrow,
                     bool preFormatted);

/// Raises a Failure that begins with `what` for a text that the form cannot keep.
void RequireWritable(WideView text, bool preFormatted, const std::string& what);

/// The first character of a text that the form cannot keep, for a message; nothing when there is
/// none.
std::optional<std::string> Unwritable(WideView text, bool preFormatted);

}  // namespace zortunedex::kit

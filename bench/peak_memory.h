// Peak memory of one thing, measured in a process of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "bench/workspace.h"

namespace bench {

/// Starts this program again to do one of the works below with the files of a
/// directory, which hold `count` channels or transponders. Answers by how many bytes
/// its resident memory was at most larger than before the work; none when that failed.
/// "load": a host's whole way to a list of channels. "sax", "tree", "dvb": the same files read and
/// parsed by libxml2's SAX2 parser, into libxml2's tree, and by libdvbv5. "save",
/// "save-preformatted": a list filled channel by channel, then saved. "catalogue", "catalogue-sax":
/// the catalogue of the directory loaded by a host, and its file parsed. "open-save",
/// "catalogue-open": what the tool's commands are measured against; see tool_bench.cpp.
std::optional<std::uint64_t> MeasurePeak(const std::string& work, UINT count,
                                         const std::filesystem::path& directory);

/// The part of the other process: does the work and writes the number to standard output.
void RunForPeak(const std::string& work, const Workspace& files);

}  // namespace bench

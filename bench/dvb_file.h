// libdvbv5's channel files, for comparison.
#pragma once

#include <filesystem>
#include <memory>

#include "core/interfaces.h"

struct dvb_file;

namespace bench {

struct DvbFileEnd {
  void operator()(dvb_file* file) const;
};
using DvbFile = std::unique_ptr<dvb_file, DvbFileEnd>;

/// The same channels as in MakeChannelFile: names, identifiers, streams, tuning.
DvbFile MakeDvbFile(UINT count);

DvbFile ReadDvbFile(const std::filesystem::path& path);

/// As the library does it: what is written is not made durable.
void WriteDvbFile(dvb_file& file, const std::filesystem::path& path);

/// How many channels it holds.
UINT CountDvbChannels(const dvb_file& file);

}  // namespace bench

#include "kit/interchange/list/formats.h"

#include <algorithm>

#include "kit/interchange/csv/csv_reader.h"
#include "kit/interchange/csv/csv_writer.h"
#include "kit/interchange/json/json_reader.h"
#include "kit/interchange/json/json_writer.h"
#include "kit/interchange/vdr/vdr_reader.h"
#include "kit/interchange/vdr/vdr_writer.h"
#include "kit/text/signal_types.h"

namespace interchange {

namespace {

// Options that a format takes beyond those of all.
constexpr const char* kOfTables[] = {"--no-mark"};

}  // namespace

std::span<const Format> Formats() {
  static const Format kFormats[] = {
      {"csv",
       StorableSignalTypes(),
       StorableSignalTypes(),
       false,
       WriteCsv,
       ReadCsv,
       nullptr,
       {},
       kOfTables},
      {"json", StorableSignalTypes(), StorableSignalTypes(), false, WriteJson, ReadJson},
      {"vdr", vdr::kSignals, vdr::kSignals, false, vdr::Write, vdr::Read, nullptr, vdr::kCodes},
  };
  return kFormats;
}

const Format* FindFormat(std::string_view name) {
  const std::span<const Format> formats = Formats();
  const auto found = std::ranges::find(formats, name, &Format::name);
  return found == formats.end() ? nullptr : &*found;
}

}  // namespace interchange

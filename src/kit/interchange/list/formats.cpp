#include "kit/interchange/list/formats.h"

#include <algorithm>

#include "kit/interchange/csv/csv_reader.h"
#include "kit/interchange/csv/csv_writer.h"
#include "kit/interchange/dvbv5/dvbv5_reader.h"
#include "kit/interchange/dvbv5/dvbv5_words.h"
#include "kit/interchange/dvbv5/dvbv5_writer.h"
#include "kit/interchange/enigma2/enigma2_reader.h"
#include "kit/interchange/enigma2/enigma2_words.h"
#include "kit/interchange/enigma2/enigma2_writer.h"
#include "kit/interchange/json/json_reader.h"
#include "kit/interchange/json/json_writer.h"
#include "kit/interchange/m3u/m3u_reader.h"
#include "kit/interchange/m3u/m3u_writer.h"
#include "kit/interchange/vdr/vdr_reader.h"
#include "kit/interchange/vdr/vdr_writer.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit::interchange {

namespace {

// Options that a format takes beyond those of all.
constexpr const char* kOfTables[] = {"--no-mark"};
constexpr const char* kOfDvbv5[] = {"--names", "--tuning-from", "--bandwidth", "--position"};
constexpr const char* kOfEnigma2[] = {"--names", "--tuning-from", "--bandwidth"};
constexpr const char* kOfVdr[] = {"--names", "--tuning-from", "--bandwidth", "--position"};
constexpr const char* kOfPlaylists[] = {"--names", "--tuning-from", "--bandwidth",
                                        "--url",   "--target",      "--host"};

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
       kOfTables,
       false,
       LimitCsv},
      {"json", StorableSignalTypes(), StorableSignalTypes(), false, WriteJson, ReadJson},
      {"dvbv5", dvbv5::Signals(), dvbv5::Signals(), false, WriteDvbv5, ReadDvbv5, nullptr,
       Dvbv5Codes(), kOfDvbv5, true},
      {"vdr", vdr::kSignals, vdr::kSignals, false, vdr::Write, vdr::Read, nullptr, vdr::kCodes,
       kOfVdr},
      {"enigma2", enigma2::Signals(), enigma2::Signals(), true, WriteEnigma2, ReadEnigma2, nullptr,
       Enigma2Codes(), kOfEnigma2},
      {"m3u",
       StorableSignalTypes(),
       StorableSignalTypes(),
       false,
       m3u::Write,
       m3u::Read,
       m3u::ReadBack,
       {},
       kOfPlaylists,
       true},
  };
  return kFormats;
}

const Format* FindFormat(std::string_view name) {
  const std::span<const Format> formats = Formats();
  const auto found = std::ranges::find(formats, name, &Format::name);
  return found == formats.end() ? nullptr : &*found;
}

}  // namespace zortunedex::kit::interchange

// What libdvbv5 and its tools make of the files that are written for them, what is made of theirs,
// and the published tables of transponders.
//
// Linux only: the library runs there
#include <libdvbv5/dvb-file.h>
#include <libdvbv5/dvb-v5-std.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <sstream>

#include "kit/failure.h"
#include "kit/interchange/complete_report.h"
#include "kit/interchange/dvbv5/dvbv5_words.h"
#include "kit/interchange/services/station_values.h"
#include "kit/interchange/vdr_channels.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::Import;
using interchange::Loss;
using interchange::StationValues;

struct DvbFileFree {
  void operator()(dvb_file* file) const { dvb_file_free(file); }
};
using DvbFilePointer = std::unique_ptr<dvb_file, DvbFileFree>;

std::vector<const dvb_entry*> EntriesIn(const dvb_file& file) {
  std::vector<const dvb_entry*> entries;
  for (const dvb_entry* entry = file.first_entry; entry; entry = entry->next) {
    entries.push_back(entry);
  }
  return entries;
}

/// Value of a property; 0xDEAD where there is none.
std::uint32_t PropertyOf(const dvb_entry& entry, std::uint32_t command) {
  for (unsigned i = 0; i < entry.n_props; ++i) {
    if (entry.props[i].cmd == command) return entry.props[i].u.data;
  }
  return 0xDEAD;
}

std::vector<std::uint32_t> PidsOf(const StationValues& values, const char* list) {
  std::vector<std::uint32_t> pids;
  for (const auto& stream : values.Streams(list)) pids.push_back(stream.pid);
  return pids;
}

/// Holds an entry that the library read against the channel that it was written of.
void ExpectSame(const StationValues& values, const Channel& channel, InputSignalType signal,
                const dvb_entry& entry) {
  const bool isAtsc = signal == InputSignalATSCAntenna || signal == InputSignalATSCCable;
  const bool isSegment = signal == InputSignalISDBTerrestrialOneSeg;
  EXPECT_EQ(values.Number(isAtsc      ? "programNumber"
                          : isSegment ? "ServiceID"
                                      : "serviceID"),
            entry.service_id);
  EXPECT_EQ(values.Number(isSegment ? "NetworkID" : "ONID"), entry.network_id);
  EXPECT_EQ(isAtsc || isSegment ? 0 : channel.tsid, entry.transport_id);
  const std::string number = isAtsc ? std::to_string(values.Number("majorChannel")) + "." +
                                          std::to_string(values.Number("minorChannel"))
                                    : std::to_string(channel.index);
  EXPECT_EQ(number, entry.vchannel);
  EXPECT_EQ(PidsOf(values, "VideoStream"),
            std::vector<std::uint32_t>(entry.video_pid, entry.video_pid + entry.video_pid_len));
  EXPECT_EQ(PidsOf(values, "AudioStream"),
            std::vector<std::uint32_t>(entry.audio_pid, entry.audio_pid + entry.audio_pid_len));
  const std::uint32_t frequency = PropertyOf(entry, DTV_FREQUENCY);
  if (signal != InputSignalDVBSatellite) {
    if (isAtsc) return;
    EXPECT_EQ(channel.frequency, (frequency + 500) / 1'000);
    return;
  }
  EXPECT_EQ(channel.frequency, frequency);
  EXPECT_EQ(values.Number("symbolRate") * 1'000, PropertyOf(entry, DTV_SYMBOL_RATE));
  const bool isFirst = values.WordOf<ModulationType>("modulation") == BDA_MOD_QPSK;
  EXPECT_EQ(isFirst ? SYS_DVBS : SYS_DVBS2, PropertyOf(entry, DTV_DELIVERY_SYSTEM));
  EXPECT_EQ(isFirst ? QPSK : QAM_AUTO, PropertyOf(entry, DTV_MODULATION));
  const bool isHorizontal =
      values.WordOf<Polarisation>("polarisation") == BDA_POLARISATION_LINEAR_H;
  EXPECT_EQ(isHorizontal ? POLARIZATION_H : POLARIZATION_V, PropertyOf(entry, DTV_POLARIZATION));
  EXPECT_STREQ("EXTENDED", entry.lnb);
}

class Dvbv5Peer : public testing::Test {
 protected:
  void SetUp() override {
    if (std::system("command -v dvb-format-convert > /dev/null") != 0) {
      GTEST_SKIP() << "left out: dvb-tools is missing, scripts/setup --peers installs it";
    }
  }

  /// The file as the tool writes it again, in one of its formats.
  std::string Converted(const std::string& bytes, const char* format) const {
    m_folder.Write("in", bytes);
    const std::string line = "dvb-format-convert -I DVBV5 -O " + std::string(format) + " '" +
                             m_folder.File("in") + "' '" + m_folder.File("out") + "' > '" +
                             m_folder.File("messages") + "' 2>&1";
    EXPECT_EQ(0, std::system(line.c_str())) << m_folder.Read("messages");
    return m_folder.Read("out");
  }

  DvbFilePointer ReadByPeer(const std::string& bytes) const {
    m_folder.Write("list", bytes);
    return DvbFilePointer(dvb_read_file(m_folder.File("list").c_str()));
  }

  TempDir m_folder;
};

TEST_F(Dvbv5Peer, ReadsEveryChannelOfTheSamples) {
  std::size_t channels = 0;
  for (const file_scan::ChannelSet& set : SampleSets()) {
    if (!interchange::Holds(interchange::dvbv5::Signals(), set.signal)) continue;
    SCOPED_TRACE(SignalTypeName(set.signal));
    const Exchange exchange(set.country, set.signal);
    interchange::Export out = exchange.Out("dvbv5");
    const DvbFilePointer file = ReadByPeer(out.output.Bytes());
    ASSERT_NE(nullptr, file);
    const std::vector<const dvb_entry*> entries = EntriesIn(*file);
    ASSERT_EQ(exchange.Channels().size(), entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
      const Channel& channel = exchange.Channels()[i];
      SCOPED_TRACE(channel.index);
      ExpectSame({channel, set.signal, exchange.Narrow()}, channel, set.signal, *entries[i]);
      ++channels;
    }
  }
  // 58 of DVB-S, 20 of DVB-T, 19 and 10 of ATSC, 9 of one-segment.
  EXPECT_EQ(116U, channels);
}

TEST_F(Dvbv5Peer, WritesEveryChannelOfTheSamplesBack) {
  for (const file_scan::ChannelSet& set : SampleSets()) {
    if (!interchange::Holds(interchange::dvbv5::Signals(), set.signal)) continue;
    SCOPED_TRACE(SignalTypeName(set.signal));
    const Exchange exchange(set.country, set.signal);
    interchange::Export out = exchange.Out("dvbv5");
    const Import direct = exchange.In("dvbv5", out.output.Bytes());
    const Import converted = exchange.In("dvbv5", Converted(out.output.Bytes(), "DVBV5"));
    ASSERT_EQ(direct.table.channels.size(), converted.table.channels.size());
    // Of its lines PID_xx the tool keeps the last one of a channel.
    const std::set<std::string> lost = {"DsmccStream"};
    for (std::size_t i = 0; i < direct.table.channels.size(); ++i) {
      for (const std::string& field :
           FieldsThatDiffer(exchange, direct.table.channels[i], converted.table.channels[i])) {
        EXPECT_TRUE(lost.contains(field)) << field << " of channel " << i + 1;
      }
    }
  }
}

/// What both formats hold, frequencies in MHz: the tool cuts what is behind the point.
std::string SharedFields(const Exchange& exchange, const Channel& channel) {
  const StationValues values(channel, exchange.Signal(), exchange.Narrow());
  const bool isSatellite = exchange.Signal() == InputSignalDVBSatellite;
  std::string text = utf::FromWide(channel.name) + " " + std::to_string(channel.tsid) + " " +
                     std::to_string(channel.frequency / (isSatellite ? 1'000 : 1));
  for (const char* attribute :
       {"serviceID", "ONID", "symbolRate", "polarisation", "innerFECRate", "modulation"}) {
    text += " " + std::to_string(values.Number(attribute));
  }
  for (const char* list : {"VideoStream", "AudioStream"}) {
    for (const std::uint32_t pid : PidsOf(values, list)) text += " " + std::to_string(pid);
  }
  return text;
}

TEST_F(Dvbv5Peer, ConvertsToWhatTheRecorderReads) {
  for (const InputSignalType signal : {InputSignalDVBSatellite, InputSignalDVBTerrestrial}) {
    SCOPED_TRACE(SignalTypeName(signal));
    const Exchange exchange(49, signal);
    interchange::Export out = exchange.Out("dvbv5");
    const Import direct = exchange.In("dvbv5", out.output.Bytes());
    const Import converted = exchange.In("vdr", Converted(out.output.Bytes(), "VDR"));
    ASSERT_EQ(exchange.Channels().size(), direct.table.channels.size());
    ASSERT_EQ(direct.table.channels.size(), converted.table.channels.size());
    for (std::size_t i = 0; i < direct.table.channels.size(); ++i) {
      EXPECT_EQ(SharedFields(exchange, direct.table.channels[i]),
                SharedFields(exchange, converted.table.channels[i]));
    }
  }
}

template <typename T>
T* Allocated(std::size_t count) {
  return static_cast<T*>(std::calloc(count, sizeof(T)));
}

/// An entry of any values that the library can write.
dvb_entry* RandomEntry(Random& random, bool isSatellite) {
  dvb_entry* entry = Allocated<dvb_entry>(1);
  entry->channel = ::strdup(("Name " + std::to_string(random(1'000)) + " [x").c_str());
  entry->vchannel = ::strdup(std::to_string(1 + random(900)).c_str());
  entry->service_id = static_cast<std::uint16_t>(1 + random(65'535));
  entry->network_id = static_cast<std::uint16_t>(random(65'536));
  entry->transport_id = static_cast<std::uint16_t>(random(65'536));
  entry->sat_number = isSatellite ? static_cast<int>(random(4)) : -1;
  entry->video_pid_len = random(3);
  entry->video_pid = Allocated<std::uint16_t>(2);
  entry->audio_pid_len = random(4);
  entry->audio_pid = Allocated<std::uint16_t>(3);
  for (unsigned i = 0; i < entry->video_pid_len; ++i) {
    entry->video_pid[i] = static_cast<std::uint16_t>(16 + random(8'000));
  }
  for (unsigned i = 0; i < entry->audio_pid_len; ++i) {
    entry->audio_pid[i] = static_cast<std::uint16_t>(16 + random(8'000));
  }
  if (!isSatellite) {
    dvb_store_entry_prop(entry, DTV_DELIVERY_SYSTEM, random(2) == 0 ? SYS_DVBT : SYS_DVBT2);
    dvb_store_entry_prop(entry, DTV_FREQUENCY, (174'000 + random(700'000)) * 1'000);
    dvb_store_entry_prop(entry, DTV_MODULATION, random(2) == 0 ? QAM_64 : QAM_AUTO);
    dvb_store_entry_prop(entry, DTV_BANDWIDTH_HZ, (6 + random(3)) * 1'000'000);
    return entry;
  }
  entry->lnb = ::strdup(random(2) == 0 ? "EXTENDED" : "C-BAND");
  dvb_store_entry_prop(entry, DTV_DELIVERY_SYSTEM, SYS_DVBS);
  dvb_store_entry_prop(entry, DTV_FREQUENCY, 10'700'000 + random(2'000'000));
  dvb_store_entry_prop(entry, DTV_SYMBOL_RATE, (1'000 + random(40'000)) * 1'000);
  dvb_store_entry_prop(entry, DTV_POLARIZATION, POLARIZATION_H + random(4));
  constexpr std::uint32_t kRates[] = {FEC_1_2, FEC_2_3, FEC_3_4, FEC_5_6, FEC_7_8, FEC_AUTO};
  dvb_store_entry_prop(entry, DTV_INNER_FEC, kRates[random(6)]);
  dvb_store_entry_prop(entry, DTV_MODULATION, QPSK);
  dvb_store_entry_prop(entry, DTV_INVERSION, INVERSION_AUTO);
  return entry;
}

TEST_F(Dvbv5Peer, WritesWhatIsRead) {
  constexpr UINT kCount = 200;
  Random random(3);
  for (const InputSignalType signal : {InputSignalDVBSatellite, InputSignalDVBTerrestrial}) {
    SCOPED_TRACE(SignalTypeName(signal));
    const bool isSatellite = signal == InputSignalDVBSatellite;
    DvbFilePointer file(Allocated<dvb_file>(1));
    dvb_entry** next = &file->first_entry;
    for (UINT i = 0; i < kCount; ++i, next = &(*next)->next)
      *next = RandomEntry(random, isSatellite);
    file->n_entries = static_cast<int>(kCount);
    ASSERT_EQ(0, dvb_write_file(m_folder.File("random").c_str(), file.get()));
    Exchange exchange(999, signal);
    exchange.Context().dishes = {{1, 192}, {2, 130}, {3, -300}, {4, 282}};
    const Import in = exchange.In("dvbv5", m_folder.Read("random"));
    ASSERT_EQ(kCount, in.table.channels.size());
    EXPECT_FALSE(in.losses.Has(Code::LineNotUnderstood));
    EXPECT_FALSE(in.losses.Has(Code::KeyUnknown));
    EXPECT_FALSE(in.losses.Has(Code::ValueOutOfRange));
    const std::vector<const dvb_entry*> entries = EntriesIn(*file);
    for (std::size_t i = 0; i < kCount; ++i) {
      const Channel& channel = in.table.channels[i];
      const StationValues values(channel, signal, exchange.Narrow());
      EXPECT_EQ(entries[i]->channel, utf::FromWide(channel.name));
      EXPECT_EQ(entries[i]->service_id, values.Number("serviceID"));
      EXPECT_EQ(entries[i]->network_id, values.Number("ONID"));
      EXPECT_EQ(entries[i]->transport_id, channel.tsid);
      EXPECT_EQ(std::vector<std::uint32_t>(entries[i]->video_pid,
                                           entries[i]->video_pid + entries[i]->video_pid_len),
                PidsOf(values, "VideoStream"));
      EXPECT_EQ(std::vector<std::uint32_t>(entries[i]->audio_pid,
                                           entries[i]->audio_pid + entries[i]->audio_pid_len),
                PidsOf(values, "AudioStream"));
      const std::uint32_t frequency = PropertyOf(*entries[i], DTV_FREQUENCY);
      EXPECT_EQ(isSatellite ? frequency : frequency / 1'000, channel.frequency);
      if (!isSatellite) continue;
      constexpr std::uint32_t kTenths[] = {192, 130, 300, 282};
      EXPECT_EQ(kTenths[entries[i]->sat_number], values.Number("orbitalPosition"));
      EXPECT_EQ(PropertyOf(*entries[i], DTV_SYMBOL_RATE), values.Number("symbolRate") * 1'000);
      EXPECT_EQ(entries[i]->lnb == std::string("EXTENDED") ? 9'750'000U : 5'150'000U,
                values.Number("LNB_LowFreq"));
      EXPECT_EQ(PropertyOf(*entries[i], DTV_POLARIZATION) - POLARIZATION_H + 1,
                values.Number("polarisation"));
    }
  }
}

/// Tables of transponders: every section is a channel or in the report, and no line is one that is
/// not understood. That every key of a section is accounted for is another test's to say.
TEST(Dvbv5Tables, AreReadWithEveryLineAccountedFor) {
  const std::filesystem::path root = "/usr/share/dvb";
  if (!std::filesystem::exists(root / "dvb-s")) {
    GTEST_SKIP() << "left out: dtv-scan-tables is missing, scripts/setup --peers installs it";
  }
  std::size_t sections = 0;
  std::size_t channels = 0;
  for (const InputSignalType signal : {InputSignalDVBSatellite, InputSignalDVBTerrestrial}) {
    const Exchange exchange(999, signal);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
      if (!entry.is_regular_file()) continue;
      const bool isSecondTime = signal != InputSignalDVBSatellite;
      if (isSecondTime && entry.path().parent_path() != root / "dvb-t") continue;
      const std::string bytes = BytesOf(entry.path());
      const std::vector<Channel> none;
      interchange::Losses losses;
      interchange::Input input;
      input.bytes = bytes;
      const bool isOlder = entry.path().string().find("dvb-legacy") != std::string::npos;
      interchange::ImportResult result;
      try {
        result = interchange::FindFormat("dvbv5")->read(input, {exchange.Context(), none}, losses);
        EXPECT_FALSE(isOlder) << entry.path();
      } catch (const Failure&) {
        EXPECT_TRUE(isOlder) << entry.path();
        continue;
      }
      std::set<std::size_t> known;
      for (const auto& channel : result.channels) known.insert(channel.line);
      for (const Loss& loss : losses.All()) {
        EXPECT_NE(Code::LineNotUnderstood, loss.code) << entry.path() << ":" << loss.place.line;
        known.insert(loss.place.line);
      }
      std::istringstream lines(bytes);
      std::string line;
      std::size_t inFile = 0;
      for (std::size_t i = 1; std::getline(lines, line); ++i) {
        if (!line.starts_with('[')) continue;
        EXPECT_TRUE(known.contains(i)) << entry.path() << ":" << i;
        ++inFile;
      }
      EXPECT_EQ(inFile, result.read) << entry.path();
      sections += inFile;
      channels += result.channels.size();
    }
  }
  EXPECT_LT(20'000U, sections);
  std::printf("%zu sections, %zu channels\n", sections, channels);
}

}  // namespace

}  // namespace zortunedex::kit

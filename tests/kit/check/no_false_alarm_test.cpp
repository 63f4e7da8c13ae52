// What is right is not complained about: the samples, and whatever the library writes.
#include <nlohmann/json.hpp>

#include "kit/check/checker.h"
#include "kit/check/findings/finding_json.h"
#include "kit/home.h"
#include "kit/model/channel_layout.h"
#include "kit/model/channel_table.h"
#include "kit/presets/customer_lists.h"
#include "kit/satellites/catalogue.h"
#include "kit/satellites/dish_settings.h"
#include "kit/saving/list_editor.h"
#include "kit/saving/save_table.h"
#include "kit/text/signal_types.h"
#include "kit/text/tuning_words.h"
#include "support/random.h"

namespace zortunedex::kit {

namespace {

using check::Finding;
using check::Severity;
using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Source;

/// As text, for a message that says it all.
std::string Complaints(const std::string& directory, Severity level) {
  std::vector<Finding> findings = check::CheckDirectory(directory, {});
  std::erase_if(findings,
                [level](const Finding& finding) { return finding.code->severity > level; });
  return check::ToJson(findings).dump(1);
}

TEST(CheckNoFalseAlarm, Samples) {
  const Home home;
  EXPECT_EQ("[]", Complaints(home.Path(), Severity::Warning));
}

TEST(CheckNoFalseAlarm, DishesThatAreSaved) {
  const Home home;
  const SatelliteCatalogue catalogue = ReadCatalogue(home.Satellites());
  Dishes dishes;
  for (std::size_t i = 0; i < catalogue.satellites.size(); ++i) {
    const LnbType& lnb = catalogue.lnbs[i % catalogue.lnbs.size()];
    dishes.assign(static_cast<unsigned>(i % Dishes::count) + 1, catalogue.satellites[i],
                  i % 2 == 0 ? band::ku : band::c, lnb);
  }
  SaveDishes(home.Satellites(), dishes);
  EXPECT_EQ("[]", Complaints(home.Path(), Severity::Warning));
}

TEST(CheckNoFalseAlarm, CustomerListsThatAreStored) {
  const Home home;
  const Presets presets(home.OneSegment());
  ASSERT_FALSE(presets.Areas().empty());
  const ChannelTable table = ReadTable(home.OneSegment());
  ASSERT_FALSE(table.channels.empty());
  StoreCustomerList(home.OneSegment(), 1, Wide("Mine"));
  EXPECT_EQ("[]", Complaints(home.Path(), Severity::Warning));
}

/// Records as broadcasts have them: everything in its range, texts of all kinds of characters.
class RandomChannels {
 public:
  RandomChannels(InputSignalType signal, Random& random)
      : m_signal(signal), m_layout(LayoutOf(signal)), m_random(random) {}

  Channel Next(UINT index) {
    Channel channel = EmptyChannel(m_layout);
    channel.index = index;
    channel.favorite = m_random(2);
    channel.lock = static_cast<BOOL>(m_random(2));
    m_pid = 16 + m_random(100);
    for (const Field& field : m_layout.channel) SetField(field, channel);
    for (const Field& field : m_layout.elementStreams) SetField(field, channel);
    for (const Field& field : m_layout.satelliteParams) SetField(field, channel);
    FillLists(channel);
    SetTuning(channel, index);
    channel.displayName = Text(20);
    return channel;
  }

 private:
  WideText Text(std::size_t most) {
    // Quotation marks and the like are for the plain form alone.
    constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdef 0123456789.,:;-+/()'";
    WideText text;
    for (std::size_t i = 0; i < most; ++i) {
      text.push_back(static_cast<OLECHAR>(kLetters[m_random(kLetters.size())]));
    }
    while (!text.empty() && text.back() == OLECHAR{' '}) text.pop_back();
    return text;
  }

  void Put(Channel& channel, const char* attribute, std::uint32_t value) {
    for (const auto& rows : {m_layout.channel, m_layout.elementStreams, m_layout.satelliteParams}) {
      const Field* field = station_blocks::FindField(rows, attribute);
      if (field != nullptr && field->width != 0) {
        station_blocks::Store(channel.block.data() + field->offset, field->width, value);
      }
    }
  }

  void SetField(const Field& field, Channel& channel) {
    BYTE* place = channel.block.data() + field.offset;
    if (field.width == 0 || field.use == station_blocks::Use::ReadOnly) return;
    if (field.form == Form::Text || field.form == Form::Base64) {
      const WideText text = Text(1 + m_random(30));
      std::transform(text.begin(), text.end(), place,
                     [](OLECHAR unit) { return static_cast<BYTE>(unit); });
    } else if (const auto words = tuning_words::Of(field.form); !words.empty()) {
      const auto value = words[m_random(static_cast<std::uint32_t>(words.size()))].value;
      station_blocks::Store(place, field.width, static_cast<std::uint32_t>(value));
    } else if (field.form == Form::Number && field.source == Source::Block) {
      const std::string_view name = field.attribute;
      const bool isPid = name.ends_with("PID");
      if (name.starts_with("numOf") || name.ends_with("Stream")) return;
      station_blocks::Store(place, field.width, isPid ? 16 + m_random(8000) : m_random(60000));
    }
  }

  void FillLists(Channel& channel) {
    for (const station_blocks::StreamList& list : m_layout.lists) {
      if (list.use == station_blocks::Use::ReadOnly) continue;
      const std::uint32_t count = m_random(list.capacity + 1U);
      station_blocks::Store(channel.block.data() + list.countOffset, 4, count);
      for (std::uint32_t i = 0; i < count; ++i) {
        BYTE* entry = channel.block.data() + list.offset + std::size_t{i} * list.entrySize;
        station_blocks::Store(entry, 1, m_random(256));
        station_blocks::Store(entry + 2, 2, ++m_pid);
        station_blocks::StoreLanguage(entry + 4, m_random(4096));
      }
    }
    if (m_layout.components == nullptr) return;
    const std::uint32_t count = m_random(m_layout.components->capacity + 1U);
    station_blocks::Store(channel.block.data() + m_layout.components->countOffset, 4, count);
  }

  void SetTuning(Channel& channel, UINT index) {
    channel.tsid = static_cast<LONG>(m_random(65536));
    channel.number = 13 + m_random(40);
    Put(channel, "orbitalPosition", m_random(1801));
    Put(channel, "westPosition", m_random(2));
    Put(channel, "symbolRate", 1000 + m_random(40000));
    switch (m_signal) {
      case InputSignalFMRadio:
        channel.frequency = 65'000 + index * 50;
        break;
      case InputSignalTDMBMobile:
        channel.frequency = 174'928 + index;
        break;
      case InputSignalDVBSatellite:
        channel.frequency = 10'700'000 + index * 1000;
        break;
      case InputSignalISDBTerrestrialOneSeg:
        SetOneSegment(channel, index);
        break;
      default:
        channel.frequency = 474'000 + index * 1000;
    }
    if (station_blocks::FindField(m_layout.channel, "TSID") == nullptr) channel.tsid = 0;
    if (m_signal == InputSignalATSCAntenna || m_signal == InputSignalATSCCable) {
      channel.frequency = 0;
      Put(channel, "majorChannel", index);
    }
    if (m_signal == InputSignalFMRadio) channel.number = 0;
  }

  void SetOneSegment(Channel& channel, UINT index) {
    channel.frequency = 473'143 + 6000 * (channel.number - 13);
    Put(channel, "physicalChannel", channel.number);
    const std::uint32_t region = 1 + index % 60;
    const std::uint32_t broadcaster = m_random(16);
    Put(channel, "ServiceID", region << 10 | 3U << 7 | broadcaster << 3);
    Put(channel, "NetworkID", 0x7FF0 - 16 * region + broadcaster);
  }

  InputSignalType m_signal;
  const Layout& m_layout;
  Random& m_random;
  std::uint32_t m_pid = 16;
};

TEST(CheckNoFalseAlarm, RandomRecordsOfAllTypesInBothForms) {
  Random random(15);
  for (const InputSignalType signal : StorableSignalTypes()) {
    for (const EStorageType form : {StorageXML, StoragePreFmtXML}) {
      const Home home(Home::Start::Empty);
      RandomChannels channels(signal, random);
      ChannelTable table{49, signal, {}};
      for (UINT index = 1; index <= 20; ++index) table.channels.push_back(channels.Next(index));
      SaveTable(home.Path(), table, {form, {}});
      EXPECT_EQ("[]", Complaints(home.Path(), Severity::Warning))
          << SignalTypeName(signal) << " " << form;
    }
  }
}

// A plain save puts a new element behind the last one of its kind, on the same line.
TEST(CheckNoFalseAlarm, ChannelsAddedToAFileOfLines) {
  Random random(16);
  for (const InputSignalType signal : StorableSignalTypes()) {
    const Home home(Home::Start::Empty);
    RandomChannels channels(signal, random);
    ChannelTable table{49, signal, {}};
    for (UINT index = 1; index <= 3; ++index) table.channels.push_back(channels.Next(index));
    SaveTable(home.Path(), table, {StoragePreFmtXML, {}});
    for (UINT index = 4; index <= 6; ++index) {
      ListEditor editor(home.At(49, signal), {});
      editor.Add(channels.Next(index));
      editor.Save();
    }
    EXPECT_EQ("[]", Complaints(home.Path(), Severity::Warning)) << SignalTypeName(signal);
  }
}

}  // namespace

}  // namespace zortunedex::kit

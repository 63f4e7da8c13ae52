// Random channels through the file and back, and random files through the codecs.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/station_blocks.h"
#include "support/dom_text.h"
#include "support/expect.h"
#include "support/random.h"
#include "support/registry_sandbox.h"
#include "support/temp_dir.h"
#include "xml/codecs/channel_codec.h"
#include "xml/codecs/sample_channels.h"
#include "xml/files/xml_chan_parser.h"

namespace {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Use;
using xml::CodeChannel;
using xml::Direction;
using Block = std::vector<BYTE>;

// Values at the ends of their range as often as others.
std::uint32_t RandomNumber(Random& random) {
  constexpr std::uint32_t kEnds[] = {0,           1,           127,         128,        255,
                                     256,         32767,       32768,       65535,      65536,
                                     2147483647U, 2147483648U, 4294967294U, 4294967295U};
  return random(2) == 0 ? kEnds[random(std::size(kEnds))] : static_cast<std::uint32_t>(random());
}

std::string RandomText(Random& random, std::size_t longest, bool plain) {
  constexpr char kSpecial[] = "<>&\"' \t\r\n;#]";
  std::string text(random(static_cast<std::uint32_t>(longest + 1)), '\0');
  for (char& c : text) {
    const bool special = !plain && random(4) == 0;
    c = special ? kSpecial[random(sizeof(kSpecial) - 1)]
                : static_cast<char>('0' + random('z' - '0'));
    if (plain && (c == '<' || c == '>')) c = 'x';
  }
  return text;
}

/// One of the values that survive: those without a word, and 0, come back as others.
std::uint32_t RandomWordValue(Random& random, Form form) {
  const std::uint32_t last = form == Form::Polarisation ? 4
                             : form == Form::FecRate    ? 8
                             : form == Form::Modulation ? 25
                                                        : 3;
  const std::uint32_t value = random(last + 1);
  return value == 0 ? 4294967295U : value;
}

/// A random channel that the file can hold whole: no byte that has no attribute is set, and no list
/// says more entries than it has.
class RandomChannel {
 public:
  RandomChannel(Random& random, InputSignalType type, bool plainTexts)
      : m_random(random), m_layout(*station_blocks::Find(type)), m_plain(plainTexts) {
    record.signalType = type;
    record.block.resize(m_layout.size);
    record.station = {type, 0, Signed(), RandomNumber(random), Signed(), Signed(), 0, nullptr};
    record.favor = RandomNumber(random);
    record.lock = Signed();
    record.displayName = Wide(RandomText(random, 259, plainTexts));
    for (const Field& field : m_layout.channel) Fill(field, record.block.data());
    for (const Field& field : m_layout.elementStreams) Fill(field, record.block.data());
    for (const Field& field : m_layout.satelliteParams) Fill(field, record.block.data());
    for (const station_blocks::StreamList& list : m_layout.lists) Fill(list);
    if (m_layout.components != nullptr) Fill(*m_layout.components);
  }

  FakeChannel record;

  void ExpectReadBack(const FakeChannel& back) const {
    EXPECT_EQ(record.index, back.index);
    EXPECT_EQ(record.favor, back.favor);
    EXPECT_EQ(record.lock, back.lock);
    ExpectText(record.displayName.View(), back.displayName.Get());
    Expect("physicalChannel", record.station.lPhysicalChannel, back.station.lPhysicalChannel);
    Expect("freqOffset", record.station.lOffsetFreq, back.station.lOffsetFreq);
    Expect("TSID", record.station.lTSID, back.station.lTSID);
    const bool hasFrequency = HasRow("freq") || HasRow("Frequency");
    EXPECT_EQ(hasFrequency ? record.station.dwFrequency : 0, back.station.dwFrequency);
    ASSERT_EQ(record.block, back.block);
  }

 private:
  LONG Signed() { return static_cast<LONG>(RandomNumber(m_random)); }
  bool HasRow(const char* attribute) const {
    return station_blocks::FindField(m_layout.channel, attribute) != nullptr;
  }
  void Expect(const char* attribute, LONG expected, LONG actual) const {
    EXPECT_EQ(HasRow(attribute) ? expected : 0, actual) << attribute;
  }

  void Fill(const Field& field, BYTE* base) {
    // What only one direction knows does not survive: the component index, the streams of T-DMB.
    if (field.use != Use::Both || field.width == 0) return;
    BYTE* place = base + field.offset;
    switch (field.form) {
      case Form::Number:
        // The one number with two homes.
        station_blocks::Store(place, field.width,
                              field.source == station_blocks::Source::PhysicalChannel
                                  ? static_cast<std::uint32_t>(record.station.lPhysicalChannel)
                                  : RandomNumber(m_random));
        return;
      case Form::Language:
        station_blocks::StoreLanguage(place, m_random(4096));
        return;
      case Form::Text:
      case Form::Base64: {
        const std::string text =
            RandomText(m_random, std::min<std::size_t>(field.width - 1, 259), m_plain);
        std::copy(text.begin(), text.end(), place);
        if (field.source == station_blocks::Source::Name) record.name = Wide(text);
        return;
      }
      default:
        station_blocks::Store(place, 4, RandomWordValue(m_random, field.form));
    }
  }

  void Fill(const station_blocks::StreamList& list) {
    if (list.use != Use::Both) return;
    const std::uint32_t count = m_random(list.capacity + 1U);
    station_blocks::Store(&record.block[list.countOffset], 4, count);
    for (std::uint32_t i = 0; i < count; ++i) {
      for (const Field& field : station_blocks::EntryFields(list.entrySize)) {
        Fill(field, &record.block[list.offset + i * list.entrySize]);
      }
    }
  }

  void Fill(const station_blocks::ComponentList& list) {
    const std::uint32_t count = m_random(list.capacity + 1U);
    station_blocks::Store(&record.block[list.countOffset], 4, count);
    for (std::uint32_t i = 0; i < count; ++i) {
      const std::string text = RandomText(m_random, list.nameWidth - 1U, m_plain);
      std::copy(text.begin(), text.end(), &record.block[list.nameOffset + i * list.nameWidth]);
      station_blocks::Store(&record.block[list.typeOffset + i * 4], 4, RandomNumber(m_random));
    }
  }

  Random& m_random;
  const Layout& m_layout;
  bool m_plain;
};

constexpr InputSignalType kTypes[] = {InputSignalAnalogAntenna,  InputSignalAnalogCable,
                                      InputSignalFMRadio,        InputSignalATSCAntenna,
                                      InputSignalATSCCable,      InputSignalDVBSatellite,
                                      InputSignalDVBTerrestrial, InputSignalDVBHandheld,
                                      InputSignalTDMBMobile,     InputSignalISDBTerrestrialOneSeg};

void ExpectFileBringsBack(unsigned seed, InputSignalType type, bool preFormatted) {
  SCOPED_TRACE("seed " + std::to_string(seed) + ", type " + std::to_string(type));
  Random random(seed);
  const TempDir dir;
  CXmlChanParser parser;
  ExpectHr(S_OK, parser.Open(dir.File("ChanInfo.xml")));
  ExpectHr(S_OK, parser.Load());
  dom::Element country;
  dom::Element set;
  ExpectHr(S_OK, parser.FindOrCreateCountry(49, &country));
  ExpectHr(S_OK, CXmlChanParser::FindChannelSet(country, type, &set, true));

  std::vector<std::unique_ptr<RandomChannel>> channels;
  for (UINT i = 1; i <= 5; ++i) {
    // Raw values would not load back.
    channels.push_back(std::make_unique<RandomChannel>(random, type, preFormatted));
    channels.back()->record.index = i;
  }
  for (const auto& channel : channels) {
    dom::Element element;
    ExpectHr(S_OK, CXmlChanParser::FindOrCreateChannelElement(set, &channel->record, &element));
    ExpectHr(S_OK, CodeChannel(element, &channel->record, Direction::Write));
  }
  parser.SetPreFormatted(preFormatted);
  parser.SetDirty(true);
  ExpectHr(S_OK, parser.Save());

  ExpectHr(S_OK, parser.Load());
  ExpectHr(S_OK, parser.FindOrCreateCountry(49, &country));
  ExpectHr(S_OK, CXmlChanParser::FindChannelSet(country, type, &set, false));
  LONG count = 0;
  ExpectHr(S_OK, CXmlChanParser::CountChannels(set, &count));
  ASSERT_EQ(5, count);
  for (LONG i = 0; i < count; ++i) {
    dom::Element element;
    ExpectHr(S_OK, CXmlChanParser::GetChannelElement(set, i, &element));
    FakeChannel back(type);
    ExpectHr(S_OK, CodeChannel(element, &back, Direction::Read));
    channels[static_cast<std::size_t>(i)]->ExpectReadBack(back);
  }
}

/// A value such as nobody would write on purpose.
std::string RandomValue(Random& random) {
  switch (random(8)) {
    case 0:
      return std::to_string(random());
    case 1:
      return "-" + std::to_string(random());
    case 2:
      return std::string(random(700), 'x');
    case 3:
      return "TkhL=&#13;==";
    case 4:
      return "\xE6\x97\xA5\xF0\x9F\x93\xBA&amp;&#9;";
    case 5:
      return "NotSet";
    case 6:
      return "99999999999999999999999999";
    default:
      return "";
  }
}

std::string RandomAttributes(Random& random,
                             std::initializer_list<station_blocks::Rows<Field>> all) {
  std::string text;
  for (const station_blocks::Rows<Field>& rows : all) {
    for (const Field& field : rows) {
      const std::string name = field.attribute;
      const bool isWritable =
          name.find(' ') == name.npos && text.find(" " + name + "=") == name.npos;
      if (isWritable && random(4) != 0) text += " " + name + "='" + RandomValue(random) + "'";
    }
  }
  return text;
}

/// A channel with the right names and everything else wrong.
std::string RandomDocument(Random& random, const Layout& layout) {
  std::string streams;
  for (const station_blocks::StreamList& list : layout.lists) {
    const auto rows = station_blocks::EntryFields(list.entrySize);
    for (std::uint32_t i = random(24); i > 0; --i) {
      streams += std::string("<") + list.element + RandomAttributes(random, {rows}) + "/>";
    }
  }
  for (std::uint32_t i = layout.components != nullptr ? random(24) : 0; i > 0; --i) {
    streams += "<Components ID='" + std::to_string(static_cast<int>(random(14)) - 3) + "' name='" +
               RandomValue(random) + "' type='" + RandomValue(random) + "'/>";
  }
  std::string xml = "<Channel" + RandomAttributes(random, {layout.channel}) + ">";
  // Of two the first is replaced and the other one read next: no such file settles.
  if (random(4) != 0) {
    xml += "<ElementStreams" + RandomAttributes(random, {layout.elementStreams}) + ">" + streams +
           "<!-- x -->text</ElementStreams><SatelliteParams" +
           RandomAttributes(random, {layout.satelliteParams}) + "/>";
  }
  return xml + "</Channel>";
}

}  // namespace

TEST(ChannelRoundTrip, PlainFile) {
  const RegistrySandbox registry;
  for (const InputSignalType type : kTypes) {
    for (unsigned seed = 1; seed <= 10 && !HasFailure(); ++seed) {
      ExpectFileBringsBack(seed, type, false);
    }
  }
}

TEST(ChannelRoundTrip, PreFormattedFile) {
  const RegistrySandbox registry;
  for (const InputSignalType type : kTypes) {
    for (unsigned seed = 1; seed <= 10 && !HasFailure(); ++seed) {
      ExpectFileBringsBack(seed, type, true);
    }
  }
}

// Whatever a file holds, what was read of it once is written and read back the same.
TEST(ChannelRoundTrip, AnyFileSettles) {
  for (const InputSignalType type : kTypes) {
    for (unsigned seed = 1; seed <= 60 && !HasFailure(); ++seed) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", type " + std::to_string(type));
      Random random(seed);
      const TextDocument document(RandomDocument(random, *station_blocks::Find(type)));
      FakeChannel first(type);
      ExpectHr(S_OK, CodeChannel(document.root, &first, Direction::Read));
      const Layout& layout = *station_blocks::Find(type);
      ASSERT_EQ(layout.size, first.block.size());
      ExpectHr(S_OK, CodeChannel(document.root, &first, Direction::Write));
      FakeChannel second(type);
      ExpectHr(S_OK, CodeChannel(document.root, &second, Direction::Read));
      EXPECT_EQ(first.index, second.index);
      ExpectHr(S_OK, CodeChannel(document.root, &second, Direction::Write));
      const std::string settled = Formatted(document.root);
      FakeChannel third(type);
      ExpectHr(S_OK, CodeChannel(document.root, &third, Direction::Read));
      EXPECT_EQ(second.block, third.block);
      ExpectHr(S_OK, CodeChannel(document.root, &third, Direction::Write));
      EXPECT_EQ(settled, Formatted(document.root));
    }
  }
}

// A file of one kind read as another.
TEST(ChannelRoundTrip, AnyFileAsAnyKind) {
  for (const Sample& sample : Samples()) {
    const TextDocument document(GoldenFile(std::string(sample.file) + ".xml"));
    const dom::Element channel = Child(document.root, "./Country/ChannelSet/Channel[@index='3']");
    ASSERT_TRUE(channel);
    for (const InputSignalType type : kTypes) {
      FakeChannel record(type);
      ExpectHr(S_OK, CodeChannel(channel, &record, Direction::Read));
      EXPECT_EQ(Sample::kIndex, record.index);
      EXPECT_EQ(station_blocks::Find(type)->size, record.block.size());
    }
  }
}

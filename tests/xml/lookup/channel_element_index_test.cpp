#include "xml/lookup/channel_element_index.h"

#include <gtest/gtest.h>

#include <iterator>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include "support/dom_text.h"
#include "support/expect.h"
#include "support/fake_channel.h"
#include "support/random.h"
#include "xml/codecs/channel_codec.h"
#include "xml/elements/xml_nodes.h"

namespace {

/// The set as a plain list, searched step by step for every record.
class Model {
 public:
  struct Channel {
    int id;
    std::optional<std::string> index;
  };

  /// The first channel with exactly that text; else a new one in front of the first channel whose
  /// number is greater, else at the end.
  Channel& FindOrCreate(std::int32_t index, int newId) {
    const std::string text = std::to_string(index);
    for (Channel& channel : channels) {
      if (channel.index == text) return channel;
    }
    auto place = channels.begin();
    while (place != channels.end() && NumberOf(*place) <= index) ++place;
    return *channels.insert(place, {newId, std::nullopt});
  }

  std::list<Channel> channels;

 private:
  // Leading blanks, a sign, digits; the rest does not count.
  static std::int32_t NumberOf(const Channel& channel) {
    if (!channel.index) return 0;
    const char* next = channel.index->c_str();
    while (*next == ' ') ++next;
    const bool isNegative = *next == '-';
    if (*next == '-' || *next == '+') ++next;
    std::uint64_t value = 0;
    for (; *next >= '0' && *next <= '9'; ++next) {
      value = (value * 10 + static_cast<std::uint64_t>(*next - '0')) & 0xFFFFFFFF;
    }
    const auto bits = static_cast<std::uint32_t>(value);
    return static_cast<std::int32_t>(isNegative ? 0 - bits : bits);
  }
};

int SmallNumber(Random& random, std::uint32_t bound) { return static_cast<int>(random(bound)); }

/// An index as hand-edited files have them; often one of a few, so that they meet.
std::optional<std::string> RandomIndex(Random& random) {
  const std::string number = std::to_string(SmallNumber(random, 12) - 3);
  switch (SmallNumber(random, 16)) {
    case 0:
      return std::nullopt;
    case 1:
      return "0" + number;
    case 2:
      return " " + number;
    case 3:
      return "+" + number;
    case 4:
      return number + "x";
    case 5:
      return std::to_string(4294967296U + random() % 8);
    case 6:
      return "";
    case 7:
      return "-0";
    case 8:
      return "                        " + number;
    case 9:
      return std::to_string(static_cast<std::int32_t>(random()));
    case 10:
      return "000000000000000000000000000000" + number;
    default:
      return number;
  }
}

/// A channel set and its model with the same channels; "id" tells them apart.
struct Twins {
  Twins() {
    ExpectHr(S_OK, m_document.Create());
    ExpectHr(S_OK, m_document.CreateElement("ChannelSet", set));
    ExpectHr(S_OK, m_document.AppendChild(set));
  }

  dom::Element Append(const char* name, const dom::Element& parent) {
    dom::Element made;
    ExpectHr(S_OK, m_document.CreateElement(name, made));
    ExpectHr(S_OK, parent.AppendChild(made));
    return made;
  }
  void AppendChannel(int id, const std::optional<std::string>& index) {
    model.channels.push_back({id, index});
    const dom::Element channel = Append("Channel", set);
    ExpectHr(S_OK, channel.SetInt("id", id));
    if (index) ExpectHr(S_OK, channel.SetNarrow("index", *index));
  }
  void ExpectSame() const {
    std::string expected;
    for (const Model::Channel& channel : model.channels) {
      expected += std::to_string(channel.id) + ":" + channel.index.value_or("<missing>") + "\n";
    }
    std::string actual;
    dom::ElementList channels;
    ExpectHr(S_OK, set.Select("./Channel", channels));
    for (LONG i = 0; i < channels.Count(); ++i) {
      dom::Element channel;
      ExpectHr(S_OK, channels.Item(i, channel));
      actual += Attribute(channel, "id") + ":" + Attribute(channel, "index") + "\n";
    }
    ASSERT_EQ(expected, actual);
  }

  dom::Element set;
  Model model;

 private:
  dom::Document m_document;
};

Twins RandomTwins(Random& random) {
  Twins twins;
  const int count = SmallNumber(random, 10);
  const bool isSorted = SmallNumber(random, 3) == 0;
  for (int i = 0; i < count; ++i) {
    if (SmallNumber(random, 5) == 0) {
      const dom::Element other = twins.Append("Other", twins.set);
      ExpectHr(S_OK, other.SetInt("index", 3));
      ExpectHr(S_OK, twins.Append("Channel", other).SetInt("index", 4));
    }
    twins.AppendChannel(i, isSorted ? std::to_string(i * 2) : RandomIndex(random));
  }
  return twins;
}

/// What becomes of the element of one record.
enum class Codec { Writes, Fails, WritesAnother };

void SaveOne(xml::ChannelElementIndex& index, Twins& twins, std::int32_t key, Codec codec,
             std::int32_t another, int newId) {
  FakeChannel record(InputSignalFMRadio, 92);
  record.index = static_cast<UINT>(codec == Codec::WritesAnother ? another : key);
  record.passingIndexes = {static_cast<UINT>(key)};
  dom::Element channel;
  ExpectHr(S_OK, index.FindOrCreate(&record, channel));
  Model::Channel& expected = twins.model.FindOrCreate(key, newId);
  if (expected.id == newId) {
    ASSERT_EQ("<missing>", Attribute(channel, "id")) << "a new element for " << key;
    ExpectHr(S_OK, channel.SetInt("id", newId));
  }
  ASSERT_EQ(std::to_string(expected.id), Attribute(channel, "id")) << key;
  if (codec == Codec::Fails) record.failing = FakeChannel::Getter::Name;
  const HRESULT hr = xml::CodeChannel(channel, &record, xml::Direction::Write);
  if (codec == Codec::Fails) {
    ExpectHr(FakeChannel::kFailure, hr);
  } else {
    ExpectHr(S_OK, hr);
    expected.index = std::to_string(static_cast<std::int32_t>(record.index));
  }
}

std::int32_t RandomKey(Random& random) {
  return SmallNumber(random, 20) == 0 ? static_cast<std::int32_t>(random())
                                      : SmallNumber(random, 14) - 4;
}

void RunRandom(unsigned seed, int failing, int another) {
  Random random(seed);
  SCOPED_TRACE(seed);
  Twins twins = RandomTwins(random);
  // Now and then the list is saved again, by an index of its own.
  for (int saves = 0; saves < 2 && !testing::Test::HasFatalFailure(); ++saves) {
    xml::ChannelElementIndex index(twins.set);
    const int records = 1 + SmallNumber(random, 12);
    const bool isSorted = SmallNumber(random, 2) == 0;
    for (int i = 0; i < records && !testing::Test::HasFatalFailure(); ++i) {
      const int dice = SmallNumber(random, 100);
      const Codec codec = dice < failing             ? Codec::Fails
                          : dice < failing + another ? Codec::WritesAnother
                                                     : Codec::Writes;
      SaveOne(index, twins, isSorted ? i + 1 : RandomKey(random), codec, RandomKey(random),
              100 * (saves + 1) + i);
      twins.ExpectSame();
    }
  }
}

}  // namespace

TEST(ChannelElementIndex, RandomListsOnRandomDocuments) {
  for (unsigned seed = 0; seed < 2500 && !HasFailure(); ++seed) RunRandom(seed, 0, 0);
}

TEST(ChannelElementIndex, CodecsThatFail) {
  for (unsigned seed = 10000; seed < 12500 && !HasFailure(); ++seed) RunRandom(seed, 30, 0);
}

TEST(ChannelElementIndex, RecordsThatChangeTheirIndex) {
  for (unsigned seed = 20000; seed < 22500 && !HasFailure(); ++seed) RunRandom(seed, 20, 30);
}

TEST(ChannelElementIndex, IndexesThatAreNotInPlainFormAreNotFound) {
  for (const char* text : {"044", " 44", "+44", "44 ", "44x", "4294967340", "44.0", ""}) {
    const TextDocument document("<ChannelSet><Channel index='" + std::string(text) +
                                "'/></ChannelSet>");
    FakeChannel record;
    record.index = 44;
    dom::Element channel;
    xml::ChannelElementIndex index(document.root);
    ExpectHr(S_OK, index.FindOrCreate(&record, channel));
    EXPECT_EQ("<missing>", Attribute(channel, "index")) << text;
    EXPECT_EQ(2, Count(document.root, "./Channel"));
  }
}

TEST(ChannelElementIndex, FirstOfTwoIsFound) {
  const TextDocument document(
      "<ChannelSet><Channel index='9'/><Channel id='a' index='4'/><Channel id='b' index='4'/>"
      "</ChannelSet>");
  FakeChannel record;
  record.index = 4;
  dom::Element channel;
  xml::ChannelElementIndex index(document.root);
  ExpectHr(S_OK, index.FindOrCreate(&record, channel));
  EXPECT_EQ("a", Attribute(channel, "id"));
}

TEST(ChannelElementIndex, FailingGetterChangesNothing) {
  const TextDocument document("<ChannelSet><Channel index='9'/></ChannelSet>");
  FakeChannel record;
  record.failing = FakeChannel::Getter::Index;
  dom::Element channel;
  xml::ChannelElementIndex index(document.root);
  ExpectHr(FakeChannel::kFailure, index.FindOrCreate(&record, channel));
  EXPECT_FALSE(channel);
  EXPECT_EQ(1, Count(document.root, "./Channel"));
}

TEST(ChannelElementIndex, ManyRecordsInOrder) {
  const TextDocument document("<ChannelSet/>");
  xml::ChannelElementIndex index(document.root);
  for (UINT i = 1; i <= 2000; ++i) {
    FakeChannel record;
    record.index = i;
    dom::Element channel;
    ExpectHr(S_OK, index.FindOrCreate(&record, channel));
    ExpectHr(S_OK, channel.SetInt("index", static_cast<std::int32_t>(i)));
  }
  dom::ElementList channels;
  ExpectHr(S_OK, document.root.Select("./Channel", channels));
  ASSERT_EQ(2000, channels.Count());
  for (LONG i = 0; i < channels.Count(); ++i) {
    dom::Element channel;
    ExpectHr(S_OK, channels.Item(i, channel));
    EXPECT_EQ(std::to_string(i + 1), Attribute(channel, "index"));
  }
}

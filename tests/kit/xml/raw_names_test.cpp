// Names that look like markup, in files of the pre-formatted form that the library wrote.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "kit/home.h"
#include "kit/model/channel.h"
#include "kit/model/channel_layout.h"
#include "kit/text/signal_types.h"
#include "kit/xml/tree/document.h"
#include "support/random.h"

namespace zortunedex::kit {

namespace {

using markup::Document;
using markup::Reason;

struct Names {
  std::string name;
  std::string displayName;
};

/// Without references: these count as what they stand for.
std::string HostileName(Random& random) {
  static constexpr std::string_view kPieces[] = {
      "\"",          "<",
      "&",           "/>",
      ">",           "'",
      " ",           "=",
      "name=\"",     "\" ",
      "a",           "News 7",
      "\"/>",        "<!--",
      "-->",         "<?x",
      "]]>",         "</Channel>",
      "& ",          "=\"",
      "amp",         "<Channel",
      "\" lock=\"",  "index=\"",
      " freq=",      "\"nameDisplay=\"",
      "<![CDATA[",   "</ChannelSet>",
      "<!DOCTYPE a", "x=1",
      "-7",          "#65",
  };
  std::string name;
  while (name.size() < 70 && random(8) != 0) {
    name += kPieces[random(static_cast<std::uint32_t>(std::size(kPieces)))];
    // Alone this one makes a name that splits in two ways.
    if (random(100) == 0) name += "\" nameDisplay=\"";
  }
  // An empty name would be shown as something else.
  if (name.empty()) name = "&";
  return name.substr(0, 70);
}

/// A channel with that name in its block.
Channel Named(const Names& names, InputSignalType signal) {
  Channel channel = EmptyChannel(LayoutOf(signal));
  const auto* field = station_blocks::FindField(LayoutOf(signal).channel, "name");
  std::copy(names.name.begin(), names.name.end(), channel.block.begin() + field->offset);
  channel.displayName = Wide(names.displayName);
  return channel;
}

/// What the library makes of a list of such channels.
std::string Written(InputSignalType signal, const std::vector<Names>& names) {
  const Home home(Home::Start::Empty);
  Database database(home.At(49, signal));
  const ComPtr<IChannelInfoMgr> list = database.List();
  UINT index = 0;
  for (const Names& each : names) {
    ComPtr<IChannelInfo> record;
    EXPECT_EQ(S_OK, list->CreateChannelInfo(record.Receive()));
    WriteChannel(Named(each, signal), signal, record.Get());
    record->SetChannelIndex(++index);
    EXPECT_EQ(S_OK, list->AddChannelInfo(record.Get()));
  }
  database->SetStorageType(StoragePreFmtXML);
  EXPECT_EQ(S_OK, database->SaveChannelToFile());
  return home.Channels();
}

/// Writes what the library would, quickly: one channel of its own is the pattern.
class Pattern {
 public:
  explicit Pattern(InputSignalType signal) {
    const std::string file = Written(signal, {{"@NAME@", "@DISPLAY@"}});
    const std::size_t begin = file.rfind('\n', file.find("<Channel name")) + 1;
    const std::size_t end = file.find("\t\t</ChannelSet>");
    m_head = file.substr(0, begin);
    m_channel = file.substr(begin, end - begin);
    m_tail = file.substr(end);
  }

  std::string Write(const std::vector<Names>& names) const {
    std::string file = m_head;
    int index = 0;
    for (const Names& each : names) {
      std::string channel = m_channel;
      Put(channel, " index=\"1\"", " index=\"" + std::to_string(++index) + "\"");
      Put(channel, "@DISPLAY@", each.displayName);
      Put(channel, "@NAME@", each.name);
      file += channel;
    }
    return file + m_tail;
  }

 private:
  static void Put(std::string& text, std::string_view mark, const std::string& value) {
    text.replace(text.find(mark), mark.size(), value);
  }

  std::string m_head;
  std::string m_channel;
  std::string m_tail;
};

std::vector<Names> HostileNames(std::size_t count, Random& random) {
  std::vector<Names> names(count);
  for (Names& each : names) {
    each.name = HostileName(random);
    each.displayName = random(2) == 0 ? each.name : HostileName(random);
  }
  return names;
}

/// In the order of the file, by where the channel's line begins.
std::map<std::size_t, Reason> Unsplit(const Document& document) {
  std::map<std::size_t, Reason> unsplit;
  for (const markup::Damage& damage : document.Damages()) {
    if (!damage.isMended) unsplit.emplace(damage.span.begin, damage.reason);
  }
  return unsplit;
}

struct Outcome {
  std::size_t same = 0;
  std::size_t unsplit = 0;
};

/// Where the next line's element begins.
std::size_t NextLine(const Document& document, std::size_t from) {
  return document.Bytes().find('<', document.Bytes().find('\n', from));
}

void ExpectNames(const Document& document, const std::vector<Names>& names, Outcome& outcome) {
  std::map<std::size_t, Reason> unsplit = Unsplit(document);
  std::map<std::size_t, const markup::Element*> byPlace;
  std::size_t place = 0;
  for (const markup::Element& element : document.Elements()) {
    byPlace.emplace(element.tag.begin, &element);
    if (document.NameOf(element) == "ChannelSet") place = NextLine(document, element.tag.end);
  }
  for (const Names& each : names) {
    ASSERT_EQ(1U, byPlace.count(place)) << each.name << " | " << each.displayName;
    const markup::Element& element = *byPlace[place];
    const auto left = unsplit.find(place);
    if (left != unsplit.end()) {
      EXPECT_STREQ("ZT025", CodeOf(left->second)) << each.name << " | " << each.displayName;
      unsplit.erase(left);
      ++outcome.unsplit;
    } else {
      ASSERT_EQ(each.name, document.ValueOf(element, "name"));
      ASSERT_EQ(each.displayName, document.ValueOf(element, "nameDisplay"));
      ++outcome.same;
    }
    place = NextLine(document, element.endTag.end);
  }
  EXPECT_TRUE(unsplit.empty()) << CodeOf(unsplit.begin()->second) << ' '
                               << TextOf(unsplit.begin()->second);
}

void ExpectAllComeBack(InputSignalType signal, Random& random) {
  constexpr std::size_t kLists = 20;
  constexpr std::size_t kChannels = 1000;
  const Pattern pattern(signal);
  Outcome outcome;
  for (std::size_t i = 0; i < kLists && !testing::Test::HasFailure(); ++i) {
    const std::vector<Names> names = HostileNames(kChannels, random);
    const Document document = Document::Read(pattern.Write(names));
    Outcome first;
    ExpectNames(document, names, first);
    outcome.same += first.same;
    outcome.unsplit += first.unsplit;
    if (i > 0) continue;
    // What is mended can be read; what is not stays as it is.
    const std::string mended = document.Mends().Apply(document.Bytes()).value_or("");
    Outcome again;
    ExpectNames(Document::Read(mended), names, again);
    EXPECT_EQ(first.same, again.same);
  }
  EXPECT_EQ(kLists * kChannels, outcome.same + outcome.unsplit);
  EXPECT_GT(outcome.same, kLists * kChannels * 8 / 10);
  EXPECT_GT(outcome.unsplit, 0U);
}

/// One-segment channels have their names in base64.
bool IsEncoded(InputSignalType signal) { return signal == InputSignalISDBTerrestrialOneSeg; }

TEST(RawNames, ComeBackByteForByteOrAreLeft) {
  Random random(64);
  for (const InputSignalType signal : StorableSignalTypes()) {
    SCOPED_TRACE(SignalTypeName(signal));
    if (!IsEncoded(signal)) ExpectAllComeBack(signal, random);
    if (HasFailure()) return;
  }
}

TEST(RawNames, StandAsTheLibraryWritesThem) {
  Random random(65);
  for (const InputSignalType signal : StorableSignalTypes()) {
    SCOPED_TRACE(SignalTypeName(signal));
    const std::vector<Names> names = HostileNames(100, random);
    const std::string written = Written(signal, names);
    if (!IsEncoded(signal)) {
      EXPECT_EQ(written, Pattern(signal).Write(names));
      continue;
    }
    const Document document = Document::Read(written);
    EXPECT_TRUE(document.Damages().empty());
    EXPECT_LE(names.size(), document.Elements().size());
  }
}

/// The only channel of a file of that name.
std::string ReadBack(const std::string& name) {
  const Names names = {name, "shown"};
  const Document document =
      Document::Read(Pattern(InputSignalDVBSatellite).Write(std::vector<Names>(1, names)));
  for (const markup::Element& element : document.Elements()) {
    if (document.NameOf(element) != "Channel") continue;
    return std::string(document.ValueOf(element, "name").value_or("nothing"));
  }
  return "no channel";
}

TEST(RawNames, ReferencesCountAsWhatTheyStandFor) {
  EXPECT_EQ("A&B", ReadBack("A&amp;B"));
  EXPECT_EQ("A\"B\"", ReadBack("A\"B&quot;"));
  EXPECT_EQ("Ae&x;", ReadBack("A&#101;&x;"));
}

TEST(RawNames, MayHoldLineBreaks) {
  EXPECT_EQ("a \" b", ReadBack("a\r\n\" b"));
  EXPECT_EQ("a\"/> b", ReadBack("a\"/>\r\nb"));
}

// A second reading must not find what the first one did not.
TEST(RawNames, AreToldBehindABrokenDeclaration) {
  std::string bytes =
      Pattern(InputSignalDVBSatellite).Write(std::vector<Names>(1, Names{"a\"/>b", "shown"}));
  bytes.replace(bytes.find("1.0"), 3, "?");
  const Document document = Document::Read(bytes);
  ASSERT_EQ(2U, document.Damages().size());
  EXPECT_EQ(Reason::RawTagEnd, document.Damages()[1].reason);
  EXPECT_TRUE(Document::Read(document.Mends().Apply(bytes).value_or("")).Damages().empty());
}

TEST(RawNames, ThatReadAsMarkupAreTold) {
  const auto reasons = [](const std::string& name) {
    const Document document = Document::Read(
        Pattern(InputSignalFMRadio).Write(std::vector<Names>(1, Names{name, "shown"})));
    std::string text;
    for (const markup::Damage& damage : document.Damages()) {
      text += std::string(CodeOf(damage.reason)) + (damage.isMended ? " " : " left ") +
              (document.IsReadable() ? "readable " : "");
    }
    return text;
  };
  // Each of these is good XML with another name, which is what a parser sees.
  EXPECT_EQ("ZT025 left readable ", reasons("a\"/>b"));
  EXPECT_EQ("ZT025 left readable ", reasons("a\" x=\"b"));
  EXPECT_EQ("ZT025 left readable ", reasons("a\"/>b\" nameDisplay=\"c"));
  EXPECT_EQ("ZT025 left ", reasons("a\" nameDisplay=\"b"));
  // Good XML up to the end of the tag alone.
  EXPECT_EQ("ZT020 ", reasons("a\"/></x>b"));
  EXPECT_TRUE(reasons("a\"/>\r\n<b").starts_with("ZT025 left "));
}

/// The names of the channels, and what is told of the file.
std::string NamesAndCodes(const std::string& bytes) {
  const Document document = Document::Read(bytes);
  std::string text;
  for (const markup::Element& element : document.Elements()) {
    if (document.NameOf(element) != "Channel") continue;
    text.append(document.ValueOf(element, "name").value_or("nothing")).append("|");
  }
  for (const markup::Damage& damage : document.Damages()) {
    text.append(" ").append(CodeOf(damage.reason));
  }
  return text;
}

std::string TwoChannels(const std::string& between) {
  std::string bytes = Pattern(InputSignalFMRadio).Write({{"a", "a"}, {"b", "b"}});
  const std::size_t second = bytes.find("<Channel name=\"b\"");
  return bytes.insert(bytes.rfind("\r\n", second), between);
}

TEST(RawNames, AreNotMadeOfTextBetweenElements) {
  for (const char* between : {"x", "\"", "\"/>", " lock=\"0\"/>", "<!-- c -->x", "\r\nx"}) {
    EXPECT_EQ("a|b|", NamesAndCodes(TwoChannels(between))) << between;
    // Nor where something else keeps the file from being read.
    EXPECT_EQ("a|b| ZT020", NamesAndCodes(TwoChannels(between + std::string("&")))) << between;
  }
}

// A plain save puts a new element behind the last one of its kind, without a line break.
TEST(RawNames, AreNotSearchedForInElementsInARow) {
  std::string inARow = TwoChannels("");
  const std::size_t second = inARow.find("<Channel name=\"b\"");
  const std::size_t lineBreak = inARow.rfind("\r\n", second);
  EXPECT_EQ("a|b|", NamesAndCodes(inARow.erase(lineBreak, second - lineBreak)));
}

// Once a part is put right the rest of it looks like raw markup.
TEST(RawNames, ThatAMendMakesDoubtfulAreTold) {
  std::string bytes = TwoChannels("");
  bytes.replace(bytes.find(" nameDisplay=\"b\""), 1, " x=\"1\"");
  EXPECT_EQ("a|b| ZT025 ZT021", NamesAndCodes(bytes));
  EXPECT_EQ("a|b| ZT025", NamesAndCodes(Document::Read(bytes).Mends().Apply(bytes).value_or("")));
}

}  // namespace

}  // namespace zortunedex::kit

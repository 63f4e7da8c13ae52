#include "kit/history/snapshots/snapshot.h"

#include "kit/history/snapshots/file_set.h"
#include "kit/home.h"

namespace zortunedex::kit {

namespace {

using history::Damage;
using history::Snapshot;
using history::SnapshotOf;

constexpr char kWritten[] =
    "{\n"
    "  \"tunedex\": \"snapshot\",\n"
    "  \"version\": 1,\n"
    "  \"parent\": 41,\n"
    "  \"time\": \"2026-01-02T03:04:05Z\",\n"
    "  \"by\": \"channels favor 5\",\n"
    "  \"files\": {\n"
    "    \"ChanInfo.xml\": {\n"
    "      \"in\": \"000042-ChanInfo.xml\",\n"
    "      \"size\": 7,\n"
    "      \"crc32\": 4294967295\n"
    "    },\n"
    "    \"UserSettings.xml\": null\n"
    "  }\n"
    "}\n";

Snapshot Sample() {
  Snapshot snapshot{42, 41, "2026-01-02T03:04:05Z", "channels favor 5", {}};
  snapshot.files["ChanInfo.xml"] = history::StoredFile{"000042-ChanInfo.xml", 7, 0xFFFFFFFF};
  snapshot.files["UserSettings.xml"] = std::nullopt;
  return snapshot;
}

std::string Without(std::string text, const std::string& part, const std::string& by) {
  const std::size_t at = text.find(part);
  if (at == std::string::npos) throw std::invalid_argument(part);
  return text.replace(at, part.size(), by);
}

TEST(Snapshots, AreWrittenInOneForm) { EXPECT_EQ(kWritten, history::ToJson(Sample())); }

TEST(Snapshots, ComeBackAsTheyWere) {
  const Snapshot read = SnapshotOf(42, kWritten);
  EXPECT_EQ(42U, read.number);
  EXPECT_EQ(41U, read.parent);
  EXPECT_EQ("2026-01-02T03:04:05Z", read.time);
  EXPECT_EQ("channels favor 5", read.by);
  EXPECT_TRUE(read.files == Sample().files);
}

TEST(Snapshots, MayLackTheirKindAndVersion) {
  std::string json = Without(kWritten, "  \"tunedex\": \"snapshot\",\n  \"version\": 1,\n", "");
  json = Without(json, "41", "null");
  EXPECT_EQ(std::nullopt, SnapshotOf(42, json).parent);
}

TEST(Snapshots, OfOtherVersionsAreRefused) {
  const std::string json = Without(kWritten, "\"version\": 1", "\"version\": 2");
  EXPECT_THROW(SnapshotOf(42, json), history::ForeignVersion);
}

TEST(Snapshots, ThatAreNoneAreDamaged) {
  for (const char* text : {"", "{", "[]", "null", "7", "{}", "{\"a\":1}", "\xFF"}) {
    EXPECT_THROW(SnapshotOf(42, text), Damage) << text;
  }
  const auto expect = [](const char* part, const char* by) {
    EXPECT_THROW(SnapshotOf(42, Without(kWritten, part, by)), Damage) << by;
  };
  expect("snapshot", "check");
  expect("41", "42");
  expect("41", "-1");
  expect("41", "\"41\"");
  expect("\"channels favor 5\"", "5");
  expect("4294967295", "4294967296");
  expect("7", "-7");
  expect("\"crc32\"", "\"crc\"");
  expect("null", "[]");
  expect("null", "{}");
}

// Nothing in a history makes a command read or write elsewhere.
TEST(Snapshots, NameNoFileOutsideOfTheHistory) {
  const auto expect = [](const char* part, const char* by) {
    EXPECT_THROW(SnapshotOf(42, Without(kWritten, part, by)), Damage) << by;
  };
  expect("000042-ChanInfo.xml", "../ChanInfo.xml");
  expect("000042-ChanInfo.xml", "/000042-ChanInfo.xml");
  expect("000042-ChanInfo.xml", "000042-UserSettings.xml");
  expect("000042-ChanInfo.xml", "42-ChanInfo.xml");
  expect("\"UserSettings.xml\"", "\"../UserSettings.xml\"");
  expect("\"UserSettings.xml\"", "\"base-../x.json\"");
  expect("\"UserSettings.xml\"", "\"notes.txt\"");
}

TEST(Snapshots, AreNumberedFromOne) {
  EXPECT_EQ("000042.json", history::FileNameOf(42));
  EXPECT_EQ(42U, history::NumberOf("000042.json", ".json"));
  EXPECT_EQ(1234567U, history::NumberOf("1234567.json", ".json"));
  for (const char* name : {"42.json", "000000.json", "0000042.json", "00004x.json", "000042.jsn",
                           ".json", "99999999999.json"}) {
    EXPECT_EQ(std::nullopt, history::NumberOf(name, ".json")) << name;
  }
}

TEST(Pending, ComesBackAsItWas) {
  const history::Pending pending = history::PendingOf(history::ToJson(history::Pending{3, 4}));
  EXPECT_EQ(3U, pending.from);
  EXPECT_EQ(4U, pending.target);
  EXPECT_EQ(std::nullopt, history::PendingOf(history::ToJson(history::Pending{{}, 1})).from);
  EXPECT_THROW(history::PendingOf("{\"from\":1}"), Damage);
}

TEST(RecordedFiles, AreTheFourAndTheBases) {
  EXPECT_TRUE(history::IsDataFile("ChanInfo.xml"));
  EXPECT_FALSE(history::IsDataFile("chaninfo.xml"));
  EXPECT_TRUE(history::IsBase("base-49-DVBSatellite.json"));
  EXPECT_FALSE(history::IsBase("base-49/../x.json"));
  EXPECT_FALSE(history::IsBase("case-49-64.json"));
}

}  // namespace

}  // namespace zortunedex::kit

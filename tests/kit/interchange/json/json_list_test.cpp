// Documents of channels: what stands in them, and what is read of those that nobody wrote like
// this.
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/interchange/exchange.h"
#include "kit/json/channel_json.h"

namespace zortunedex::kit {

namespace {

using interchange::Import;
using nlohmann::ordered_json;

Exchange Radio() { return Exchange(49, InputSignalFMRadio); }

ordered_json DocumentOf(const Exchange& exchange) {
  return ordered_json::parse(exchange.Out("json").output.Bytes());
}

/// What an import of a document says that differs in one member of its only channel.
Import With(const Exchange& exchange, const std::string& pointer, const ordered_json& value) {
  ordered_json document = DocumentOf(exchange);
  document["channels"].erase(document["channels"].begin() + 1, document["channels"].end());
  document[ordered_json::json_pointer("/channels/0" + pointer)] = value;
  return exchange.In("json", document.dump());
}

std::string CodesWith(const Exchange& exchange, const std::string& pointer,
                      const ordered_json& value) {
  return CodesOf(With(exchange, pointer, value).losses);
}

TEST(JsonList, HoldsChannelsAsTheyAreShown) {
  Exchange exchange = Radio();
  exchange.Context().codePage = 1252;
  const ordered_json document = DocumentOf(exchange);
  EXPECT_EQ("channels", document.at("tunedex"));
  EXPECT_EQ(1, document.at("version"));
  EXPECT_EQ(49, document.at("country"));
  EXPECT_EQ("FMRadio", document.at("signal"));
  EXPECT_EQ("kHz", document.at("units").at("frequency"));
  EXPECT_EQ(1252, document.at("codepage"));
  ASSERT_EQ(exchange.Channels().size(), document.at("channels").size());
  EXPECT_EQ(channel_json::Whole(exchange.Channels()[2], exchange.Signal(), exchange.Narrow()),
            document.at("channels")[2]);
}

TEST(JsonList, KeepsALockThatIsNoMark) {
  Exchange exchange = Radio();
  exchange.Channels()[0].lock = 5;
  EXPECT_EQ(5, DocumentOf(exchange).at("channels")[0].at("lock"));
  EXPECT_EQ(true, With(exchange, "/lock", true).table.channels[0].lock == 1);
}

TEST(JsonList, AccountsForEveryKey) {
  const Exchange fm = Radio();
  EXPECT_EQ("", CodesWith(fm, "/frequency", 98500));
  EXPECT_EQ("L502 colour", CodesWith(fm, "/colour", "red"));
  EXPECT_EQ("L502 colour", CodesWith(fm, "/block/colour", "red"));
  EXPECT_EQ("L503 freq", CodesWith(fm, "/frequency", "much"));
  EXPECT_EQ("L503 freq", CodesWith(fm, "/frequency", 4294967296));
  EXPECT_EQ("L503 freq", CodesWith(fm, "/frequency", 1e300));
  EXPECT_EQ("L503 freq", CodesWith(fm, "/frequency", ordered_json::array({1})));
  EXPECT_EQ("L503 name", CodesWith(fm, "/name", 1));
  EXPECT_EQ("L503 block", CodesWith(fm, "/block", 1));
  EXPECT_EQ("L101 tsid", CodesWith(fm, "/tsid", 7));  // FM has none
  EXPECT_EQ("", CodesWith(fm, "/tsid", 0));
  EXPECT_EQ("L101 scrambled", CodesWith(fm, "/scrambled", true));
}

TEST(JsonList, AccountsForEveryValueOfABlock) {
  const Exchange satellite(49, InputSignalDVBSatellite);
  EXPECT_EQ("", CodesWith(satellite, "/block/SatelliteParams/innerFECRate", "7/8"));
  EXPECT_EQ("L110 innerFECRate",
            CodesWith(satellite, "/block/SatelliteParams/innerFECRate", "8/9"));
  EXPECT_EQ("L503 VideoStream", CodesWith(satellite, "/block/VideoStream", "none"));
  EXPECT_EQ("L503 VideoStream.lang", CodesWith(satellite, "/block/VideoStream/0/lang", 4096));
  EXPECT_EQ("L503 VideoStream.pid", CodesWith(satellite, "/block/VideoStream/0/pid", 65536));
  EXPECT_EQ("L503 numOfVideoStreams", CodesWith(satellite, "/block/numOfVideoStreams", 2));
  EXPECT_EQ("L101 serviceType", CodesWith(satellite, "/serviceType", "Others"));
  EXPECT_EQ("L502 SatelliteParams", CodesWith(satellite, "/block/SatelliteParams", 3));
}

TEST(JsonList, LeavesOutWhatIsNoChannel) {
  const Exchange exchange = Radio();
  ordered_json document = DocumentOf(exchange);
  const std::size_t count = document["channels"].size();
  document["channels"][0] = "channel";
  document["channels"][1] = ordered_json::array();
  const Import in = exchange.In("json", document.dump());
  EXPECT_EQ("L501 channels", CodesOf(in.losses));
  EXPECT_EQ(count, in.read);
  EXPECT_EQ(count - 2, in.taken);
}

TEST(JsonList, TakesAMark) {
  const Exchange exchange = Radio();
  const Import in = exchange.In("json", "\xEF\xBB\xBF" + DocumentOf(exchange).dump());
  EXPECT_TRUE(SameChannels(exchange.Channels(), in.table.channels));
}

TEST(JsonList, RefusesWhatIsNoListOfChannels) {
  const Exchange exchange = Radio();
  for (const char* text :
       {"[]", "{}", "1", "null", "{\"tunedex\":\"channels\"}",
        "{\"tunedex\":\"loss\",\"channels\":[]}", "{\"tunedex\":\"channels\",\"channels\":{}}"}) {
    ExpectRaised<Failure>("the file is no list of channels", [&] { exchange.In("json", text); });
  }
  ordered_json document = DocumentOf(exchange);
  document["signal"] = "DVBSatellite";
  ExpectRaised<Failure>("the file holds channels of DVBSatellite, not of FMRadio",
                        [&] { exchange.In("json", document.dump()); });
  for (const std::string text : {"", "{", "name,freq\n", "{\"tunedex\":\"\xFF\"}", "1e999999"}) {
    EXPECT_THROW(exchange.In("json", text), Failure) << text;
  }
}

TEST(JsonList, AccountsForEveryKeyOfAStream) {
  const Exchange satellite(49, InputSignalDVBSatellite);
  EXPECT_EQ("L502 VideoStream.colour", CodesWith(satellite, "/block/VideoStream/0/colour", "red"));
  EXPECT_EQ("L502 VideoStream.colour",
            CodesWith(satellite, "/block/VideoStream/0/colour", ordered_json::array({1})));
}

TEST(JsonList, AccountsForTheKeysOfTheDocument) {
  const Exchange exchange = Radio();
  const auto with = [&](const char* key, const ordered_json& value) {
    ordered_json document = DocumentOf(exchange);
    document[key] = value;
    return CodesOf(exchange.In("json", document.dump()).losses);
  };
  EXPECT_EQ("", with("country", 7));
  EXPECT_EQ("L502 colour", with("colour", "red"));
  EXPECT_EQ("", with("units", {{"symbolRate", "kSymbol/s"}}));
  ExpectRaised<Failure>("the file is of version 2, not of 1", [&] { with("version", 2); });
  for (const ordered_json& units : {ordered_json({{"frequency", "Hz"}}), ordered_json("kHz"),
                                    ordered_json({{"frequency", "kHz"}, {"angle", "rad"}})}) {
    ExpectRaised<Failure>("the file's units are not kHz and kSymbol/s",
                          [&] { with("units", units); });
  }
}

TEST(JsonList, RefusesMoreMembersThanAnythingHas) {
  const Exchange exchange = Radio();
  const std::string head = "{\"tunedex\":\"channels\",\"channels\":[";
  const auto expectRefused = [&](const std::string& text) {
    ExpectRaised<Failure>("the file is no list of channels", [&] { exchange.In("json", text); });
  };
  std::string keys = "{\"name\":\"One\"";
  for (int i = 2; i <= 256; ++i) keys += ",\"k" + std::to_string(i) + "\":{\"a\":[1,2]}";
  const Import most = exchange.In("json", head + keys + "}]}");
  EXPECT_EQ(255U, most.losses.All().size());
  EXPECT_EQ(1U, most.taken);
  expectRefused(head + keys + ",\"k\":0}]}");
  std::string values = "{\"block\":{\"VideoStream\":[{}";
  for (int i = 1; i <= 256; ++i) values += ",{}";
  expectRefused(head + values + "]}}]}");
  // One list, wherever it stands.
  expectRefused(head + "],\"channels\":[]}");
  EXPECT_EQ(1U,
            exchange.In("json", "{\"channels\":[{\"block\":{}}],\"tunedex\":\"channels\"}").taken);
}

TEST(JsonList, ComesToAnEndWithHostileDocuments) {
  const Exchange exchange = Radio();
  const auto repeated = [](const std::string& part) {
    std::string text;
    while (text.size() < 200'000) text += part;
    return text;
  };
  EXPECT_THROW(exchange.In("json", repeated("[")), Failure);
  EXPECT_THROW(exchange.In("json", repeated("{\"a\":")), Failure);
  EXPECT_THROW(exchange.In("json", repeated("9")), Failure);
  const std::string head = "{\"tunedex\":\"channels\",\"channels\":[";
  EXPECT_EQ("L201 name",
            CodesOf(exchange.In("json", head + "{\"name\":\"" + repeated("x") + "\"}]}").losses));
  EXPECT_EQ("L501 channels", CodesOf(exchange.In("json", head + repeated("1,") + "1]}").losses));
  EXPECT_THROW(
      exchange.In("json", head + "],\"signal\":" + repeated("[") + std::string(200'000, ']') + "}"),
      Failure);
  const Import deep = exchange.In("json", head + repeated("[") + std::string(200'000, ']') + "]}");
  EXPECT_EQ("L501 channels", CodesOf(deep.losses));
}

}  // namespace

}  // namespace zortunedex::kit

#include "kit/selection/channel_field.h"

#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/json/channel_json.h"
#include "kit/model/channel_table.h"
#include "kit/text/printable.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

using nlohmann::ordered_json;

class ChannelFields : public testing::Test {
 protected:
  FieldValue Value(DWORD country, InputSignalType signal, std::size_t place,
                   const std::string& name) const {
    const Location location = m_home.At(country, signal);
    const Database database(location);
    const NarrowText narrow(database);
    return ChannelField(signal, name).Of(ReadTable(location).channels.at(place), narrow);
  }
  static FieldValue Number(std::int64_t number) { return number; }
  static FieldValue Text(const char* text) { return std::string(text); }

  const Home m_home;
};

TEST_F(ChannelFields, AreThoseOfTheRecord) {
  const auto value = [this](const char* name) { return Value(1, InputSignalATSCAntenna, 0, name); };
  EXPECT_EQ(Number(1), value("index"));
  EXPECT_EQ(Number(33), value("number"));
  EXPECT_EQ(Number(33), value("physicalChannel"));
  EXPECT_EQ(Text("2.1 WCBS-HD"), value("displayName"));
  EXPECT_EQ(Text("2.1 WCBS-HD"), value("nameDisplay"));
  EXPECT_EQ(Text("DigitalTV"), value("serviceType"));
  EXPECT_EQ(Number(2), value("block.serviceType"));
  EXPECT_EQ(Number(1), value("favor"));
  EXPECT_EQ(FieldValue(false), value("lock"));
  EXPECT_EQ(Number(3), value("programNumber"));
  EXPECT_EQ(Number(3), value("block.programNumber"));
  EXPECT_EQ(Number(53), value("AudioStream[2].pid"));
  EXPECT_EQ(Number(53), value("block.AudioStream[2].pid"));
  EXPECT_EQ(FieldValue(), value("AudioStream[3].pid"));
}

/// As it is shown: control characters, which the samples have in some code pages, come as escapes.
std::string AsText(const ordered_json& value) {
  if (value.is_null()) return "-";
  if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
  return value.is_string() ? Printable(std::string_view(value.get_ref<const std::string&>()))
                           : value.dump();
}

/// Calls with the name and value of everything in the JSON of a channel that is no list or object.
template <typename Take>
void ForEachLeaf(const ordered_json& object, const std::string& prefix, Take take) {
  for (const auto& [name, value] : object.items()) {
    if (value.is_object()) {
      ForEachLeaf(value, prefix + name + ".", take);
    } else if (value.is_array()) {
      for (std::size_t i = 0; i < value.size(); ++i) {
        ForEachLeaf(value[i], prefix + name + "[" + std::to_string(i + 1) + "].", take);
      }
    } else {
      take(prefix + name, value);
    }
  }
}

// Every name that JSON has leads to the value that it has there, and every name that is listed to
// one, whatever the signal type.
TEST_F(ChannelFields, AreEverythingThatJsonHas) {
  std::size_t checked = 0;
  for (const auto& [country, signal] :
       {std::pair<DWORD, InputSignalType>{1, InputSignalATSCAntenna},
        {49, InputSignalDVBSatellite},
        {81, InputSignalISDBTerrestrialOneSeg},
        {82, InputSignalTDMBMobile}}) {
    const Location location = m_home.At(country, signal);
    const Database database(location);
    const NarrowText narrow(database);
    for (const Channel& channel : ReadTable(location).channels) {
      const ordered_json whole = channel_json::Whole(channel, signal, narrow);
      ForEachLeaf(whole, "", [&](const std::string& name, const ordered_json& value) {
        EXPECT_EQ(AsText(value), FieldText(ChannelField(signal, name).Of(channel, narrow)))
            << SignalTypeName(signal) << ' ' << name;
        ++checked;
      });
    }
  }
  EXPECT_LT(500U, checked);
  for (const InputSignalType signal : StorableSignalTypes()) {
    for (std::string name : ChannelField::Names(signal)) {
      if (const std::size_t dots = name.find("1.."); dots != std::string::npos) {
        name.erase(dots, 3);  // the last entry
      }
      EXPECT_EQ(name, ChannelField(signal, name).Name());
    }
  }
}

TEST_F(ChannelFields, ThatAreMistypedNameTheNearest) {
  const auto expect = [](const std::string& nearest, const char* name) {
    try {
      ChannelField(InputSignalDVBSatellite, name);
      ADD_FAILURE() << name << " is no field";
    } catch (const InvalidArgument& error) {
      const std::string message = "channels of DVBSatellite have no field '" + std::string(name) +
                                  "'" + nearest + "; the fields are index, number, ";
      EXPECT_TRUE(std::string(error.what()).starts_with(message)) << error.what();
    }
  };
  expect("; the nearest is symbolRate", "symbolRat");
  expect("; the nearest is symbolRate", "symbolrate");
  expect("; the nearest is AudioStream[2].pid", "AudioStrem[2].pid");
  expect("", "foo");
  expect("", "AudioStream[17].pid");
}

TEST_F(ChannelFields, OfOtherTypesAreRefused) {
  ExpectRaised<InvalidArgument>(
      "channels of FMRadio have no field 'serviceID'; the fields are index, number, name, "
      "displayName, frequency, offset, tsid, serviceType, favorite, lock, scrambled, mhp",
      [] { ChannelField(InputSignalFMRadio, "serviceID"); });
  try {
    ChannelField(InputSignalTDMBMobile, "foo");
    ADD_FAILURE() << "foo is no field";
  } catch (const InvalidArgument& error) {
    EXPECT_NE(std::string::npos,
              std::string(error.what()).find(", BitRate, ServiceID, Component_index, "));
    EXPECT_NE(std::string::npos,
              std::string(error.what()).find("AudioStream[1..8].type/pid/lang, "));
    EXPECT_TRUE(std::string(error.what()).ends_with(", Components[1..8].name/type"));
  }
  for (const char* name :
       {"", "block.", "block.index", "block.name", "AudioStream", "AudioStream[0].pid",
        "AudioStream[17].pid", "AudioStream[1]", "AudioStream[1].", "AudioStream[1].name",
        "AudioStream[x].pid", "AudioStream[].pid", "[1].pid", "Components[1].name", "].", "[",
        "SatelliteParams", "SatelliteParams.foo", "NUMBER"}) {
    EXPECT_THROW(ChannelField(InputSignalDVBSatellite, name), InvalidArgument) << name;
  }
  // A type whose channels have no block has what the record answers.
  EXPECT_EQ("tsid", ChannelField(InputSignalDVBCable, "tsid").Name());
  EXPECT_THROW(ChannelField(InputSignalDVBCable, "serviceID"), InvalidArgument);
}

TEST_F(ChannelFields, ReadNothingBehindTheEndOfABlock) {
  const Database database(m_home.Satellites());
  const NarrowText narrow(database);
  Channel channel;
  const auto value = [&](const char* name) {
    return FieldText(ChannelField(InputSignalDVBSatellite, name).Of(channel, narrow));
  };
  for (const std::size_t size : {0U, 5U, 190U, 200U}) {
    channel.block.assign(size, 0xFF);
    EXPECT_EQ("-", value("polarisation")) << size;
    EXPECT_EQ("-", value("networkName")) << size;
    EXPECT_EQ("-", value("AudioStream[2].pid")) << size;
  }
  EXPECT_EQ("-1", value("serviceID"));
}

}  // namespace

}  // namespace zortunedex::kit

// Names with raw markup in files of the pre-formatted form, from the broken file to what the
// library reads of the repaired one.
#include <algorithm>
#include <map>

#include "kit/check/repair.h"
#include "kit/home.h"
#include "kit/model/channel_layout.h"
#include "kit/model/channel_table.h"
#include "kit/saving/save_table.h"
#include "kit/text/signal_types.h"
#include "support/random.h"

namespace zortunedex::kit {

namespace {

constexpr UINT kChannels = 100;

/// What stands in the file until a name takes its place.
std::string Placeholder(UINT index) { return "N" + std::to_string(1000 + index) + "N"; }

std::string RawName(Random& random) {
  constexpr std::string_view kPieces[] = {"\"",  "<",       "/>",     " & ",  ">",
                                          "'",   "=\"",     "News 7", "\"/>", "<!--",
                                          "]]>", "name=\"", "</a>",   "<?x",  "\" lock=\""};
  std::string name = "&";
  for (std::uint32_t i = random(6); i > 0; --i) {
    name += kPieces[random(static_cast<std::uint32_t>(std::size(kPieces)))];
  }
  // Alone this one makes a name that splits in two ways.
  if (random(20) == 0) name += "\" nameDisplay=\"";
  return name + "x";
}

/// A file that the library writes, with the names put in raw.
std::string FileWith(const std::map<UINT, std::string>& names, InputSignalType signal) {
  const Home home(Home::Start::Empty);
  ChannelTable table{49, signal, {}};
  const auto* field = station_blocks::FindField(LayoutOf(signal).channel, "name");
  for (UINT index = 1; index <= kChannels; ++index) {
    Channel channel = EmptyChannel(LayoutOf(signal));
    const std::string name = Placeholder(index);
    std::copy(name.begin(), name.end(), channel.block.begin() + field->offset);
    channel.displayName = Wide(name);
    channel.index = index;
    table.channels.push_back(channel);
  }
  SaveTable(home.Path(), table, {StoragePreFmtXML, {}});
  std::string file = home.Channels();
  for (const auto& [index, name] : names) {
    for (std::size_t at = 0; (at = file.find(Placeholder(index), at)) != std::string::npos;) {
      file.replace(at, Placeholder(index).size(), name);
      at += name.size();
    }
  }
  return file;
}

TEST(CheckRawNames, AreReadByTheLibraryOrLeftOut) {
  Random random(66);
  std::size_t leftOut = 0;
  for (const InputSignalType signal : StorableSignalTypes()) {
    // Its names are in base64.
    if (signal == InputSignalISDBTerrestrialOneSeg) continue;
    SCOPED_TRACE(SignalTypeName(signal));
    std::map<UINT, std::string> names;
    for (UINT index = 1; index <= kChannels; ++index) names[index] = RawName(random);
    check::RepairSettings settings;
    settings.options = {check::Option::DropUnrepairable};
    check::Files files = {{std::string(check::kChannels), FileWith(names, signal)}};
    const check::Repaired repaired = check::Repair(files, settings);
    const Home home(Home::Start::Empty);
    home.Files().Write("ChanInfo.xml", check::BytesOf(repaired.after, check::kChannels).value());
    const ChannelTable table = ReadTable(home.At(49, signal));
    for (const Channel& channel : table.channels) {
      EXPECT_EQ(names[channel.index], utf::FromWide(channel.displayName));
      EXPECT_EQ(names[channel.index], utf::FromWide(channel.name));
      names.erase(channel.index);
    }
    const auto isLeftOut = [](const check::Finding& one) { return one.code->name == "ZT025"; };
    EXPECT_EQ(names.size(),
              static_cast<std::size_t>(std::ranges::count_if(repaired.mended, isLeftOut)));
    EXPECT_LT(names.size(), kChannels / 4);
    leftOut += names.size();
  }
  EXPECT_GT(leftOut, 0U);
}

}  // namespace

}  // namespace zortunedex::kit

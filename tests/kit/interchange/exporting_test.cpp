// The report of an export is complete: every value that does not come back is in it, and nothing
// else.
#include "kit/interchange/list/exporting.h"

#include "kit/failure.h"
#include "kit/interchange/exchange.h"
#include "kit/interchange/list/comparison.h"
#include "kit/interchange/services/channel_values.h"
#include "kit/model/channel_layout.h"
#include "kit/text/signal_types.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

namespace {

using interchange::AddDifferences;
using interchange::Code;
using interchange::Column;
using interchange::ExportRequest;
using interchange::FieldCode;
using interchange::Format;
using interchange::ImportRequest;
using interchange::ImportResult;
using interchange::Input;
using interchange::Losses;
using interchange::Output;
using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Source;

std::string Differences(const Exchange& exchange, const Channel& was, const Channel& became,
                        std::span<const FieldCode> codes = {}) {
  Losses losses;
  AddDifferences(was, became, {exchange.Context(), interchange::Names::Shown, codes}, losses);
  return CodesOf(losses);
}

void Put(Channel& channel, const Field& field, std::uint32_t value) {
  if (field.source != Source::Block) SetSourceValue(channel, field.source, value);
  if (field.width != 0) {
    station_blocks::Store(channel.block.data() + field.offset, field.width, value);
  }
}

/// Every column of the type that holds a number or a word, changed by itself.
void ExpectEveryNumber(const Exchange& exchange) {
  const Channel empty = EmptyChannel(LayoutOf(exchange.Signal()));
  for (const Column& column : interchange::ColumnsOf(exchange.Signal())) {
    if (column.field == nullptr || std::string_view(column.name).starts_with("numOf")) continue;
    const Field& field = *column.field;
    if (field.form == Form::Text || field.form == Form::Base64) continue;
    Channel one = empty;
    Channel two = empty;
    Put(one, field, 1);
    Put(two, field, 2);
    const bool isMark = field.source == Source::Index || field.source == Source::Favorite ||
                        field.source == Source::Lock;
    const std::string name = std::string(" ") + column.name;
    EXPECT_EQ((isMark ? "L104" : "L101") + name, Differences(exchange, one, empty));
    const bool isWord = !tuning_words::Of(field.form).empty();
    EXPECT_EQ((isMark ? "L104" : isWord ? "L110" : "L202") + name, Differences(exchange, one, two));
    const bool isType = std::string_view(column.name) == "serviceType";
    const char* assumed = isType ? "L312" : isWord ? "L310" : "L314";
    EXPECT_EQ((isMark ? "L104" : assumed) + name, Differences(exchange, empty, one));
    EXPECT_EQ("", Differences(exchange, one, one));
    const FieldCode own[] = {{column.name, Code::CaFlagCleared}};
    EXPECT_EQ("L203" + name, Differences(exchange, one, empty, own));
  }
}

/// Every value of every list's entries, changed by itself.
void ExpectEveryEntry(const Exchange& exchange) {
  for (const Column& column : interchange::ColumnsOf(exchange.Signal())) {
    if (column.list == nullptr) continue;
    Channel two = EmptyChannel(LayoutOf(exchange.Signal()));
    BYTE* block = two.block.data();
    station_blocks::Store(block + column.list->countOffset, 4, 2);
    Channel one = two;
    station_blocks::Store(one.block.data() + column.list->countOffset, 4, 1);
    Channel none = two;
    station_blocks::Store(none.block.data() + column.list->countOffset, 4, 0);
    const std::string name = column.name;
    EXPECT_EQ("L102 " + name, Differences(exchange, two, one));
    EXPECT_EQ("L101 " + name, Differences(exchange, two, none));
    EXPECT_EQ("L312 " + name, Differences(exchange, one, two));
    for (const Field& field : station_blocks::EntryFields(column.list->entrySize)) {
      Channel other = two;
      other.block[column.list->offset + column.list->entrySize + field.offset] = 1;
      const bool isKind = field.attribute == std::string_view("type") ||
                          field.attribute == std::string_view("lang");
      EXPECT_EQ((isKind ? "L103 " : "L101 ") + name + "." + field.attribute,
                Differences(exchange, two, other));
    }
  }
}

TEST(Comparison, FindsEveryValueOfEveryType) {
  for (const InputSignalType signal : StorableSignalTypes()) {
    SCOPED_TRACE(SignalTypeName(signal));
    const Exchange exchange(999, signal);
    ExpectEveryNumber(exchange);
    ExpectEveryEntry(exchange);
  }
}

Channel Named(const Exchange& exchange, const std::string& name, const std::string& shown) {
  Channel channel = EmptyChannel(LayoutOf(exchange.Signal()));
  const Field& field = *station_blocks::FindField(LayoutOf(exchange.Signal()).channel, "name");
  std::copy(name.begin(), name.end(), channel.block.begin() + field.offset);
  channel.name = Wide(name);
  channel.displayName = Wide(shown);
  return channel;
}

TEST(Comparison, TellsANameThatWasChangedFromOneThatWasNotCarried) {
  const Exchange exchange(999, InputSignalFMRadio);
  const Channel plain = Named(exchange, "a:b", "a:b");
  const Channel users = Named(exchange, "a", "mine:");
  EXPECT_EQ("L201 name, L201 nameDisplay",
            Differences(exchange, plain, Named(exchange, "a|b", "a|b")));
  EXPECT_EQ("L101 name", Differences(exchange, users, Named(exchange, "mine:", "mine:")));
  EXPECT_EQ("L101 name, L201 nameDisplay",
            Differences(exchange, users, Named(exchange, "mine|", "mine|")));
  Losses losses;
  AddDifferences(users, Named(exchange, "a", "a"),
                 {exchange.Context(), interchange::Names::Broadcast, {}}, losses);
  EXPECT_EQ("L101 nameDisplay", CodesOf(losses));
}

TEST(Comparison, TellsATextThatIsGoneFromOneThatWasChanged) {
  const Exchange exchange(49, InputSignalDVBSatellite);
  const Channel empty = EmptyChannel(LayoutOf(exchange.Signal()));
  Channel one = empty;
  Channel two = empty;
  one.block[352] = 'a';  // networkName
  two.block[352] = 'b';
  EXPECT_EQ("L101 networkName", Differences(exchange, one, empty));
  EXPECT_EQ("L201 networkName", Differences(exchange, one, two));
}

constexpr InputSignalType kRadio[] = {InputSignalFMRadio};

void WriteTwo(const ExportRequest& request, Output& output, Losses& losses) {
  output.Bytes() = "two";
  output.written = {0, 1};
  for (std::size_t i = 2; i < request.channels.size(); ++i) {
    losses.Add(Code::IdentityTwice, "channel", {request.channels[i].index, {}, 0});
  }
}

ImportResult ReadOne(const Input& input, const ImportRequest& request, Losses&) {
  EXPECT_EQ("two", input.bytes);
  return {{{EmptyChannel(LayoutOf(request.context.signal)), 1}}, 1};
}

std::vector<Channel> ReadTwoBack(const Output&, const ExportRequest& request) {
  std::vector<Channel> channels(request.channels.begin(), request.channels.begin() + 2);
  channels[1].frequency = 0;
  return channels;
}

TEST(Exporting, HoldsWhatWasWrittenAgainstTheList) {
  const Exchange exchange(49, InputSignalFMRadio);
  const Format format = {"two", kRadio, kRadio, false, WriteTwo, ReadOne, ReadTwoBack};
  const interchange::Export out = interchange::ExportChannels(format, exchange.Request());
  EXPECT_EQ("L101 freq, L403 channel", CodesOf(out.losses));
  EXPECT_EQ(exchange.Channels().size() - 1, out.losses.All().size());
}

TEST(Exporting, FailsWhenNotAllReadsBack) {
  const Exchange exchange(49, InputSignalFMRadio);
  const Format format = {"two", kRadio, kRadio, false, WriteTwo, ReadOne};
  ExpectRaised<Failure>("2 channels were written and 1 read back",
                        [&] { interchange::ExportChannels(format, exchange.Request()); });
}

TEST(Exporting, RefusesBlocksOfAnotherType) {
  Exchange exchange(49, InputSignalFMRadio);
  exchange.Channels()[0].block.pop_back();
  ExpectRaised<InvalidArgument>("a channel has not the station block of FMRadio",
                                [&] { exchange.Out("csv"); });
}

TEST(Exporting, RefusesTypesThatTheFormatDoesNotHave) {
  const Exchange exchange(49, InputSignalDVBTerrestrial);
  const Format format = {"two", kRadio, kRadio, false, WriteTwo, ReadOne};
  ExpectRaised<Failure>("the format two has no form for DVBTerrestrial",
                        [&] { interchange::ExportChannels(format, exchange.Request()); });
  ExpectRaised<Failure>("the format two brings no channels of DVBTerrestrial", [&] {
    interchange::ImportChannels(format, {}, {exchange.Context(), {}}, interchange::Into::Empty);
  });
}

}  // namespace

}  // namespace zortunedex::kit

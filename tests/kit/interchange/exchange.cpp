#include "kit/interchange/exchange.h"

#include <algorithm>
#include <set>

#include "kit/model/channel_layout.h"
#include "kit/saving/stored_form.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Source;

namespace {

/// Of what the code page has.
std::string RandomText(Random& random, std::size_t limit, const NarrowText& narrow) {
  // What spreadsheets, XML and separators make something of, and letters of one to four bytes.
  static constexpr const char* kPieces[] = {"=",
                                            "+",
                                            "-",
                                            "@",
                                            "'",
                                            "\t",
                                            "\r",
                                            "\n",
                                            "\"",
                                            ",",
                                            ";",
                                            "|",
                                            "1",
                                            "2/3",
                                            ".",
                                            ":",
                                            "E",
                                            " ",
                                            "%7",
                                            "<x",
                                            "&",
                                            "a",
                                            "Z",
                                            "TRUE",
                                            "\\",
                                            "\xC3\xA4",
                                            "\xE2\x82\xAC",
                                            "\xF0\x9F\x98\x80"};
  std::string text;
  for (std::uint32_t pieces = random(9); pieces > 0; --pieces) {
    const std::string piece = kPieces[random(std::size(kPieces))];
    const bool fits = text.size() + piece.size() <= limit;
    if (fits && narrow.FromWide(*utf::ToWide(piece))) text += piece;
  }
  return text;
}

void PutText(Channel& channel, std::size_t offset, const std::string& text) {
  std::ranges::copy(text, channel.block.begin() + static_cast<std::ptrdiff_t>(offset));
}

void Fill(Channel& channel, const Field& field, Random& random, const NarrowText& narrow) {
  if (field.source == Source::Index) return;
  if (field.form == Form::Text || field.form == Form::Base64) {
    const std::string text = RandomText(random, TextLimit(field), narrow);
    if (field.source == Source::DisplayName) {
      channel.displayName = *utf::ToWide(text);
    } else {
      PutText(channel, field.offset, text);
    }
    return;
  }
  const auto words = tuning_words::Of(field.form);
  std::uint32_t value = random(3) == 0 ? random() : random(200);
  if (!words.empty()) {
    value =
        static_cast<std::uint32_t>(words[random(static_cast<std::uint32_t>(words.size()))].value);
  }
  SetSourceValue(channel, field.source, value);
  if (field.width != 0) {
    station_blocks::Store(channel.block.data() + field.offset, field.width, value);
  }
}

void FillEntries(Channel& channel, const Layout& layout, Random& random, const NarrowText& narrow) {
  for (const station_blocks::StreamList& list : layout.lists) {
    const std::uint32_t count = random(list.capacity + 2U);
    station_blocks::Store(channel.block.data() + list.countOffset, 4, count);
    for (std::size_t i = 0; i < std::size_t{list.capacity} * list.entrySize; ++i) {
      channel.block[list.offset + i] = static_cast<BYTE>(random());
    }
  }
  if (layout.components == nullptr) return;
  const station_blocks::ComponentList& parts = *layout.components;
  station_blocks::Store(channel.block.data() + parts.countOffset, 4, random(parts.capacity + 2U));
  for (std::size_t i = 0; i < parts.capacity; ++i) {
    PutText(channel, parts.nameOffset + i * parts.nameWidth,
            RandomText(random, kComponentNameLimit, narrow));
    station_blocks::Store(channel.block.data() + parts.typeOffset + i * 4, 4, random());
  }
}

}  // namespace

Exchange::Exchange(DWORD country, InputSignalType signal)
    : m_table(ReadTable(m_home.At(country, signal))),
      m_database(m_home.At(country, signal)),
      m_narrow(m_database),
      m_context{country, signal, m_database, m_narrow} {}

Channel Exchange::Stored(const Channel& channel) const {
  return AsStored(channel, m_table.signal, m_narrow, m_database.List().Get());
}

interchange::Export Exchange::Out(const char* format) const {
  return interchange::ExportChannels(*interchange::FindFormat(format), Request());
}

interchange::Import Exchange::In(const char* format, const std::string& bytes) const {
  interchange::Input input;
  input.bytes = bytes;
  return In(format, input);
}

interchange::Import Exchange::In(const char* format, const interchange::Input& input) const {
  return interchange::ImportChannels(*interchange::FindFormat(format), input, {m_context, {}},
                                     interchange::Into::Empty);
}

std::vector<file_scan::ChannelSet> SampleSets() {
  return file_scan::Scan(ZORTUNEDEX_SAMPLES "/home").sets;
}

Channel RandomChannel(const Exchange& exchange, Random& random, UINT index) {
  const Layout& layout = LayoutOf(exchange.Signal());
  Channel channel = EmptyChannel(layout);
  channel.index = index;
  FillEntries(channel, layout, random, exchange.Narrow());
  for (const auto& rows : {layout.channel, layout.elementStreams, layout.satelliteParams}) {
    for (const Field& row : rows) {
      const bool isCount = std::string_view(row.attribute).starts_with("numOf");
      if (!isCount && row.use == station_blocks::Use::Both)
        Fill(channel, row, random, exchange.Narrow());
    }
  }
  return exchange.Stored(channel);
}

std::string CodesOf(const interchange::Losses& losses) {
  std::set<std::string> seen;
  for (const interchange::Loss& loss : losses.All()) {
    seen.insert(interchange::CodeName(loss.code) + " " + loss.field);
  }
  std::string text;
  for (const std::string& one : seen) text += (text.empty() ? "" : ", ") + one;
  return text;
}

}  // namespace zortunedex::kit

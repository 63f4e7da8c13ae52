#include "kit/saving/stored_form.h"

#include <algorithm>
#include <cstdio>

#include "kit/failure.h"
#include "kit/model/channel_layout.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Source;
using station_blocks::StreamList;
using station_blocks::Use;

namespace {

bool IsText(const Field& field) { return field.form == Form::Text || field.form == Form::Base64; }

std::string_view SlotText(const Channel& channel, const station_blocks::ComponentList& parts,
                          std::size_t i) {
  return UpToZero(channel.block.data() + parts.nameOffset + i * parts.nameWidth, parts.nameWidth);
}

std::size_t CountOf(const Channel& channel, std::size_t countOffset, std::size_t capacity) {
  return std::min<std::size_t>(station_blocks::Fetch(channel.block.data() + countOffset, 4),
                               capacity);
}

/// Builds what comes back: starts empty and takes over what the rows keep.
class Keeper {
 public:
  Keeper(const Channel& from, const Layout& layout, const NarrowText& narrow)
      : m_from(from), m_layout(layout), m_narrow(narrow) {}

  Channel Keep() {
    m_kept.index = m_from.index;
    m_kept.displayName = m_from.displayName;
    m_kept.block.resize(m_layout.size);
    for (const auto& rows : {m_layout.channel, m_layout.elementStreams, m_layout.satelliteParams}) {
      for (const Field& row : rows) {
        if (row.use == Use::Both) KeepField(row);
      }
    }
    for (const StreamList& list : m_layout.lists) {
      if (list.use == Use::Both) KeepList(list);
    }
    if (m_layout.components != nullptr) KeepComponents(*m_layout.components);
    return std::move(m_kept);
  }

 private:
  void KeepField(const Field& field) {
    const bool ofRecord = field.source != Source::Block && field.source != Source::Name;
    if (ofRecord) SetSourceValue(m_kept, field.source, SourceValue(m_from, field.source));
    if (field.width == 0) return;
    if (IsText(field)) {
      const BYTE* from = m_from.block.data() + field.offset;
      return KeepText(UpToZero(from, field.width), field.offset, TextLimit(field));
    }
    std::uint32_t value =
        ofRecord ? SourceValue(m_from, field.source)
                 : station_blocks::Fetch(m_from.block.data() + field.offset, field.width);
    if (!tuning_words::Of(field.form).empty()) {
      value = static_cast<std::uint32_t>(
          tuning_words::AsRead(field.form, static_cast<std::int32_t>(value)));
    }
    station_blocks::Store(m_kept.block.data() + field.offset, field.width, value);
  }

  void KeepText(std::string_view narrow, std::size_t offset, std::size_t limit) {
    const std::string again = m_narrow.FromWide(m_narrow.ToWide(narrow)).value_or("");
    std::copy_n(again.begin(), std::min(again.size(), limit),
                m_kept.block.begin() + static_cast<std::ptrdiff_t>(offset));
  }

  void KeepList(const StreamList& list) {
    const std::size_t count = CountOf(m_from, list.countOffset, list.capacity);
    for (std::size_t i = 0; i < count; ++i) {
      const BYTE* from = m_from.block.data() + list.offset + i * list.entrySize;
      BYTE* to = m_kept.block.data() + list.offset + i * list.entrySize;
      for (const Field& field : station_blocks::EntryFields(list.entrySize)) {
        if (field.form == Form::Language) {
          station_blocks::StoreLanguage(to + field.offset,
                                        station_blocks::FetchLanguage(from + field.offset));
        } else {
          std::copy_n(from + field.offset, field.width, to + field.offset);
        }
      }
    }
  }

  void KeepComponents(const station_blocks::ComponentList& parts) {
    const std::size_t count = CountOf(m_from, parts.countOffset, parts.capacity);
    for (std::size_t i = 0; i < count; ++i) {
      KeepText(SlotText(m_from, parts, i), parts.nameOffset + i * parts.nameWidth,
               kComponentNameLimit);
      const std::size_t type = parts.typeOffset + i * 4;
      std::copy_n(m_from.block.data() + type, 4, m_kept.block.data() + type);
    }
  }

  const Channel& m_from;
  const Layout& m_layout;
  const NarrowText& m_narrow;
  Channel m_kept;
};

/// Judges the texts of one channel.
class TextJudge {
 public:
  TextJudge(const Channel& channel, const NarrowText& narrow, bool preFormatted)
      : m_channel(channel), m_narrow(narrow), m_preFormatted(preFormatted) {}

  void RequireField(const Field& field) const {
    if (!IsText(field)) return;
    const bool isXml = field.form == Form::Text;
    if (field.source == Source::DisplayName) {
      return RequireWide(field.attribute, m_channel.displayName, TextLimit(field), isXml);
    }
    RequireNarrow(field.attribute, UpToZero(m_channel.block.data() + field.offset, field.width),
                  TextLimit(field), isXml);
  }

  void RequireComponents(const station_blocks::ComponentList& parts) const {
    const std::size_t count = CountOf(m_channel, parts.countOffset, parts.capacity);
    for (std::size_t i = 0; i < count; ++i) {
      RequireNarrow("Components[" + std::to_string(i + 1) + "].name", SlotText(m_channel, parts, i),
                    kComponentNameLimit, true);
    }
  }

 private:
  std::string Name(const std::string& field) const {
    return "channel " + std::to_string(m_channel.index) + ": " + field;
  }

  /// ASCII of the page's own that no form has to escape: there is nothing to ask.
  template <typename Text>
  bool IsPlain(const Text& text, std::size_t limit) const {
    return text.size() <= limit && m_narrow.KeepsAscii() &&
           std::all_of(text.begin(), text.end(), [](auto unit) {
             return unit >= ' ' && unit < 0x7F && unit != '"' && unit != '<' && unit != '&';
           });
  }

  // Bytes that are no text of the code page come out as U+FFFD and would be written as that.
  void RequireNarrow(const std::string& field, std::string_view bytes, std::size_t limit,
                     bool isXml) const {
    if (IsPlain(bytes, limit)) return;
    const WideText wide = m_narrow.ToWide(bytes);
    const std::optional<std::string> again = m_narrow.FromWide(wide);
    const bool replaced = wide.find(OLECHAR{utf::kReplacement}) != WideText::npos;
    if (!again || (replaced && *again != bytes)) {
      throw Failure{E_INVALIDARG, Name(field) +
                                      " is no text of the code page; choose the right one "
                                      "with --codepage"};
    }
    RequireWide(field, wide, limit, isXml);
  }

  void RequireWide(const std::string& field, WideView wide, std::size_t limit, bool isXml) const {
    if (IsPlain(wide, limit)) return;
    const std::string what = Name(field);
    m_narrow.Require(wide, limit, what);
    if (isXml) RequireWritable(wide, m_preFormatted, what);
  }

  const Channel& m_channel;
  const NarrowText& m_narrow;
  bool m_preFormatted;
};

}  // namespace

std::optional<std::string> Unwritable(WideView text, bool preFormatted) {
  while (!text.empty()) {
    const std::uint32_t character = utf::Next(text);
    const bool blank = character == '\t' || character == '\n' || character == '\r';
    const bool impossible = (character < 0x20 && !blank) || utf::IsHighSurrogate(character) ||
                            utf::IsLowSurrogate(character) || character == 0xFFFE ||
                            character == 0xFFFF;
    const bool markup = character == '"' || character == '<' || character == '&';
    if (!impossible && !(preFormatted && (markup || blank))) continue;
    if (markup) return std::string("'") + static_cast<char>(character) + "'";
    char code[16];
    std::snprintf(code, sizeof(code), "U+%04X", static_cast<unsigned>(character));
    return code;
  }
  return std::nullopt;
}

void RequireWritable(WideView text, bool preFormatted, const std::string& what) {
  const std::optional<std::string> character = Unwritable(text, preFormatted);
  if (!character) return;
  throw Failure{E_INVALIDARG, what + " holds " + *character + ", which the " +
                                  (preFormatted ? "pre-formatted form" : "file") + " cannot keep"};
}

Channel AsStored(const Channel& channel, InputSignalType signal, const NarrowText& narrow,
                 IChannelInfoMgr* list) {
  const Channel kept = Keeper(channel, LayoutOf(signal), narrow).Keep();
  // A record fills an empty display name and works out what follows from the block.
  ComPtr<IChannelInfo> record;
  Require(list->CreateChannelInfo(record.Receive()), "a record cannot be made");
  record->SetChannelIndex(kept.index);  // answers E_NOTIMPL and stores it
  WriteChannel(kept, signal, record.Get());
  return ReadChannel(record.Get());
}

void RequireStorable(const Channel& channel, InputSignalType signal, const NarrowText& narrow,
                     bool preFormatted) {
  const Layout& layout = LayoutOf(signal);
  const TextJudge judge(channel, narrow, preFormatted);
  for (const auto& rows : {layout.channel, layout.elementStreams, layout.satelliteParams}) {
    for (const Field& row : rows) judge.RequireField(row);
  }
  if (layout.components != nullptr) judge.RequireComponents(*layout.components);
}

}  // namespace zortunedex::kit

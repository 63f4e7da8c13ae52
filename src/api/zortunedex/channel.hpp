// A channel as a value.
#pragma once

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "api/zortunedex/context.hpp"
#include "api/zortunedex/streams.hpp"

namespace zortunedex {

namespace detail {
struct Inside;
}

/// What a field holds when its name is known at run time only: a number or UTF-8.
using field_value = std::variant<std::int64_t, std::string>;

/// One channel of a list, by value: a copy is another channel, and nothing reaches the file before
/// database::edit. Texts are UTF-8. Frequencies are in the file's unit, which for files of this
/// system is kHz; rates are in thousands of symbols a second.
class channel {
 public:
  /// The kind of signal.
  zortunedex::signal signal() const { return m_context->Signal(); }
  /// The place in the list, from 1; 0 for a channel that no list has taken yet. Some files have
  /// gaps.
  unsigned index() const { return m_values.index; }
  /// The physical (RF) channel.
  unsigned number() const { return m_values.number; }
  /// In kHz; as the file has it.
  std::uint32_t frequency() const { return m_values.frequency; }
  /// The name that the broadcaster gives.
  std::string name() const { return std::get<std::string>(get("name")); }
  /// The name that the user sees.
  std::string display_name() const { return m_values.displayName; }
  /// True for a favourite.
  bool favorite() const { return m_values.favorite != 0; }
  /// The mark of a favourite, 0 for none.
  unsigned favorite_mark() const { return m_values.favorite; }
  /// True where the host asks for a password.
  bool locked() const { return m_values.lock != 0; }
  /// The kind of service, as the library tells it; unknown where the channel names none.
  zortunedex::service service() const {
    EServiceType type = ServiceUnknown;
    const bool isTold = SUCCEEDED(Asked()->GetServiceType(&type));
    return isTold ? static_cast<zortunedex::service>(type) : zortunedex::service::unknown;
  }
  /// True for a service that is scrambled; DVB-S and DVB-T tell.
  bool scrambled() const {
    BOOL value = 0;
    return SUCCEEDED(Asked()->IsScrambled(&value)) && value != 0;
  }
  /// True for a service with DSM-CC and MHP streams; DVB-S and DVB-T tell.
  bool has_mhp() const {
    BOOL value = 0;
    return SUCCEEDED(Asked()->GetMhp(&value)) && value != 0;
  }

  /// The field that the file keeps under a name: c.get<"serviceID">(). A name that no kind of
  /// signal has does not compile; one that this channel's kind lacks raises an error. Numbers of
  /// four bytes are signed, as the file has them.
  template <field_name Name>
  field_type<Name> get() const {
    constexpr detail::Meaning kMeaning = detail::MeaningOf(Name.view());
    static_assert(kMeaning.isThere, "no channel has a field of that name");
    static_assert(kMeaning.isOne, "the name stands for values of several types");
    const field_value value = get(Name.view());
    if constexpr (std::same_as<field_type<Name>, std::string>) {
      return std::get<std::string>(value);
    } else {
      return static_cast<field_type<Name>>(std::get<std::int64_t>(value));
    }
  }
  /// The same for a name that is known at run time; parameters that are words come as their number.
  field_value get(std::string_view name) const {
    return detail::Guarded("read", Where(), [&] { return Fetch(Row(name)); });
  }
  /// The names of this channel's fields, in the order of the file.
  std::vector<std::string_view> fields() const {
    std::vector<std::string_view> names;
    detail::ForEachRow(m_context->BlockLayout(),
                       [&](const detail::Field& row) { names.push_back(row.attribute); });
    return names;
  }

  /// Sets the field that the file keeps under a name: c.set<"networkName">("ASTRA 1"). Raises an
  /// error where this channel's kind lacks it, for a number that it cannot hold, and for a text
  /// that is no UTF-8, too long for the field or out of the code page; the channel stays as it was
  /// then.
  template <field_name Name, typename Value>
  channel& set(const Value& value) {
    constexpr detail::Meaning kMeaning = detail::MeaningOf(Name.view());
    static_assert(kMeaning.isThere, "no channel has a field of that name");
    static_assert(kMeaning.isOne, "the name stands for values of several types");
    static_assert(kMeaning.source != detail::Source::Index, "the list numbers its channels");
    static_assert(!detail::IsCount(Name.view()), "set the streams: their count follows");
    if constexpr (detail::IsText(kMeaning.form)) {
      static_assert(std::convertible_to<const Value&, std::string_view>, "the field is a text");
      return set(Name.view(), field_value(std::string(std::string_view(value))));
    } else if constexpr (std::same_as<field_type<Name>, std::int64_t>) {
      static_assert(std::integral<Value>, "the field is a number");
      return set(Name.view(), field_value(Number(Name.view(), value)));
    } else {
      static_assert(std::same_as<Value, field_type<Name>>, "the field is a value of that type");
      return set(Name.view(), field_value(std::int64_t{value}));
    }
  }
  /// The same for a name that is known at run time.
  channel& set(std::string_view name, const field_value& value) {
    detail::Guarded("set", Where(), [&] { Store(Row(name), value); });
    return *this;
  }

  /// Sets the physical (RF) channel.
  channel& set_number(unsigned value) {
    return Set(detail::Source::PhysicalChannel, "number", value);
  }
  /// Sets the frequency, in kHz.
  channel& set_frequency(std::uint32_t value) {
    return Set(detail::Source::Frequency, "frequency", value);
  }
  /// Sets the name that the broadcaster gives. Refuses texts as set does.
  channel& set_name(std::string_view value) {
    return Set(detail::Source::Name, "name", std::string(value));
  }
  /// Sets the name that the user sees; an empty one becomes one that the library makes of the
  /// station. Refuses texts as set does.
  channel& set_display_name(std::string_view value) {
    return Set(detail::Source::DisplayName, "display name", std::string(value));
  }
  /// Marks a favourite with 1, or takes the mark away.
  channel& set_favorite(bool value = true) { return set_favorite_mark(value ? 1 : 0); }
  /// Sets the mark of a favourite; 0 takes it away.
  channel& set_favorite_mark(unsigned value) {
    return Set(detail::Source::Favorite, "favourite mark", value);
  }
  /// Sets or takes the lock.
  channel& set_locked(bool value = true) { return Set(detail::Source::Lock, "lock", int{value}); }

  /// The streams of a kind: for (auto s : c.streams<"AudioStream">()). Names are those of the
  /// file's elements. One that no kind of signal has does not compile; one that this kind lacks
  /// raises an error.
  template <field_name Element>
  std::vector<stream_type<Element>> streams() const {
    static_assert(detail::EntrySizeOf(Element.view()) != 0, "no channel has streams of that name");
    const detail::StreamList& list = List(Element.view());
    std::vector<stream_type<Element>> result;
    for (std::size_t i = 0; i < Count(list.countOffset, list.capacity); ++i) {
      result.push_back(detail::FetchStream<stream_type<Element>>(
          m_values.block.data() + list.offset + i * list.entrySize, list));
    }
    return result;
  }
  /// Replaces the streams of a kind and their count. Raises an error where there are more than the
  /// kind of signal holds, for a number that an entry cannot hold, and for T-DMB, whose files keep
  /// none; the channel stays as it was then.
  template <field_name Element>
  channel& set_streams(const std::vector<stream_type<Element>>& values) {
    static_assert(detail::EntrySizeOf(Element.view()) != 0, "no channel has streams of that name");
    const detail::StreamList& list = List(Element.view());
    if (list.use != detail::Use::Both) Refuse(E_NOTIMPL, list.element, "the file does not keep it");
    if (values.size() > list.capacity) Refuse(E_INVALIDARG, list.element, "there are too many");
    std::vector<BYTE> room(std::size_t{list.capacity} * list.entrySize);
    for (std::size_t i = 0; i < values.size(); ++i) {
      const char* bad = detail::StoreStream(room.data() + i * list.entrySize, list, values[i]);
      if (bad != nullptr) Refuse(E_INVALIDARG, list.element, std::string(bad) + " is out of range");
    }
    std::copy(room.begin(), room.end(), m_values.block.begin() + list.offset);
    station_blocks::Store(m_values.block.data() + list.countOffset, 4,
                          static_cast<std::uint32_t>(values.size()));
    return *this;
  }

  /// The components of a T-DMB service. Raises an error for other kinds.
  std::vector<component> components() const {
    const station_blocks::ComponentList& list = Components();
    return detail::Guarded("read", Where(), [&] {
      std::vector<component> result;
      for (std::size_t i = 0; i < Count(list.countOffset, list.capacity); ++i) {
        const BYTE* block = m_values.block.data();
        const std::string_view name =
            detail::UpToZero(block + list.nameOffset + i * list.nameWidth, list.nameWidth);
        const auto type = station_blocks::Fetch(block + list.typeOffset + 4 * i, 4);
        result.push_back({m_context->FromNarrow(name), static_cast<std::int32_t>(type)});
      }
      return result;
    });
  }
  /// Replaces them, at most eight. Refuses texts as set does.
  channel& set_components(const std::vector<component>& values) {
    detail::Guarded("set", Where(), [&] { Store(Components(), values); });
    return *this;
  }

 private:
  friend struct detail::Inside;

  channel(detail::SharedContext context, detail::Values values)
      : m_context(std::move(context)), m_values(std::move(values)) {}

  std::string Where() const {
    const std::string which =
        m_values.index == 0 ? "a new channel" : "channel " + std::to_string(m_values.index);
    return which + " of " + m_context->Place();
  }
  [[noreturn]] void Refuse(HRESULT result, std::string_view what, std::string reason) const {
    throw error(result, "set " + std::string(what) + " of", Where(), std::move(reason));
  }
  [[noreturn]] void Lacks(std::string_view what) const {
    throw error(E_INVALIDARG, "use " + std::string(what) + " of", Where(),
                "channels of " + std::string(name_of(signal())) + " have none");
  }

  const detail::Field& Row(std::string_view name) const {
    const detail::Field* row = detail::FindRow(m_context->BlockLayout(), name);
    if (row == nullptr) Lacks(name);
    return *row;
  }
  const detail::Field& Row(detail::Source source, std::string_view name) const {
    const detail::Field* row = detail::FindRow(m_context->BlockLayout(), source);
    if (row == nullptr) Lacks(name);
    return *row;
  }
  const detail::StreamList& List(std::string_view element) const {
    for (const detail::StreamList& list : m_context->BlockLayout().lists) {
      if (element == list.element) return list;
    }
    Lacks(element);
  }
  const station_blocks::ComponentList& Components() const {
    if (m_context->BlockLayout().components == nullptr) Lacks("Components");
    return *m_context->BlockLayout().components;
  }
  std::size_t Count(std::size_t offset, std::size_t capacity) const {
    return std::min<std::size_t>(station_blocks::Fetch(m_values.block.data() + offset, 4),
                                 capacity);
  }
  ComPtr<IChannelInfo> Asked() const {
    return detail::Guarded("ask for", Where(), [&] { return m_context->Record(m_values); });
  }

  template <typename Value>
  std::int64_t Number(std::string_view name, Value value) const {
    if (!std::in_range<std::int64_t>(value))
      Refuse(E_INVALIDARG, name, "the number is out of range");
    return static_cast<std::int64_t>(value);
  }
  template <typename Value>
  channel& Set(detail::Source source, std::string_view name, Value value) {
    const detail::Field& row = Row(source, name);
    detail::Guarded("set", Where(), [&] { Store(row, field_value(std::move(value))); });
    return *this;
  }

  field_value Fetch(const detail::Field& row) const;
  void Store(const station_blocks::ComponentList& list, const std::vector<component>& values);
  void Store(const detail::Field& row, const field_value& value);
  void StoreText(const detail::Field& row, const std::string& text);
  void StoreNumber(const detail::Field& row, std::int64_t value);
  std::string Narrow(std::string_view what, const std::string& text, std::size_t limit) const;

  detail::SharedContext m_context;
  detail::Values m_values;
};

inline field_value channel::Fetch(const detail::Field& row) const {
  switch (row.source) {
    case detail::Source::DisplayName:
      return m_values.displayName;
    case detail::Source::Index:
      return std::int64_t{m_values.index};
    case detail::Source::PhysicalChannel:
      return std::int64_t{m_values.number};
    case detail::Source::Frequency:
      return std::int64_t{m_values.frequency};
    case detail::Source::OffsetFrequency:
      return std::int64_t{m_values.offset};
    case detail::Source::TransportStream:
      return std::int64_t{m_values.tsid};
    case detail::Source::Favorite:
      return std::int64_t{m_values.favorite};
    case detail::Source::Lock:
      return std::int64_t{m_values.lock};
    case detail::Source::Block:
    case detail::Source::Name:
      break;
  }
  const BYTE* place = m_values.block.data() + row.offset;
  if (!detail::IsText(row.form)) return detail::FetchNumber(place, row);
  return m_context->FromNarrow(detail::UpToZero(place, row.width));
}

inline void channel::Store(const detail::Field& row, const field_value& value) {
  const std::string_view name = row.attribute;
  if (row.use == detail::Use::ReadOnly) Refuse(E_NOTIMPL, name, "the file does not keep it");
  if (row.source == detail::Source::Index)
    Refuse(E_INVALIDARG, name, "the list numbers its channels");
  if (detail::IsCount(name)) Refuse(E_INVALIDARG, name, "it follows from what it counts");
  if (detail::IsText(row.form) != std::holds_alternative<std::string>(value)) {
    Refuse(E_INVALIDARG, name, detail::IsText(row.form) ? "it is a text" : "it is a number");
  }
  if (const std::string* text = std::get_if<std::string>(&value)) {
    StoreText(row, *text);
  } else {
    StoreNumber(row, std::get<std::int64_t>(value));
  }
}

inline std::string channel::Narrow(std::string_view what, const std::string& text,
                                   std::size_t limit) const {
  if (const char* reason = detail::WhyRefused(text)) Refuse(E_INVALIDARG, what, reason);
  const std::optional<std::string> narrow = m_context->ToNarrow(text);
  if (!narrow) Refuse(E_INVALIDARG, what, "the text holds characters outside the code page");
  if (narrow->size() > limit) {
    Refuse(E_INVALIDARG, what,
           "the text has more than " + std::to_string(limit) + " bytes in the code page");
  }
  return *narrow;
}

inline void channel::StoreText(const detail::Field& row, const std::string& text) {
  const std::string narrow = Narrow(row.attribute, text, detail::TextLimit(row.width));
  if (row.source == detail::Source::DisplayName) {
    m_values.displayName = text;
    return;
  }
  BYTE* place = m_values.block.data() + row.offset;
  std::fill_n(place, row.width, BYTE{0});
  std::copy(narrow.begin(), narrow.end(), place);
}

inline void channel::StoreNumber(const detail::Field& row, std::int64_t value) {
  const bool isLock = row.source == detail::Source::Lock;
  const std::size_t width = row.width == 0 ? 4 : row.width;
  if (!detail::Holds(width, row.form, value) || (isLock && (value < 0 || value > 1))) {
    Refuse(E_INVALIDARG, row.attribute, "the number is out of range");
  }
  const auto bits = static_cast<std::uint32_t>(value);
  switch (row.source) {
    case detail::Source::PhysicalChannel:
      m_values.number = bits;
      break;
    case detail::Source::Frequency:
      m_values.frequency = bits;
      break;
    case detail::Source::OffsetFrequency:
      m_values.offset = static_cast<LONG>(bits);
      break;
    case detail::Source::TransportStream:
      m_values.tsid = static_cast<LONG>(bits);
      break;
    case detail::Source::Favorite:
      m_values.favorite = bits;
      break;
    case detail::Source::Lock:
      m_values.lock = static_cast<BOOL>(bits);
      break;
    default:
      break;
  }
  if (row.width != 0) detail::StoreNumber(m_values.block.data() + row.offset, row, value);
}

inline void channel::Store(const station_blocks::ComponentList& list,
                           const std::vector<component>& values) {
  if (values.size() > list.capacity) Refuse(E_INVALIDARG, "Components", "there are too many");
  std::vector<BYTE> block = m_values.block;
  std::fill_n(block.begin() + list.nameOffset, list.capacity * list.nameWidth, BYTE{0});
  std::fill_n(block.begin() + list.typeOffset, list.capacity * 4, BYTE{0});
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!detail::Holds(4, detail::Form::Number, values[i].type)) {
      Refuse(E_INVALIDARG, "Components", "type is out of range");
    }
    const std::string name = Narrow("Components", values[i].name, list.nameWidth - 1U);
    std::copy(name.begin(), name.end(), block.data() + list.nameOffset + i * list.nameWidth);
    station_blocks::Store(block.data() + list.typeOffset + 4 * i, 4,
                          static_cast<std::uint32_t>(values[i].type));
  }
  station_blocks::Store(block.data() + list.countOffset, 4,
                        static_cast<std::uint32_t>(values.size()));
  m_values.block = std::move(block);
}

}  // namespace zortunedex

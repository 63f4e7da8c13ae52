// The fields of a channel by name, looked up when a program is compiled.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "api/zortunedex/signal.hpp"

namespace zortunedex {

/// A name that stands in a program's text, as the argument of a template.
template <std::size_t Size>
struct field_name {
  char text[Size];  ///< with the terminator

  /// Takes the name as it is written.
  consteval field_name(const char (&name)[Size]) { std::copy_n(name, Size, text); }
  /// Without the terminator.
  constexpr std::string_view view() const { return {text, Size - 1}; }
};

namespace detail {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Rows;
using station_blocks::Source;
using station_blocks::StreamList;
using station_blocks::Use;

inline constexpr Layout kLayouts[] = {station_blocks::kAnalog, station_blocks::kFmRadio,
                                      station_blocks::kAtsc,   station_blocks::kDvbs,
                                      station_blocks::kDvbt,   station_blocks::kDvbh,
                                      station_blocks::kTdmb,   station_blocks::kOneSeg};

constexpr bool IsText(Form form) { return form == Form::Text || form == Form::Base64; }

/// Calls visit(row) for every row of a layout, in the order of the file.
template <typename Visit>
constexpr void ForEachRow(const Layout& layout, Visit visit) {
  for (const Rows<Field>& rows : {layout.channel, layout.elementStreams, layout.satelliteParams}) {
    for (const Field& row : rows) visit(row);
  }
}

/// What a name stands for in all layouts.
struct Meaning {
  bool isThere = false;
  bool isOne = true;  ///< the same kind of value wherever it is there
  Form form = Form::Number;
  Source source = Source::Block;
};

constexpr Meaning MeaningOf(std::string_view name) {
  Meaning meaning;
  for (const Layout& layout : kLayouts) {
    ForEachRow(layout, [&](const Field& row) {
      if (name != row.attribute) return;
      if (meaning.isThere) {
        meaning.isOne = meaning.isOne && meaning.source == row.source &&
                        (meaning.form == row.form || (IsText(meaning.form) && IsText(row.form)));
      }
      meaning.isThere = true;
      meaning.form = row.form;
      meaning.source = row.source;
    });
  }
  return meaning;
}

/// Counts follow from the lists that they count.
constexpr bool IsCount(std::string_view name) { return name.starts_with("numOf"); }

/// The size of an entry of the lists with a name; 0 when there is none.
constexpr std::size_t EntrySizeOf(std::string_view element) {
  for (const Layout& layout : kLayouts) {
    for (const StreamList& list : layout.lists) {
      if (element == list.element) return list.entrySize;
    }
  }
  return 0;
}

template <Form>
struct ValueOf {
  using type = std::int64_t;
};
template <>
struct ValueOf<Form::Text> {
  using type = std::string;
};
template <>
struct ValueOf<Form::Base64> {
  using type = std::string;
};
template <>
struct ValueOf<Form::Polarisation> {
  using type = Polarisation;
};
template <>
struct ValueOf<Form::FecRate> {
  using type = BinaryConvolutionCodeRate;
};
template <>
struct ValueOf<Form::Modulation> {
  using type = ModulationType;
};
template <>
struct ValueOf<Form::SpectralInversion> {
  using type = SpectralInversion;
};

/// The row of a layout; null when the type has no such field.
inline const Field* FindRow(const Layout& layout, std::string_view name) {
  const Field* found = nullptr;
  ForEachRow(layout, [&](const Field& row) {
    if (found == nullptr && name == row.attribute) found = &row;
  });
  return found;
}

inline const Field* FindRow(const Layout& layout, Source source) {
  const Field* found = nullptr;
  ForEachRow(layout, [&](const Field& row) {
    if (found == nullptr && row.source == source) found = &row;
  });
  return found;
}

/// Most bytes that a text of a row may have in the code page to come back whole: its field less the
/// terminator, and what an attribute is read with.
inline std::size_t TextLimit(std::size_t width) {
  constexpr std::size_t kAttribute = 259;
  return width == 0 ? kAttribute : std::min(width - 1, kAttribute);
}

}  // namespace detail

/// The type of a field: std::string for a text, one of the tuning enumerations for a parameter that
/// is a word in the file (Polarisation, BinaryConvolutionCodeRate, ModulationType,
/// SpectralInversion), std::int64_t for every other number.
template <field_name Name>
using field_type = typename detail::ValueOf<detail::MeaningOf(Name.view()).form>::type;

}  // namespace zortunedex

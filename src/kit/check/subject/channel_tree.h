// Countries, channel sets and lists of channels as they stand in a channel file or a preset file.
#pragma once

#include <cstdint>
#include <tuple>
#include <vector>

#include "core/station_blocks.h"
#include "kit/check/subject/numbers.h"
#include "kit/xml/tree/document.h"

namespace zortunedex::kit::check {

enum class ChannelFile : std::uint8_t { Channels, Presets };

/// An element that has a number for a key.
struct Keyed {
  markup::Index element = markup::kNone;
  std::int32_t key = 0;  ///< 0 where it is missing
  bool isFound = false;  ///< the library looks keys up by their text: this one's is the usual one
  bool isRead = false;   ///< the first of its key that is found, in a parent that is read
};

/// Country, signal, area and sub-area.
using GroupKey = std::tuple<std::int32_t, std::int32_t, std::int32_t, std::int32_t>;

/// Channels that belong together: those of a channel set, or of a sub-area of the presets.
struct ChannelGroup {
  markup::Index holder = markup::kNone;
  std::int32_t country = 0;
  InputSignalType signal = InputSignalUnknown;
  const station_blocks::Layout* layout = nullptr;  ///< null for a type without a form
  bool isRead = false;
  std::int32_t area = 0;  ///< of presets
  std::int32_t subArea = 0;
  std::vector<markup::Index> channels;

  GroupKey Key() const { return {country, signal, area, subArea}; }
  /// The library reads it, and what of it is known.
  bool IsComparable() const { return isRead && layout != nullptr; }
};

struct CountryNode : Keyed {
  std::vector<Keyed> sets;
};

struct ChannelTree {
  std::vector<CountryNode> countries;
  std::vector<ChannelGroup> groups;
};

ChannelTree ReadTree(const markup::Document& document, ChannelFile file);

/// The children of an element with that name.
std::vector<markup::Index> ChildrenOf(const markup::Document& document, markup::Index parent,
                                      std::string_view name);
/// The first one; kNone when there is none.
markup::Index FirstChild(const markup::Document& document, const markup::Element& parent,
                         std::string_view name);

/// The index that the library reads of every channel.
std::vector<std::uint32_t> IndexesOf(const markup::Document& document, const ChannelGroup& group);

/// Places in the file in the order of the library's list: each record goes in front of the first
/// one whose index is not smaller.
std::vector<std::size_t> ListOrder(const std::vector<std::uint32_t>& indexes);

}  // namespace zortunedex::kit::check

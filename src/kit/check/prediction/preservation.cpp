#include "kit/check/prediction/preservation.h"

#include <algorithm>
#include <map>
#include <set>

#include "kit/check/prediction/prediction.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Index;
using markup::kNone;
using station_blocks::Source;

/// Everything of a channel but its index.
std::string ValuesOf(const Channel& channel) {
  std::string content(channel.block.begin(), channel.block.end());
  for (const Source source : {Source::PhysicalChannel, Source::Frequency, Source::OffsetFrequency,
                              Source::TransportStream, Source::Favorite, Source::Lock}) {
    content += ' ' + std::to_string(SourceValue(channel, source));
  }
  return content + ' ' + utf::FromWide(channel.displayName);
}

/// Codes that number a list, or put channels into one, afresh.
bool ConcernsIndexes(const Finding& finding) {
  constexpr std::string_view kNumbering[] = {"ZT002", "ZT041", "ZT042", "ZT043",
                                             "ZT060", "ZT061", "ZT062", "ZT070"};
  return std::ranges::find(kNumbering, finding.code->name) != std::end(kNumbering);
}

/// The channels, and the lists, that findings are about.
class Concerned {
 public:
  Concerned(const Document& document, const std::vector<const Finding*>& findings) {
    const auto elements = document.Elements();
    for (const Finding* finding : findings) {
      for (Index i = finding->element; i != kNone; i = elements[i].parent) {
        if (document.NameOf(elements[i]) == "Channel") m_channels.insert(i);
        if (ConcernsIndexes(*finding)) m_numbered.insert(i);
      }
      // Elements that are joined with one that stands elsewhere.
      if (finding->element == kNone || finding->code->name == "ZT041") m_isAllNumbered = true;
      if (finding->code->name == "ZT043") m_numbered.insert(elements[finding->element].parent);
    }
  }

  bool HasChannel(Index channel) const { return m_channels.contains(channel); }

  bool IsNumbered(const Document& document, const ChannelGroup& group) const {
    if (m_isAllNumbered || m_numbered.contains(group.holder)) return true;
    return m_numbered.contains(document.Elements()[group.holder].parent);
  }

 private:
  std::set<Index> m_channels;
  std::set<Index> m_numbered;
  bool m_isAllNumbered = false;
};

}  // namespace

std::optional<std::string> WhatIsLost(const Document& before,
                                      const std::vector<const Finding*>& mended,
                                      const Document& after, ChannelFile kind,
                                      const Database& database, CodePageText& text) {
  std::map<std::pair<GroupKey, std::string>, std::multiset<std::uint32_t>> there;
  Prediction afterwards(after, database, text);
  for (const ChannelGroup& group : ReadTree(after, kind).groups) {
    if (group.layout == nullptr) continue;
    for (const Index element : group.channels) {
      const Channel& channel = afterwards.Of(element, group);
      there[{group.Key(), ValuesOf(channel)}].insert(channel.index);
    }
  }
  const Concerned concerned(before, mended);
  Prediction earlier(before, database, text);
  for (const ChannelGroup& group : ReadTree(before, kind).groups) {
    if (group.layout == nullptr) continue;
    const bool isNumbered = concerned.IsNumbered(before, group);
    for (const Index element : group.channels) {
      if (concerned.HasChannel(element)) continue;
      const Channel& channel = earlier.Of(element, group);
      auto& indexes = there[{group.Key(), ValuesOf(channel)}];
      const auto same = isNumbered ? indexes.begin() : indexes.find(channel.index);
      if (same == indexes.end()) {
        return "channel " + std::to_string(channel.index) + " of country " +
               std::to_string(group.country) + " would not be what it is";
      }
      indexes.erase(same);
    }
  }
  return std::nullopt;
}

}  // namespace zortunedex::kit::check

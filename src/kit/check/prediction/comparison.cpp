#include "kit/check/prediction/comparison.h"

#include <algorithm>

#include "kit/check/findings/report.h"
#include "kit/check/prediction/prediction.h"
#include "kit/check/prediction/satellite_comparison.h"
#include "kit/failure.h"
#include "kit/files/scratch_directory.h"
#include "kit/model/channel_table.h"
#include "kit/presets/presets.h"

namespace check {
namespace {

using markup::Document;

class Comparison {
 public:
  Comparison(const Document& document, std::string_view file, std::string_view bytes,
             const Database& database, CodePageText& text)
      : m_report(document, std::string(file), m_findings), m_prediction(document, database, text) {
    data_files::WriteCopy(data_files::PathOf(m_scratch.Path(), file), file, bytes);
  }

  std::string Directory() const { return m_scratch.Path(); }

  void Compare(const ChannelGroup& group, const std::vector<Channel>& read) {
    std::vector<Channel> predicted = m_prediction.Of(group);
    if (predicted.size() != read.size()) {
      return Add(group, std::to_string(predicted.size()) +
                            " channels stand there, the library reads " +
                            std::to_string(read.size()));
    }
    for (std::size_t i = 0; i < read.size(); ++i) {
      const char* difference = FirstUnpredicted(predicted[i], read[i], group.layout);
      if (difference == nullptr) continue;
      return Add(group, "channel " + std::to_string(read[i].index) +
                            " of the library's list: " + difference);
    }
  }

  void Add(const ChannelGroup& group, const std::string& text) {
    m_report.Add("ZT900", group.holder, text);
  }

  std::vector<Finding> Findings() { return std::move(m_findings); }

 private:
  ScratchDirectory m_scratch;
  std::vector<Finding> m_findings;
  Report m_report;
  Prediction m_prediction;
};

/// Only of a document without mends the library reads what stands there.
bool IsComparable(const Document& document) {
  const auto isMended = [](const markup::Damage& damage) { return damage.isMended; };
  return document.IsReadable() && !document.Elements().empty() &&
         std::ranges::none_of(document.Damages(), isMended);
}

bool IsLooked(const ChannelGroup& group) { return group.isRead && group.layout != nullptr; }

/// The list of a sub-area as the library has it; null where it has none.
const PresetList* Find(const Presets& presets, const ChannelGroup& group) {
  const auto area = std::ranges::find(presets.Areas(), group.area,
                                      [](const PresetArea& one) { return one.number; });
  if (area == presets.Areas().end()) return nullptr;
  const auto list = std::ranges::find(area->lists, group.subArea,
                                      [](const PresetList& one) { return one.number; });
  return list == area->lists.end() ? nullptr : &*list;
}

}  // namespace

std::vector<Finding> CompareChannels(const Document& document, std::string_view bytes,
                                     const Database& database, CodePageText& text) {
  if (!IsComparable(document)) return {};
  Comparison comparison(document, kChannels, bytes, database, text);
  for (const ChannelGroup& group : ReadTree(document, ChannelFile::Channels).groups) {
    if (!IsLooked(group)) continue;
    const ChannelTable table =
        ReadTable({comparison.Directory(), static_cast<DWORD>(group.country), group.signal});
    comparison.Compare(group, table.channels);
  }
  return comparison.Findings();
}

std::vector<Finding> ComparePresets(const Document& document, std::string_view bytes,
                                    const Database& database, CodePageText& text) {
  if (!IsComparable(document)) return {};
  const ChannelTree tree = ReadTree(document, ChannelFile::Presets);
  const bool isAny = std::ranges::any_of(tree.groups, IsLooked);
  if (!isAny) return {};
  Comparison comparison(document, kPresets, bytes, database, text);
  constexpr DWORD kJapan = 81;
  const Presets presets({comparison.Directory(), kJapan, InputSignalISDBTerrestrialOneSeg});
  for (const ChannelGroup& group : tree.groups) {
    if (!IsLooked(group)) continue;
    const PresetList* list = Find(presets, group);
    // Numbers beyond the count of areas are not asked for.
    const bool isAsked = group.area >= 0 && group.area < presets.AreaCount();
    if (list != nullptr) {
      comparison.Compare(group, list->channels);
    } else if (isAsked && group.subArea == 0) {
      comparison.Add(group, "the library does not find this list");
    }
  }
  return comparison.Findings();
}

std::vector<Finding> CompareFile(std::string_view name, const Document& document,
                                 std::string_view bytes, const Database& database,
                                 CodePageText& text) {
  if (name == kChannels) return CompareChannels(document, bytes, database, text);
  if (name == kPresets) return ComparePresets(document, bytes, database, text);
  if (!IsComparable(document)) return {};
  if (name == kCatalogue) return CompareCatalogue(document, bytes, text);
  return name == kSettings ? CompareDishes(document, bytes, text) : std::vector<Finding>();
}

}  // namespace check

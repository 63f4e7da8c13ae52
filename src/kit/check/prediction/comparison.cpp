#include "kit/check/prediction/comparison.h"

#include <algorithm>

#include "kit/check/findings/report.h"
#include "kit/check/prediction/prediction.h"
#include "kit/check/prediction/satellite_comparison.h"
#include "kit/failure.h"
#include "kit/files/scratch_directory.h"
#include "kit/presets/presets.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Index;

class Comparison {
 public:
  Comparison(const Document& document, std::string_view file, const Database& database,
             CodePageText& text)
      : m_report(document, std::string(file), m_findings), m_prediction(document, database, text) {}

  /// `walk` gives what it is called with every channel that the library reads, in its order.
  template <typename Walk>
  void Compare(const ChannelGroup& group, Walk walk) {
    const std::vector<Index> elements = m_prediction.InListOrder(group);
    std::size_t count = 0;
    std::string difference;
    walk([&](const Channel& read) {
      if (count++ >= elements.size() || !difference.empty()) return;
      const char* what = m_prediction.Difference(elements[count - 1], group, read);
      if (what == nullptr) return;
      difference = "channel " + std::to_string(read.index) + " of the library's list: " + what;
    });
    if (count != elements.size()) {
      difference = std::to_string(elements.size()) + " channels stand there, the library reads " +
                   std::to_string(count);
    }
    if (!difference.empty()) Add(group, difference);
  }

  void Add(const ChannelGroup& group, const std::string& text) {
    m_report.Add("ZT900", group.holder, text);
  }

  std::vector<Finding> Findings() { return std::move(m_findings); }

 private:
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

/// The list of a sub-area as the library has it; null where it has none.
const PresetList* Find(const Presets& presets, const ChannelGroup& group) {
  const auto area = std::ranges::find(presets.Areas(), group.area,
                                      [](const PresetArea& one) { return one.number; });
  if (area == presets.Areas().end()) return nullptr;
  const auto list = std::ranges::find(area->lists, group.subArea,
                                      [](const PresetList& one) { return one.number; });
  return list == area->lists.end() ? nullptr : &*list;
}

std::vector<Finding> CompareLists(const Document& document, LibraryLists& lists,
                                  const Document* ofTheirBytes, const Database& database,
                                  CodePageText& text) {
  Comparison comparison(document, kChannels, database, text);
  for (const ChannelGroup& group : ReadTree(document, ChannelFile::Channels).groups) {
    if (!group.IsComparable()) continue;
    comparison.Compare(group, [&](auto take) { lists.Walk(group, ofTheirBytes, take); });
  }
  return comparison.Findings();
}

}  // namespace

std::vector<Finding> CompareChannels(const Document& document, std::string_view bytes,
                                     const Database& database, CodePageText& text) {
  if (!IsComparable(document)) return {};
  LibraryLists lists(bytes);
  const bool isOfBytes = bytes.data() == document.Bytes().data();
  return CompareLists(document, lists, isOfBytes ? &document : nullptr, database, text);
}

std::vector<Finding> CompareChannels(const Document& document, LibraryLists& lists,
                                     const Database& database, CodePageText& text) {
  if (!IsComparable(document)) return {};
  return CompareLists(document, lists, &document, database, text);
}

std::vector<Finding> ComparePresets(const Document& document, std::string_view bytes,
                                    const Database& database, CodePageText& text) {
  if (!IsComparable(document)) return {};
  const ChannelTree tree = ReadTree(document, ChannelFile::Presets);
  const bool isAny = std::ranges::any_of(tree.groups, &ChannelGroup::IsComparable);
  if (!isAny) return {};
  const ScratchDirectory scratch;
  data_files::WriteCopy(data_files::PathOf(scratch.Path(), kPresets), kPresets, bytes);
  Comparison comparison(document, kPresets, database, text);
  constexpr DWORD kJapan = 81;
  const Presets presets({scratch.Path(), kJapan, InputSignalISDBTerrestrialOneSeg});
  for (const ChannelGroup& group : tree.groups) {
    if (!group.IsComparable()) continue;
    const PresetList* list = Find(presets, group);
    // Numbers beyond the count of areas are not asked for.
    const bool isAsked = group.area >= 0 && group.area < presets.AreaCount();
    if (list != nullptr) {
      comparison.Compare(group, [&](auto take) { std::ranges::for_each(list->channels, take); });
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

}  // namespace zortunedex::kit::check

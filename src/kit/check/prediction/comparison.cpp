#include "kit/check/prediction/comparison.h"

#include <algorithm>

#include "kit/check/findings/report.h"
#include "kit/check/prediction/prediction.h"
#include "kit/check/prediction/satellite_comparison.h"
#include "kit/failure.h"
#include "kit/files/scratch_directory.h"
#include "kit/model/channel_list.h"
#include "kit/presets/presets.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Element;
using markup::Index;

class Comparison {
 public:
  Comparison(const Document& document, std::string_view file, std::string_view bytes,
             const Database& database, CodePageText& text)
      : m_report(document, std::string(file), m_findings), m_prediction(document, database, text) {
    data_files::WriteCopy(data_files::PathOf(m_scratch.Path(), file), file, bytes);
  }

  std::string Directory() const { return m_scratch.Path(); }

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
  const ScratchDirectory m_scratch;
  std::vector<Finding> m_findings;
  Report m_report;
  Prediction m_prediction;
};

/// Lets the library read the lists of a file one by one: it loads one at a time. A large file is
/// read as a whole for the first of them alone, and a part of it for each of the others, so that
/// all take time proportional to its size.
class LibraryLists {
 public:
  LibraryLists(const Document& document, std::string_view bytes, std::string directory)
      : m_document(document), m_bytes(bytes), m_directory(std::move(directory)) {}

  template <typename Take>
  void Walk(const ChannelGroup& group, Take take) {
    const bool isPart = m_read != 0 && m_read + m_bytes.size() > kMostReadAgain &&
                        m_bytes.data() == m_document.Bytes().data();
    if (!isPart) {
      m_read += m_bytes.size();
      return WalkIn(m_directory, group, take);
    }
    if (!m_part) m_part.emplace();
    data_files::WriteCopy(data_files::PathOf(m_part->Path(), kChannels), kChannels,
                          PartOf(group.holder));
    WalkIn(m_part->Path(), group, take);
  }

 private:
  static constexpr std::size_t kMostReadAgain = 4'000'000;

  template <typename Take>
  static void WalkIn(const std::string& directory, const ChannelGroup& group, Take take) {
    const Database database({directory, static_cast<DWORD>(group.country), group.signal});
    const ComPtr<IChannelInfoMgr> list = database.List();
    const ChannelReader reader(list.Get());
    for (std::size_t place = 0; place < reader.Indexes().size(); ++place) take(reader.Read(place));
  }

  /// The file with one channel set in it.
  std::string PartOf(Index set) const {
    const auto elements = m_document.Elements();
    const Element& root = elements[0];
    const Element& country = elements[elements[set].parent];
    std::string part(m_bytes.substr(0, root.tag.end));
    part += m_document.Text(country.tag);
    part += m_document.Text(elements[set].Whole());
    for (const Element* element : {&country, &root}) {
      part.append("</").append(m_document.NameOf(*element)).append(">");
    }
    return part;
  }

  const Document& m_document;
  std::string_view m_bytes;
  std::string m_directory;
  std::optional<ScratchDirectory> m_part;
  std::size_t m_read = 0;
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
  LibraryLists lists(document, bytes, comparison.Directory());
  for (const ChannelGroup& group : ReadTree(document, ChannelFile::Channels).groups) {
    if (!IsLooked(group)) continue;
    comparison.Compare(group, [&](auto take) { lists.Walk(group, take); });
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

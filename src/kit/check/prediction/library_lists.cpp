#include "kit/check/prediction/library_lists.h"

#include <algorithm>

#include "kit/check/subject/files.h"
#include "kit/failure.h"
#include "kit/model/channel_list.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Element;
using markup::Index;

// Of a file that is larger, lists are read out of a part of it.
constexpr std::size_t kMostReadAgain = 4'000'000;
// Has the tags in front of the first channel.
constexpr std::size_t kBeginning = 4096;

void WriteChannels(const ScratchDirectory& scratch, std::string_view bytes) {
  data_files::WriteCopy(data_files::PathOf(scratch.Path(), kChannels), kChannels, bytes);
}

Location LocationOf(const ScratchDirectory& scratch, const ChannelGroup& group) {
  return {scratch.Path(), static_cast<DWORD>(group.country), group.signal};
}

void ReadAll(const Database& database, const LibraryLists::Take& take) {
  const ComPtr<IChannelInfoMgr> list = database.List();
  const ChannelReader reader(list.Get());
  for (std::size_t place = 0; place < reader.Indexes().size(); ++place) take(reader.Read(place));
}

/// The file with one channel set in it.
std::string PartOf(const Document& document, Index set) {
  const auto elements = document.Elements();
  const Element& root = elements[0];
  const Element& country = elements[elements[set].parent];
  std::string part(document.Bytes().substr(0, root.tag.end));
  part += document.Text(country.tag);
  part += document.Text(elements[set].Whole());
  for (const Element* element : {&country, &root}) {
    part.append("</").append(document.NameOf(*element)).append(">");
  }
  return part;
}

}  // namespace

LibraryLists::LibraryLists(std::string_view bytes)
    : m_size(bytes.size()), m_beginning(bytes.substr(0, kBeginning)) {
  WriteChannels(m_scratch, bytes);
}

void LibraryLists::OpenFirst() {
  // What ends in the middle is taken as if it were closed there.
  const Document beginning = Document::Read(m_beginning);
  if (beginning.Elements().empty()) return;
  const ChannelTree tree = ReadTree(beginning, ChannelFile::Channels);
  const auto first = std::ranges::find_if(tree.groups, &ChannelGroup::IsComparable);
  if (first == tree.groups.end()) return;
  try {
    m_first = std::make_unique<const Database>(LocationOf(m_scratch, *first));
    m_firstKey = first->Key();
  } catch (const Failure&) {
    // Whoever walks through it is told.
  }
}

LibraryLists::DatabasePtr LibraryLists::Open(const ChannelGroup& group) {
  DatabasePtr first = std::move(m_first);
  if (first != nullptr && m_firstKey == group.Key()) return first;
  first.reset();
  return std::make_unique<const Database>(LocationOf(m_scratch, group));
}

void LibraryLists::Walk(const ChannelGroup& group, const Document* document, const Take& take) {
  const bool isPart = m_read != 0 && m_read + m_size > kMostReadAgain && document != nullptr;
  if (!isPart) {
    m_read += m_size;
    return ReadAll(*Open(group), take);
  }
  if (!m_part) m_part.emplace();
  WriteChannels(*m_part, PartOf(*document, group.holder));
  ReadAll(Database(LocationOf(*m_part, group)), take);
}

}  // namespace zortunedex::kit::check

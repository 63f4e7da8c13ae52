#include "kit/merge/fields/put_back.h"

#include <algorithm>

#include "kit/merge/fields/values.h"
#include "kit/text/ascii.h"

namespace zortunedex::kit {

using station_blocks::ComponentList;
using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::StreamList;

namespace merge {
namespace {

/// A region of the block and the number of its entries that count.
struct Region {
  std::size_t offset;
  std::size_t size;
  std::size_t countOffset;
};

bool IsSame(const Channel& a, const Channel& b, const Region& region) {
  const auto same = [&](std::size_t offset, std::size_t size) {
    const BYTE* bytes = a.block.data() + offset;
    return std::equal(bytes, bytes + size, b.block.data() + offset);
  };
  return same(region.offset, region.size) && same(region.countOffset, 4);
}

void Copy(const Channel& from, const Region& region, Channel& to) {
  const auto copy = [&](std::size_t offset, std::size_t size) {
    std::copy_n(from.block.data() + offset, size, to.block.data() + offset);
  };
  copy(region.offset, region.size);
  copy(region.countOffset, 4);
}

Region RegionOf(const StreamList& list) {
  return {list.offset, std::size_t{list.capacity} * list.entrySize, list.countOffset};
}

/// The entry with the PID; null when there is none.
const BYTE* EntryWith(const Channel& channel, const StreamList& list, std::uint32_t pid) {
  const Field& row = *station_blocks::FindField(station_blocks::EntryFields(list.entrySize), "pid");
  const std::size_t count = CountIn(channel, list.countOffset, list.capacity);
  for (std::size_t i = 0; i < count; ++i) {
    const BYTE* entry = EntryIn(channel, list, i);
    if (station_blocks::Fetch(entry + row.offset, row.width) == pid) return entry;
  }
  return nullptr;
}

/// Streams that came or went leave the others what they were.
void PutBackEntries(const StreamList& list, const Told& told, Channel& scan) {
  const Field& row = *station_blocks::FindField(station_blocks::EntryFields(list.entrySize), "pid");
  const std::size_t count = CountIn(scan, list.countOffset, list.capacity);
  for (std::size_t i = 0; i < count; ++i) {
    BYTE* entry = scan.block.data() + list.offset + i * list.entrySize;
    const std::uint32_t pid = station_blocks::Fetch(entry + row.offset, row.width);
    const BYTE* reads = EntryWith(*told.reads, list, pid);
    const BYTE* full = EntryWith(*told.channel, list, pid);
    if (reads == nullptr || full == nullptr) continue;
    if (std::equal(entry, entry + list.entrySize, reads)) std::copy_n(full, list.entrySize, entry);
  }
}

/// One of the list and the base after the other; a value that the first gave back is left alone.
class Restorer {
 public:
  Restorer(const FieldTable& table, const Channel& scan)
      : m_table(table), m_scan(Whole(scan, table.Layout())), m_result(m_scan) {
    // Components are behind the streams.
    m_isTaken.resize(table.Fields().size() + table.Streams().size() + 1);
  }

  void Take(const Told& told, bool hasStatus) {
    if (told.channel == nullptr) return;
    const Layout& layout = m_table.Layout();
    const Channel channel = Whole(*told.channel, layout);
    const Channel reads = Whole(*told.reads, layout);
    std::size_t place = 0;
    for (const FieldRule& rule : m_table.Fields()) {
      // What users see is no value of a broadcaster's.
      const bool isTold = rule.rule != Rule::DisplayName && rule.rule != Rule::Lists &&
                          (hasStatus || rule.rule != Rule::Status);
      if (isTold && !m_isTaken[place] && merge::IsSame(m_scan, reads, *rule.row)) {
        merge::Copy(channel, *rule.row, m_result);
        // What a record answers for itself follows from its block.
        if (EqualIgnoringCase(rule.row->attribute, "serviceType")) {
          m_result.serviceType = channel.serviceType;
        }
        m_isTaken[place] = true;
      }
      ++place;
    }
    for (const StreamRule& rule : m_table.Streams()) {
      if (!m_isTaken[place]) m_isTaken[place] = TakeStreams(*rule.list, {&channel, &reads});
      ++place;
    }
    if (const ComponentList* parts = m_table.Components(); parts != nullptr && !m_isTaken[place]) {
      for (const Region& region :
           {Region{parts->nameOffset, std::size_t{parts->capacity} * parts->nameWidth,
                   parts->countOffset},
            Region{parts->typeOffset, std::size_t{parts->capacity} * 4, parts->countOffset}}) {
        if (IsSame(m_scan, reads, region)) Copy(channel, region, m_result);
      }
    }
  }

  Channel Result() && {
    const InputSignalType signal = m_table.Signal();
    if (m_scan.displayName == m_scan.name) m_result.displayName = m_result.name;
    if (m_scan.displayName == FilledName(m_scan, signal)) {
      m_result.displayName = FilledName(m_result, signal);
    }
    return std::move(m_result);
  }

 private:
  bool TakeStreams(const StreamList& list, const Told& told) {
    const Region region = RegionOf(list);
    if (IsSame(m_scan, *told.reads, region)) {
      Copy(*told.channel, region, m_result);
      return true;
    }
    PutBackEntries(list, told, m_result);
    return false;
  }

  const FieldTable& m_table;
  Channel m_scan;
  Channel m_result;
  std::vector<bool> m_isTaken;  ///< by place among fields, streams and components
};

}  // namespace

Channel PutBack(const FieldTable& table, const Channel& scan, const Told& list, const Told& base) {
  Restorer restorer(table, scan);
  // A channel of the list may be marked as gone: what is running is the base's to say.
  restorer.Take(list, base.channel == nullptr);
  restorer.Take(base, true);
  return std::move(restorer).Result();
}

}  // namespace merge

}  // namespace zortunedex::kit

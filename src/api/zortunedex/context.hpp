// What channels need of the library after they were read: its code page, and what it makes of a
// station.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "api/zortunedex/fields.hpp"
#include "api/zortunedex/text.hpp"
#include "core/interfaces.h"
#include "platform/com_ptr.h"
#include "platform/component.h"

namespace zortunedex::detail {

struct FreeTaskMemory {
  void operator()(BYTE* memory) const { CoTaskMemFree(memory); }
};

/// Everything that a channel record keeps.
struct Values {
  UINT origin = 0;  // place in the list that it was read from; 0 for a new channel
  UINT index = 0;
  UINT number = 0;
  DWORD frequency = 0;
  LONG offset = 0;
  LONG tsid = 0;
  UINT favorite = 0;
  BOOL lock = 0;
  std::string displayName;  // UTF-8
  std::vector<BYTE> block;
};

/// The bytes of a text field in front of the first zero.
inline std::string_view UpToZero(const BYTE* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  return text.substr(0, text.find('\0'));
}

/// The record as values, with the index that it has.
inline Values ReadRecord(IChannelInfo* record, const std::string& where) {
  Values values;
  _StationTuneInfo station = {};
  Require(record->GetStationInfo(&station), "read a channel of", where, "it has no station");
  const std::unique_ptr<BYTE, FreeTaskMemory> block(station.pbInformation);
  if (block) values.block.assign(block.get(), block.get() + station.cbInformation);
  values.number = static_cast<UINT>(station.lPhysicalChannel);
  values.frequency = station.dwFrequency;
  values.offset = station.lOffsetFreq;
  values.tsid = station.lTSID;
  Bstr text;
  Require(record->GetChannelDspName(text.Receive()), "read a channel of", where, "it has no name");
  values.displayName = ToUtf8(text.View());
  Require(record->GetFavor(&values.favorite), "read a channel of", where, "it has no mark");
  Require(record->GetLock(&values.lock), "read a channel of", where, "it has no lock");
  return values;
}

/// Stores values in a record, but for the index. An empty display name is filled by the record.
inline void WriteRecord(const Values& values, IChannelInfo* record, const std::string& where) {
  std::vector<BYTE> block = values.block;
  _StationTuneInfo station = {};
  station.lPhysicalChannel = static_cast<LONG>(values.number);
  station.dwFrequency = values.frequency;
  station.lOffsetFreq = values.offset;
  station.lTSID = values.tsid;
  station.cbInformation = static_cast<DWORD>(block.size());
  station.pbInformation = block.data();
  const Bstr name(*ToWide(values.displayName));
  Require(record->SetChannelDspName(name.Get()), "store a channel of", where, "no name is taken");
  Require(record->SetStationInfo(&station), "store a channel of", where, "no station is taken");
  Require(record->SetFavor(values.favorite), "store a channel of", where, "no mark is taken");
  Require(record->SetLock(values.lock), "store a channel of", where, "no lock is taken");
}

/// Shared by the channels of one list. Every question gets a record of its own, so that values can
/// be read on several threads.
class Context {
 public:
  /// `own` makes records of the kind, `names` those of DVB-S: texts are converted on them, since
  /// the library alone knows the code page, and their names have the most room behind them.
  Context(std::shared_ptr<const Component> component, signal kind, std::string place,
          ComPtr<IChannelInfoMgr> own, ComPtr<IChannelInfoMgr> names)
      : m_component(std::move(component)),
        m_signal(kind),
        m_layout(&LayoutOf(kind)),
        m_place(std::move(place)),
        m_own(std::move(own)),
        m_names(std::move(names)) {}

  signal Signal() const { return m_signal; }
  const Layout& BlockLayout() const { return *m_layout; }
  /// The directory, for messages.
  const std::string& Place() const { return m_place; }

  /// UTF-8 of narrow text.
  std::string FromNarrow(std::string_view narrow) const {
    if (narrow.empty()) return {};
    Values values;
    values.block.resize(kRoom.size);
    std::copy_n(narrow.begin(), std::min(narrow.size(), kLongest), values.block.begin() + kName);
    const ComPtr<IChannelInfo> record = Make(m_names);
    WriteRecord(values, record.Get(), m_place);
    return NameOf(record.Get());
  }

  /// Narrow text of UTF-8 that is well-formed; nothing where the code page lacks a character. Comes
  /// cut when it is longer than any field.
  std::optional<std::string> ToNarrow(const std::string& text) const {
    if (text.empty()) return std::string();
    Values empty;
    empty.block.resize(kRoom.size);
    const ComPtr<IChannelInfo> record = Make(m_names);
    WriteRecord(empty, record.Get(), m_place);
    const Bstr wide(*ToWide(text));
    Require(record->SetChannelName(wide.Get()), "convert a text of", m_place, "it is not taken");
    const Values stored = ReadRecord(record.Get(), m_place);
    std::string narrow(UpToZero(stored.block.data() + kName, kLongest));
    if (narrow.size() < kLongest && NameOf(record.Get()) != text) return std::nullopt;
    return narrow;
  }

  /// A record of the kind with these values.
  ComPtr<IChannelInfo> Record(const Values& values) const {
    ComPtr<IChannelInfo> record = Make(m_own);
    WriteRecord(values, record.Get(), m_place);
    return record;
  }

 private:
  static constexpr const Layout& kRoom = station_blocks::kDvbs;
  static constexpr std::size_t kName = station_blocks::OffsetOf(kRoom.channel, "name");
  static constexpr std::size_t kLongest = 1024;
  static_assert(kName + kLongest < kRoom.size);

  ComPtr<IChannelInfo> Make(const ComPtr<IChannelInfoMgr>& list) const {
    ComPtr<IChannelInfo> record;
    Require(list->CreateChannelInfo(record.Receive()), "use", m_place, "no record can be made");
    return record;
  }

  std::string NameOf(IChannelInfo* record) const {
    Bstr name;
    Require(record->GetChannelName(name.Receive()), "convert a text of", m_place, "it is none");
    return ToUtf8(name.View());
  }

  std::shared_ptr<const Component> m_component;  // goes last
  signal m_signal;
  const Layout* m_layout;
  std::string m_place;
  ComPtr<IChannelInfoMgr> m_own;
  ComPtr<IChannelInfoMgr> m_names;
};

using SharedContext = std::shared_ptr<const Context>;

}  // namespace zortunedex::detail

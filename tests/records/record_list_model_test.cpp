// Random operations on lists, and on plain ones that ask every record from the front.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

#include "channels/channel_keys.h"
#include "platform/lack_of_memory.h"
#include "records/record_list.h"
#include "satellite/transponder_info.h"
#include "support/expect.h"
#include "support/random.h"

namespace {

// A host's own record, which counts what it is asked and may do something then.
template <typename Record>
class ForeignRecord : public Record {
 public:
  int calls = 0;
  bool fails = false;
  std::function<void()> onCall;

 protected:
  HRESULT Called(HRESULT hr) {
    ++calls;
    if (const auto hook = std::move(onCall)) {
      onCall = nullptr;
      hook();
    }
    return fails ? E_FAIL : hr;
  }
};

struct ChannelKind {
  using Traits = ChannelTraits;
  using Number = ChannelNumber;
  class Foreign : public ForeignRecord<CChanInfo> {
   public:
    HRESULT STDMETHODCALLTYPE GetChannelIndex(UINT* index) override {
      UINT own = 0;
      const HRESULT hr = Called(CChanInfo::GetChannelIndex(&own));
      // After the call: it may have changed.
      return FAILED(hr) ? hr : CChanInfo::GetChannelIndex(index);
    }
    HRESULT STDMETHODCALLTYPE SetChannelIndex(UINT index) override {
      Called(S_OK);
      return CChanInfo::SetChannelIndex(index);
    }
    HRESULT STDMETHODCALLTYPE GetChannelNo(UINT* number) override {
      const HRESULT hr = Called(S_OK);
      return FAILED(hr) ? hr : CChanInfo::GetChannelNo(number);
    }
  };
  static void SetIndex(CChanInfo& record, UINT index) { record.CChanInfo::SetChannelIndex(index); }
  static void SetNumber(CChanInfo& record, UINT number) {
    if (number % 2 == 0) {
      record.SetChannelNo(number);
      return;
    }
    _StationTuneInfo station = {};
    station.lPhysicalChannel = static_cast<LONG>(number);
    record.SetSignalType(InputSignalAnalogCable);
    record.SetStationInfo(&station);
  }
};

struct TransponderKind {
  using Traits = CTransponderInfo::Traits;
  using Number = CTransponderInfo::Index;
  class Foreign : public ForeignRecord<CTransponderInfo> {
   public:
    HRESULT STDMETHODCALLTYPE GetIndex(UINT* index) override {
      const HRESULT hr = Called(S_OK);
      return FAILED(hr) ? hr : CTransponderInfo::GetIndex(index);
    }
    HRESULT STDMETHODCALLTYPE SetIndex(UINT index) override {
      Called(S_OK);
      return CTransponderInfo::SetIndex(index);
    }
  };
  static void SetIndex(CTransponderInfo& record, UINT index) {
    record.CTransponderInfo::SetIndex(index);
  }
  static void SetNumber(CTransponderInfo&, UINT) {}
};

// What a list is without any knowledge: everything is a scan through the interfaces.
template <typename Traits>
class PlainList {
 public:
  using Interface = typename Traits::Interface;
  using Record = ComPtr<Interface>;
  using Records = std::vector<Record>;
  using Index = typename Traits::Index;
  using Loaded = typename RecordList<Traits>::Loaded;

  const Records& All() const { return m_records; }
  HRESULT Add(Interface* record) {
    UINT index = 0;
    const HRESULT hr = Index::Get(record, &index);
    if (SUCCEEDED(hr)) Insert(Record(record), index);
    return hr;
  }
  void AddLoaded(const std::vector<Loaded>& loaded) {
    for (const Loaded& item : loaded) Insert(item.record, item.key);
  }
  Record Extract(Interface* record) {
    const auto found = std::find_if(m_records.begin(), m_records.end(),
                                    [=](const Record& other) { return other.Get() == record; });
    if (found == m_records.end()) return Record();
    const Record extracted = *found;
    m_records.erase(found);
    return extracted;
  }
  void Number(Numbering from) {
    for (std::size_t i = 0; i < m_records.size(); ++i) {
      Index::Number(m_records[from == Numbering::FromFront ? i : m_records.size() - 1 - i].Get(),
                    static_cast<UINT>(i + 1));
    }
  }
  void ReleaseAll() { m_records.clear(); }
  void Swap(PlainList& other) { m_records.swap(other.m_records); }
  bool Replace(const Records&, Records& after) {
    m_records.swap(after);
    return true;
  }
  template <typename Key>
  HRESULT FindBy(UINT value, Interface** out) {
    for (const Record& record : m_records) {
      if (Key::Ask(record.Get()) != value) continue;
      *out = Record(record).Detach();
      return S_OK;
    }
    return E_FAIL;
  }

 private:
  void Insert(const Record& record, UINT key) {
    auto place = m_records.begin();
    for (; place != m_records.end(); ++place) {
      const std::optional<UINT> index = Index::Ask(place->Get());
      if (index && *index >= key) break;
    }
    m_records.insert(place, record);
  }

  Records m_records;
};

// Two lists of one kind and the records that stand in them; each record knows its number here.
template <typename Kind, typename List>
class World {
 public:
  using Own = typename Kind::Traits::Own;
  using Interface = typename Kind::Traits::Interface;
  using Foreign = typename Kind::Foreign;

  struct Entry {
    ComPtr<Interface> record;
    Own* own;
    Foreign* foreign;  // null for one of the library's
  };

  void Make(bool isForeign, UINT index, UINT number, bool fails) {
    Entry entry = {{}, nullptr, nullptr};
    if (isForeign) {
      entry.own = entry.foreign = new Foreign;
      entry.foreign->fails = fails;
      entry.record = ComPtr<Interface>::Attach(entry.own);
    } else {
      ExpectHr(S_OK, Own::CreateInstance(entry.record.Receive()));
      entry.own = static_cast<Own*>(entry.record.Get());
    }
    Kind::SetIndex(*entry.own, index);
    Kind::SetNumber(*entry.own, number);
    entries.push_back(std::move(entry));
  }
  int IdOf(const Interface* record) const {
    for (std::size_t id = 0; id < entries.size(); ++id) {
      if (entries[id].record.Get() == record) return static_cast<int>(id);
    }
    return -1;
  }
  std::vector<int> Order(std::size_t which) const {
    std::vector<int> ids;
    for (const auto& record : lists[which].All()) ids.push_back(IdOf(record.Get()));
    return ids;
  }
  template <typename Key>
  int Find(std::size_t which, UINT value) {
    ComPtr<Interface> found;
    const HRESULT hr = lists[which].template FindBy<Key>(value, found.Receive());
    ExpectHr(found ? S_OK : E_FAIL, hr);
    return IdOf(found.Get());
  }

  std::vector<Entry> entries;
  List lists[2];
};

template <typename Kind>
class Worlds {
 public:
  explicit Worlds(std::uint32_t seed)
      : m_random(seed), m_foreign(seed % 3 == 0 ? 0 : seed % 3 * 3), m_ascending(seed % 4 == 0) {
    for (int i = 0; i < 5; ++i) Make();
  }

  void Step() {
    const std::size_t which = m_random(4) == 0 ? 1 : 0;
    const std::size_t id = m_random(static_cast<std::uint32_t>(m_new.entries.size()));
    switch (m_random(18)) {
      case 0:
      case 1:
      case 2:
      case 3:
        Make();
        return Add(which, m_new.entries.size() - 1);
      case 4:
        return Add(which, id);
      case 5:
      case 6:
        return Both([&](auto& world) {
          return static_cast<bool>(world.lists[which].Extract(world.entries[id].record.Get()));
        });
      case 7:
      case 8: {
        const UINT index = AnyIndex();
        return Both([&](auto& world) { Kind::SetIndex(*world.entries[id].own, index); });
      }
      case 9: {
        const UINT number = m_random(30);
        return Both([&](auto& world) { Kind::SetNumber(*world.entries[id].own, number); });
      }
      case 10: {
        const auto from = m_random(2) == 0 ? Numbering::FromFront : Numbering::FromBack;
        return Both([&](auto& world) { world.lists[which].Number(from); });
      }
      case 11:
        return AddLoaded(which);
      case 12:
        return Rearrange(which);
      case 13:
        return Hook(id);
      case 14:
        // Enough to make it worth to put all in a table.
        return Lookups(which, 400);
      default:
        return Lookups(which, 8);
    }
  }

  void Check() {
    for (std::size_t which = 0; which < 2; ++which) {
      ASSERT_EQ(m_plain.Order(which), m_new.Order(which));
    }
    for (std::size_t id = 0; id < m_new.entries.size(); ++id) {
      const auto& a = m_plain.entries[id];
      const auto& b = m_new.entries[id];
      ASSERT_EQ(Kind::Traits::Index::Of(*a.own), Kind::Traits::Index::Of(*b.own)) << id;
      if (a.foreign) {
        ASSERT_EQ(a.foreign->calls, b.foreign->calls) << id;
      }
      typename Kind::Traits::Flag dirty[2] = {};
      a.record->GetDirty(&dirty[0]);
      b.record->GetDirty(&dirty[1]);
      ASSERT_EQ(dirty[0], dirty[1]) << id;
      a.record->AddRef();
      ExpectRefCount(a.record->Release(), b.record.Get());
    }
  }

 private:
  using Plain = PlainList<typename Kind::Traits>;
  using List = RecordList<typename Kind::Traits>;

  // The same for both, with the same answer.
  template <typename Work>
  void Both(Work work) {
    if constexpr (std::is_void_v<decltype(work(m_new))>) {
      work(m_plain);
      work(m_new);
    } else {
      EXPECT_EQ(work(m_plain), work(m_new));
    }
  }
  UINT AnyIndex() { return m_random(25) == 0 ? 0xFFFFFFFF : m_random(30); }
  void Make() {
    const bool isForeign = m_foreign != 0 && m_random(10) < m_foreign;
    const UINT index = m_ascending && m_random(20) != 0 ? m_last++ : AnyIndex();
    const UINT number = m_random(30);
    const bool fails = m_random(8) == 0;
    Both([=](auto& world) { world.Make(isForeign, index, number, fails); });
  }
  void Add(std::size_t which, std::size_t id) {
    Both([=](auto& world) { return world.lists[which].Add(world.entries[id].record.Get()); });
  }
  // By a key that the record may not carry.
  void AddLoaded(std::size_t which) {
    const std::size_t first = m_new.entries.size();
    std::vector<UINT> keys;
    for (UINT count = m_random(6); count > 0; --count) {
      const UINT index = m_random(30);
      Both([=](auto& world) { world.Make(false, index, index, false); });
      keys.push_back(m_random(2) == 0 ? index : m_random(30));
    }
    // What stands there is asked once and not for every one, so without records of a host.
    for (const auto& record : m_new.lists[which].All()) {
      if (m_new.entries[static_cast<std::size_t>(m_new.IdOf(record.Get()))].foreign) return;
    }
    Both([&](auto& world) {
      std::vector<typename List::Loaded> loaded;
      for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto& entry = world.entries[first + i];
        UINT index = 0;
        Kind::Traits::Index::Get(entry.record.Get(), &index);
        loaded.push_back({entry.record, keys[i], index});
      }
      world.lists[which].AddLoaded(loaded);
    });
  }
  void Rearrange(std::size_t which) {
    switch (m_random(5)) {
      case 0:
        return Both([=](auto& world) { world.lists[which].ReleaseAll(); });
      case 1:
        return Both([](auto& world) { world.lists[0].Swap(world.lists[1]); });
      case 2:
        return Both([=](auto& world) {
          auto& list = world.lists[which];
          auto reversed = list.All();
          const auto before = reversed;
          std::reverse(reversed.begin(), reversed.end());
          return list.Replace(before, reversed);
        });
      case 3:
        // What was done behind a bound that is left by an exception is undone.
        return Both([=](auto& world) {
          try {
            const PutBack bound(world.lists[which]);
            world.lists[which].ReleaseAll();
            throw 1;
          } catch (int) {
          }
        });
      default:
        return Both([=](auto& world) {
          auto copy = world.lists[which];
          world.lists[which] = copy;
        });
    }
  }
  // The next call of a host's record changes another one.
  void Hook(std::size_t id) {
    const std::size_t other = m_random(static_cast<std::uint32_t>(m_new.entries.size()));
    const UINT index = m_random(30);
    Both([=](auto& world) {
      if (!world.entries[id].foreign) return;
      Own* changed = world.entries[other].own;
      world.entries[id].foreign->onCall = [=] { Kind::SetIndex(*changed, index); };
    });
  }
  void Lookups(std::size_t which, int count) {
    for (; count > 0; --count) {
      const UINT key = AnyIndex();
      Both([=](auto& world) {
        return world.template Find<typename Kind::Traits::Index>(which, key);
      });
      Both([=](auto& world) { return world.template Find<typename Kind::Number>(which, key); });
    }
  }

  using Own = typename Kind::Traits::Own;

  Random m_random;
  std::uint32_t m_foreign;
  bool m_ascending;
  UINT m_last = 1;
  World<Kind, List> m_new;
  World<Kind, Plain> m_plain;
};

template <typename Kind>
class RecordListModel : public testing::Test {};
using Kinds = testing::Types<ChannelKind, TransponderKind>;
TYPED_TEST_SUITE(RecordListModel, Kinds);

}  // namespace

TYPED_TEST(RecordListModel, RandomOperations) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    Worlds<TypeParam> worlds(seed);
    for (int step = 0; step < 120; ++step) {
      worlds.Step();
      worlds.Check();
      if (testing::Test::HasFailure()) FAIL() << "seed " << seed << ", step " << step;
    }
  }
}

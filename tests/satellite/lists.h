// The lists of the satellite model under one set of names, so that what they have in common is said
// once and tested for each.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/com_ptr.h"
#include "platform/text.h"
#include "satellite/dish_sat_info.h"
#include "satellite/dish_sat_info_mgr.h"
#include "satellite/lnb_info.h"
#include "satellite/lnb_info_mgr.h"
#include "satellite/satellite_info.h"
#include "satellite/satellite_info_mgr.h"
#include "satellite/transponder_info.h"
#include "satellite/transponder_info_mgr.h"
#include "support/dom_text.h"
#include "support/expect.h"

struct Satellites {
  using List = CSatelliteInfoMgr;
  using Record = CSatelliteInfo;
  using IRecord = ISatelliteInfo;
  static constexpr char kSource[] = "<SAT_TABLE/>";
  static constexpr char kContainer[] = "";
  static constexpr char kTag[] = "Satellite";
  static constexpr char kText[] = "name";
  static constexpr bool kAsksRecords = true;
  static constexpr bool kSaves = false;
  static HRESULT Create(List& list, IRecord** out) { return list.CreateSatelliteInfo(out); }
  static HRESULT Add(List& list, IRecord* record) { return list.AddSatelliteInfo(record); }
  static HRESULT Remove(List& list, IRecord* record) { return list.RemoveSatelliteInfo(record); }
  static HRESULT Count(List& list, UINT* count) {
    return list.GetSatCount(0, RegionUnknown, SatcoDX_Unknown, count);
  }
  static HRESULT ByIndex(List& list, UINT index, IRecord** out) {
    return list.GetSatInfoByIndex(index, 0, RegionUnknown, SatcoDX_Unknown, out);
  }
  static HRESULT GetText(IRecord* record, BSTR* text) { return record->GetName(text); }
};

struct Transponders {
  using List = CTransponderInfoMgr;
  using Record = CTransponderInfo;
  using IRecord = ITransponderInfo;
  static constexpr char kSource[] = "<C-Band/>";
  static constexpr char kContainer[] = "";
  static constexpr char kTag[] = "Transponder";
  static constexpr char kText[] = "name";
  static constexpr bool kAsksRecords = true;
  static constexpr bool kSaves = false;
  static HRESULT Create(List& list, IRecord** out) { return list.CreateTransponderInfo(out); }
  static HRESULT Add(List& list, IRecord* record) { return list.AddTransponderInfo(record); }
  static HRESULT Remove(List& list, IRecord* record) { return list.RemoveTransponderInfo(record); }
  static HRESULT Count(List& list, UINT* count) { return list.GetTransponderCount(count); }
  static HRESULT ByIndex(List& list, UINT index, IRecord** out) {
    return list.GetTransponderInfoByIndex(index, out);
  }
  static HRESULT GetText(IRecord* record, BSTR* text) { return record->GetName(text); }
};

struct Lnbs {
  using List = CLNBInfoMgr;
  using Record = CLNBInfo;
  using IRecord = ILNBInfo;
  static constexpr char kSource[] = "<LNB_TABLE/>";
  static constexpr char kContainer[] = "";
  static constexpr char kTag[] = "LNB";
  static constexpr char kText[] = "type";
  static constexpr bool kAsksRecords = false;
  static constexpr bool kSaves = false;
  static HRESULT Create(List& list, IRecord** out) { return list.CreateLNBInfo(out); }
  static HRESULT Add(List& list, IRecord* record) { return list.AddLNBInfo(record); }
  static HRESULT Remove(List& list, IRecord* record) { return list.RemoveLNBInfo(record); }
  static HRESULT Count(List& list, UINT* count) { return list.GetLNBCount(count); }
  static HRESULT ByIndex(List& list, UINT index, IRecord** out) {
    return list.GetLNBInfoByIndex(index, out);
  }
  static HRESULT GetText(IRecord* record, BSTR* text) { return record->GetType(text); }
};

template <UINT kDish>
struct Dish {
  using List = CDishSatInfoMgr;
  using Record = CDishSatInfo;
  using IRecord = IDishSatInfo;
  static constexpr char kSource[] =
      "<SAT_SETTING><DISH_1/><DISH_2/><DISH_3/><DISH_4/></SAT_SETTING>";
  static constexpr const char* kContainers[] = {"./DISH_1", "./DISH_2", "./DISH_3", "./DISH_4"};
  static constexpr const char* kContainer = kContainers[kDish];
  static constexpr char kTag[] = "SAT";
  static constexpr char kText[] = "id";
  static constexpr bool kAsksRecords = false;
  static constexpr bool kSaves = true;
  static HRESULT Create(List& list, IRecord** out) { return list.CreateDishSatInfo(out); }
  static HRESULT Add(List& list, IRecord* record) { return list.AddDishSatInfo(record, kDish); }
  static HRESULT Remove(List& list, IRecord* record) {
    return list.RemoveDishSatInfo(record, kDish);
  }
  static HRESULT Count(List& list, UINT* count) { return list.GetDishSatCount(count, kDish); }
  static HRESULT ByIndex(List& list, UINT index, IRecord** out) {
    return list.GetDishSatInfoByIndex(out, kDish, index);
  }
  static HRESULT GetText(IRecord* record, BSTR* text) { return record->GetID(text); }
};

using AllLists = testing::Types<Satellites, Transponders, Lnbs, Dish<0>, Dish<3>>;

/// A record as a host could implement one: it fails where it is told to, and calls a hook whenever
/// its list asks or numbers it.
template <typename Record>
class HostRecord : public Record {
 public:
  HRESULT indexResult = S_OK;
  HRESULT dirtyResult = S_OK;
  std::function<void()> onCall;
  int calls = 0;
  static inline int alive = 0;

  HostRecord() { ++alive; }
  ~HostRecord() override { --alive; }

  HRESULT STDMETHODCALLTYPE GetIndex(UINT* pnIndex) override {
    Called();
    return FAILED(indexResult) ? indexResult : Record::GetIndex(pnIndex);
  }
  HRESULT STDMETHODCALLTYPE SetIndex(UINT nIndex) override {
    Called();
    return Record::SetIndex(nIndex);
  }
  HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) override {
    Called();
    return FAILED(dirtyResult) ? dirtyResult : Record::GetDirty(plDirty);
  }

 protected:
  void Called() {
    ++calls;
    // A copy: the hook may replace itself.
    if (const std::function<void()> hook = onCall) hook();
  }
};

/// A list, its records by short names, and an element to load it from.
template <typename T>
class ListTest : public testing::Test {
 protected:
  using IRecord = typename T::IRecord;
  using Host = HostRecord<typename T::Record>;
  using Indexes = std::vector<UINT>;
  using Texts = std::vector<std::string>;

  ListTest() : m_source(T::kSource) { m_list.emplace(); }
  ~ListTest() override {
    m_list.reset();
    EXPECT_EQ(0, Host::alive) << "records leaked";
    Host::alive = 0;
  }

  typename T::List& List() { return *m_list; }
  const dom::Element& Source() { return m_source.root; }

  ComPtr<IRecord> Make(UINT index = 0) {
    ComPtr<IRecord> record;
    ExpectHr(S_OK, T::Create(List(), record.Receive()));
    if (record) record->SetIndex(index);
    return record;
  }
  /// Makes one and adds it.
  ComPtr<IRecord> Added(UINT index) {
    const ComPtr<IRecord> record = Make(index);
    ExpectHr(S_OK, T::Add(List(), record.Get()));
    return record;
  }
  /// The same with a record of the host's.
  ComPtr<IRecord> AddedHost(UINT index, Host** raw) {
    *raw = new Host;
    const ComPtr<IRecord> record = ComPtr<IRecord>::Attach(*raw);
    record->SetIndex(index);
    ExpectHr(S_OK, T::Add(List(), record.Get()));
    return record;
  }
  /// Makes the list number itself 1, 2, 3, ...
  void Number() { ExpectHr(S_OK, T::Remove(List(), Make().Detach())); }

  UINT Count() {
    UINT count = 4711;
    ExpectHr(S_OK, T::Count(List(), &count));
    return count;
  }
  LONG Dirty() {
    LONG dirty = 4711;
    ExpectHr(S_OK, List().GetDirty(&dirty));
    return dirty;
  }
  static UINT IndexOf(const ComPtr<IRecord>& record) {
    UINT index = 4711;
    ExpectHr(S_OK, record->GetIndex(&index));
    return index;
  }
  static std::string TextOf(const ComPtr<IRecord>& record) {
    Bstr text;
    ExpectHr(S_OK, T::GetText(record.Get(), text.Receive()));
    return text::ToUtf8(text.View());
  }
  ComPtr<IRecord> At(UINT index) {
    ComPtr<IRecord> record;
    const HRESULT hr = T::ByIndex(List(), index, record.Receive());
    EXPECT_TRUE(hr == S_OK || hr == E_FAIL) << HrText(hr);
    return record;
  }
  /// The records in list order. The list is numbered for it.
  std::vector<ComPtr<IRecord>> Order() {
    Number();
    std::vector<ComPtr<IRecord>> order;
    for (UINT number = 1; number <= Count(); ++number) order.push_back(At(number));
    return order;
  }
  Texts OrderedTexts() {
    Texts texts;
    for (const ComPtr<IRecord>& record : Order()) texts.push_back(TextOf(record));
    return texts;
  }

  dom::Element Container() {
    return *T::kContainer == '\0' ? Source() : Child(Source(), T::kContainer);
  }
  /// One more record in the document.
  dom::Element AddElement(const char* text, const char* tag = T::kTag) {
    dom::Element element;
    ExpectHr(S_OK, m_source.Document().CreateElement(tag, element));
    ExpectHr(S_OK, Container().AppendChild(element));
    ExpectHr(S_OK, element.SetNarrow(T::kText, text));
    return element;
  }
  LONG Elements() { return ::Count(Container(), (std::string("./") + T::kTag).c_str()); }
  /// A satellite without its Ku-Band element makes the list's answer E_FAIL.
  static HRESULT LoadResult() { return std::is_same_v<T, Satellites> ? E_FAIL : S_OK; }
  void Load() { ExpectHr(LoadResult(), List().Load(dom::kIidNode, Source().Get())); }

  void LoadEmpty() { ExpectHr(S_OK, List().Load(dom::kIidNode, Source().Get())); }

  std::optional<typename T::List> m_list;
  TextDocument m_source;
};

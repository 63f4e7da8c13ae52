#include "support/channel_sequence.h"

#include <algorithm>
#include <array>

#include "core/station_blocks.h"
#include "support/fuzz.h"

namespace {

using channel_list_model::kNone;

constexpr OpenedWith kOpenedWith = {InputSignalDVBTerrestrial, 49};
constexpr DWORD kMasks[] = {0, 2, 8, 10, 0xF0, 0x80000000, 0xFFFFFFFF, 1};

// What a service code in the block is called.
struct Service {
  std::uint32_t code;
  std::int32_t type;
};
constexpr Service kServices[] = {{1, ServiceDigitalTV},
                                 {2, ServiceDigitalRadio},
                                 {12, ServiceDataBroadcast},
                                 {99, ServiceOthers}};

void SetService(IChannelInfo* record, std::uint32_t code) {
  std::array<BYTE, station_blocks::kDvbt.size> block = {};
  station_blocks::Store(block.data(), 4, code);
  _StationTuneInfo station = {};
  station.cbInformation = static_cast<DWORD>(block.size());
  station.pbInformation = block.data();
  Require(record->SetStationInfo(&station) == S_OK);
}

}  // namespace

ChannelSequence::ChannelSequence(const Scratch& scratch)
    : m_scratch(scratch),
      m_database(OpenDatabase(scratch, kOpenedWith)),
      m_list(ListOf(m_database, kOpenedWith.signalType)) {}

void ChannelSequence::Step(Input& input) {
  switch (input.Below(13)) {
    case 0:
    case 1:
    case 2:
      return Add(input);
    case 3:
      return Remove(input);
    case 4:
      return Move(input);
    case 5:
      return Sort(input.Below(2) != 0);
    case 6:
      return SetIndex(input);
    case 7:
      return Lookup(input);
    case 8:
      return Count(input);
    case 9:
      return Navigate(input);
    case 10:
      return Dirty();
    case 11:
      return Clear();
    default:
      return Reopen();
  }
}

void ChannelSequence::RequireSame() {
  std::vector<ULONG> references(m_entries.size(), 1);
  for (const Entry* entry : m_model.entries) ++references[static_cast<std::size_t>(entry->id)];
  for (std::size_t i = 0; i < m_entries.size(); ++i) {
    m_records[i]->AddRef();
    Require(m_records[i]->Release() == references[i]);
    UINT index = kNone;
    m_records[i]->GetChannelIndex(&index);
    Require(index == m_entries[i]->index);
  }
  UINT count = 0;
  Require(m_list->GetChannelCount(0xFFFFFFFF, &count) == S_OK);
  Require(count == m_model.entries.size());
}

// Half of the records name no service type; these have no form in the file.
void ChannelSequence::Add(Input& input) {
  Entry entry;
  entry.index = input.Below(20) == 0 ? kNone : input.Below(30);
  entry.favor = input.Below(2);
  entry.names = input.Below(2) != 0;
  const Service& service = kServices[input.Below(4)];
  entry.serviceType = service.type;
  ComPtr<IChannelInfo> record;
  Require(m_list->CreateChannelInfo(record.Receive()) == S_OK);
  SetService(record.Get(), service.code);
  record->SetFavor(entry.favor);
  record->SetChannelIndex(entry.index);
  if (!entry.names) record->SetSignalType(InputSignalISDBTerrestrial);
  record->SetDirty(0);
  Hold(record, entry);
  const bool isAdded = m_model.Add(m_entries.back().get());
  Require(m_list->AddChannelInfo(record.Get()) == (isAdded ? S_OK : E_FAIL));
}

void ChannelSequence::Hold(const ComPtr<IChannelInfo>& record, Entry entry) {
  entry.id = static_cast<int>(m_entries.size());
  m_entries.push_back(std::make_unique<Entry>(entry));
  m_records.push_back(record);
}

ChannelSequence::Entry* ChannelSequence::Any(Input& input) {
  const auto count = static_cast<UINT>(m_model.entries.size());
  return count == 0 ? nullptr : m_model.entries[input.Below(count)];
}

IChannelInfo* ChannelSequence::RecordOf(const Entry* entry) {
  return m_records[static_cast<std::size_t>(entry->id)].Get();
}

void ChannelSequence::TakeOut(Entry* entry) {
  m_model.Remove(entry);
  Require(m_list->RemoveChannelInfo(RecordOf(entry)) == S_OK);
}

void ChannelSequence::Remove(Input& input) {
  if (Entry* entry = Any(input)) TakeOut(entry);
}

void ChannelSequence::Move(Input& input) {
  const UINT from = input.Below(25);
  const UINT to = input.Below(25);
  Require(m_list->MoveChannel(from, to) == m_model.Move(from, to));
}

void ChannelSequence::SetIndex(Input& input) {
  Entry* entry = Any(input);
  if (entry == nullptr) return;
  entry->index = input.Below(10) == 0 ? kNone : input.Below(30);
  RecordOf(entry)->SetChannelIndex(entry->index);
  RecordOf(entry)->SetDirty(0);
}

// Numbers are made distinct: the order of equal ones is the sort's own affair.
void ChannelSequence::Sort(bool ascending) {
  for (Entry* entry : m_model.entries) {
    entry->number = static_cast<UINT>(entry->id) * 7919 % 104729;
    RecordOf(entry)->SetChannelNo(entry->number);
  }
  std::sort(m_model.entries.begin(), m_model.entries.end(),
            [](const Entry* a, const Entry* b) { return a->number < b->number; });
  m_model.Renumber(ascending);
  Require(m_list->SortChannel(SortChannelByNo, ascending ? 1 : 0) == S_OK);
}

void ChannelSequence::RequireFound(const Entry* expected, HRESULT hr,
                                   const ComPtr<IChannelInfo>& found) {
  Require(hr == (expected == nullptr ? E_FAIL : S_OK));
  Require(found.Get() == (expected == nullptr ? nullptr : RecordOf(expected)));
}

void ChannelSequence::Lookup(Input& input) {
  const UINT key = input.Below(30);
  ComPtr<IChannelInfo> found;
  HRESULT hr = m_list->GetChannelInfoByIndex(key, found.Receive());
  RequireFound(m_model.ByIndex(key), hr, found);
  hr = m_list->GetChannelInfoByNo(key, found.Receive());
  RequireFound(m_model.ByNumber(key), hr, found);
}

void ChannelSequence::Count(Input& input) {
  const DWORD mask = kMasks[input.Below(8)];
  UINT count = 0;
  Require(m_list->GetChannelCount(mask, &count) == S_OK);
  Require(count == m_model.Count(mask));
}

void ChannelSequence::Navigate(Input& input) {
  const UINT from = input.Below(static_cast<UINT>(m_model.entries.size()) + 2);
  const DWORD mask = kMasks[input.Below(8)];
  const bool isAvailable = input.Below(2) != 0;
  const bool isLooping = input.Below(2) != 0;
  const bool isNext = input.Below(2) != 0;
  UINT expected = 4711;
  UINT found = 4711;
  const HRESULT hr = m_model.Find(isNext, from, mask, isAvailable, isLooping, &expected);
  Require(hr == (isNext ? m_list->FindNextChannel(from, &found, mask, isAvailable, isLooping)
                        : m_list->FindPreChannel(from, &found, mask, isAvailable, isLooping)));
  Require(found == expected);
}

void ChannelSequence::Dirty() {
  BOOL dirty = 0;
  Require(m_list->GetDirty(&dirty) == S_OK);
  if (m_model.dirty) Require(dirty == 1);
  for (const ComPtr<IChannelInfo>& record : m_records) record->SetDirty(0);
  m_list->SetDirty(0);
  m_model.dirty = false;
  Require(m_list->GetDirty(&dirty) == S_OK && dirty == 0);
}

void ChannelSequence::Clear() {
  Require(m_list->Clear() == S_OK);
  m_model.entries.clear();
  m_model.dirty = false;
}

void ChannelSequence::Reopen() {
  const std::vector<Entry*> all = m_model.entries;
  for (Entry* entry : all) {
    if (!entry->names) TakeOut(entry);
  }
  Sort(true);
  Require(m_database->SaveChannelToFile() == S_OK);
  std::vector<Entry> saved;
  for (const Entry* entry : m_model.entries) saved.push_back(*entry);
  m_model = {};
  m_records.clear();
  m_entries.clear();
  m_list.Reset();
  Require(m_database->Close() == S_OK);
  m_database = OpenDatabase(m_scratch, kOpenedWith);
  m_list = ListOf(m_database, kOpenedWith.signalType);
  for (const Entry& entry : saved) {
    ComPtr<IChannelInfo> record;
    Require(m_list->GetChannelInfoByIndex(entry.index, record.Receive()) == S_OK);
    Hold(record, entry);
    m_model.entries.push_back(m_entries.back().get());
  }
}

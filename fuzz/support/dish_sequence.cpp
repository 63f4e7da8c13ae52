#include "support/dish_sequence.h"

#include "support/fuzz.h"

DishSequence::DishSequence(const Scratch& scratch) : m_database(OpenDatabase(scratch, {})) {
  Require(SUCCEEDED(m_database->GetDishSatInfoMgr(m_list.Receive())));
}

void DishSequence::Step(Input& input) {
  const UINT dish = input.Below(5);
  switch (input.Below(6)) {
    case 0:
    case 1:
    case 2:
      return Add(input, dish);
    case 3:
      return Remove(input, dish);
    case 4:
      return Lookup(input, dish);
    default:
      return Reload();
  }
}

void DishSequence::RequireSame() {
  for (UINT dish = 0; dish < m_dishes.size(); ++dish) {
    UINT count = 0;
    Require(m_list->GetDishSatCount(&count, dish) == S_OK && count == m_dishes[dish].size());
    for (const Entry& entry : m_dishes[dish]) {
      UINT index = 0;
      Require(entry.record->GetIndex(&index) == S_OK && index == entry.index);
    }
  }
}

void DishSequence::Add(Input& input, UINT dish) {
  Entry entry = {{}, input.Below(12)};
  Require(m_list->CreateDishSatInfo(entry.record.Receive()) == S_OK);
  entry.record->SetIndex(entry.index);
  entry.record->SetLowFreq(m_nextFrequency++);
  entry.record->SetID(input.Text(input.Below(8)).Get());
  const HRESULT hr = m_list->AddDishSatInfo(entry.record.Get(), dish);
  Require(hr == (dish < m_dishes.size() ? S_OK : E_FAIL));
  if (hr != S_OK) return;
  std::vector<Entry>& entries = m_dishes[dish];
  auto place = entries.begin();
  while (place != entries.end() && place->index < entry.index) ++place;
  entries.insert(place, entry);
}

void DishSequence::Remove(Input& input, UINT dish) {
  if (dish >= m_dishes.size() || m_dishes[dish].empty()) return;
  std::vector<Entry>& entries = m_dishes[dish];
  const UINT place = input.Below(static_cast<UINT>(entries.size()));
  Require(m_list->RemoveDishSatInfo(entries[place].record.Get(), dish) == S_OK);
  entries.erase(entries.begin() + place);
  for (std::size_t i = 0; i < entries.size(); ++i) entries[i].index = static_cast<UINT>(i + 1);
}

void DishSequence::Lookup(Input& input, UINT dish) {
  const UINT index = input.Below(12);
  ComPtr<IDishSatInfo> found;
  const HRESULT hr = m_list->GetDishSatInfoByIndex(found.Receive(), dish, index);
  const IDishSatInfo* expected = nullptr;
  if (dish < m_dishes.size()) {
    for (const Entry& entry : m_dishes[dish]) {
      if (expected == nullptr && entry.index == index) expected = entry.record.Get();
    }
  }
  Require(hr == (expected == nullptr ? E_FAIL : S_OK) && found.Get() == expected);
}

void DishSequence::Reload() {
  // A change below numbers on takes the old elements out, so that the file follows the lists.
  ComPtr<IDishSatInfo> none;
  Require(m_list->CreateDishSatInfo(none.Receive()) == S_OK);
  none->AddRef();  // which removing what is not there takes away
  Require(m_list->RemoveDishSatInfo(none.Get(), 0) == S_OK);
  for (std::vector<Entry>& entries : m_dishes) {
    for (Entry& entry : entries) entry.record->SetID(nullptr);
  }
  Require(m_database->SaveUserSettingsToFile() == S_OK);
  Require(m_database->LoadUserSettingsFromFile() == S_OK);
  for (UINT dish = 0; dish < m_dishes.size(); ++dish) {
    UINT index = 0;
    for (Entry& entry : m_dishes[dish]) {
      DWORD before = 0;
      DWORD after = 0;
      entry.record->GetLowFreq(&before);
      entry.index = index++;
      Require(m_list->GetDishSatInfoByIndex(entry.record.Receive(), dish, entry.index) == S_OK);
      Require(entry.record->GetLowFreq(&after) == S_OK && before == after);
    }
  }
}

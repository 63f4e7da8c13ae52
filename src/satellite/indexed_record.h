#pragma once

#include <optional>
#include <tuple>
#include <utility>

#include "records/own_record.h"
#include "records/record_list.h"
#include "satellite/fields.h"

/// Base of the satellite model's record class `C`, which implements the interface `I`: the index
/// and the dirty flag that every record has.
template <typename C, typename I>
class IndexedRecord : public OwnRecord<C, I> {
 public:
  /// What lists find its place by, and look it up by.
  struct Index {
    static std::optional<UINT> Of(const C& record) { return record.m_index; }
    static HRESULT Get(I* record, UINT* index) { return record->GetIndex(index); }
    static std::optional<UINT> Ask(I* record) {
      UINT index = 0;
      if (FAILED(record->GetIndex(&index))) return std::nullopt;
      return index;
    }
    static void Number(I* record, UINT index) { record->SetIndex(index); }
    static bool Number(C& record, UINT index) {
      return std::exchange(record.m_index, index) != index;
    }
  };
  /// What RecordList wants to know.
  struct Traits {
    using Interface = I;
    using Own = C;
    using Flag = LONG;
    using Index = IndexedRecord::Index;
    using Keys = std::tuple<KeyOrder<C, I, Index>>;
  };

  HRESULT STDMETHODCALLTYPE GetIndex(UINT* pnIndex) override {
    return fields::Get(m_index, pnIndex);
  }
  HRESULT STDMETHODCALLTYPE SetIndex(UINT nIndex) override {
    this->template StoreKey<Index>(m_index, nIndex);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) override {
    return fields::Get(m_dirty, plDirty);
  }
  HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) override { return fields::Set(m_dirty, lDirty); }

 private:
  UINT m_index = 0;
  LONG m_dirty = 0;
};

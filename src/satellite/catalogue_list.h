#pragma once

#include <new>

#include "core/gen_com_obj.h"
#include "platform/dom.h"
#include "platform/lack_of_memory.h"
#include "satellite/record_loading.h"
#include "xml/xml_nodes.h"

/// What the lists of the satellite catalogue (satellites, transponders, LNB types) have in common.
/// `C` is the list's class, `M` its interface, `I` that of its records. `C` supplies
///   static constexpr auto& kPath    the path of its records in its element;
///   HRESULT LoadRecord(element, position, loaded)
///       makes the record of one element and appends it to `loaded`; nothing is appended when
///       that fails.
///
/// A list that was loaded keeps its element true to itself: clearing and removing strip the
/// element's records. Only the reference counts are safe for concurrent use.
template <typename C, typename M, typename I>
class CatalogueList : public CGenComObj<C, M> {
 public:
  CatalogueList() = default;
  ~CatalogueList() override { LetGo(); }

  HRESULT STDMETHODCALLTYPE Open() override { return this->Close(); }
  HRESULT STDMETHODCALLTYPE Close() override {
    // The element goes first, so that closing never strips the document.
    m_element = dom::Element();
    this->Clear();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clear() override {
    this->SetDirty(0);
    m_records.ReleaseAll();
    StripElement();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Load(REFIID riid, IUnknown* pUnknown) override;
  HRESULT STDMETHODCALLTYPE Save(REFIID riid, IUnknown* pUnknown) override {
    dom::Element element;
    const HRESULT hr = xml::SourceElement(riid, pUnknown, element);
    // The catalogue comes with the application and is never written.
    return FAILED(hr) ? hr : E_NOTIMPL;
  }
  /// Undoes opening and loading when its own scope is left by an exception.
  auto PutBackWhenRaised() { return PutBack(m_records, m_element, m_dirty); }

  HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) override {
    if (plDirty == nullptr) return E_POINTER;
    *plDirty = m_dirty;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) override {
    m_dirty = lDirty;
    return S_OK;
  }

 protected:
  using Loaded = NewRecords<I>;

  const RecordList<I>& Records() const { return m_records; }

  HRESULT AddRecord(I* record);
  /// Numbers what is left 1, 2, 3, ..., from the back when not `ascending`.
  void NumberRecords(bool ascending) {
    m_records.Renumber(ascending);
    this->SetDirty(1);
    StripElement();
  }
  void TakeOut(I* record) { m_records.Remove(record); }
  HRESULT FindByIndex(UINT index, I** out) const {
    return out == nullptr ? E_POINTER : m_records.FindByIndex(index, out);
  }
  HRESULT CountRecords(UINT* count) const {
    if (count == nullptr) return E_POINTER;
    *count = m_records.Count();
    return S_OK;
  }
  /// GetDirty of the lists that ask their records too.
  HRESULT GetDirtyOfAll(LONG* dirty) const {
    if (dirty == nullptr) return E_POINTER;
    *dirty = m_dirty != 0 ? m_dirty : (m_records.HasDirtyRecord() ? 1 : 0);
    return S_OK;
  }

 private:
  HRESULT LoadFrom(const dom::Element& element);
  void LetGo() {
    m_element = dom::Element();
    m_records.ReleaseAll();
  }
  // The element's records carry what no longer holds.
  void StripElement() const {
    if (const dom::Element element = m_element) xml::RemoveAllChildren(element, C::kPath);
  }

  RecordList<I> m_records;
  dom::Element m_element;
  LONG m_dirty = 0;
};

template <typename C, typename M, typename I>
HRESULT STDMETHODCALLTYPE CatalogueList<C, M, I>::Load(REFIID riid, IUnknown* pUnknown) {
  return AnsweringLackOfMemory([=, this] {
    dom::Element element;
    const HRESULT hr = xml::SourceElement(riid, pUnknown, element);
    return FAILED(hr) ? hr : LoadFrom(element);
  });
}

// What is there stays; an element that cannot be read is left out. The result is that of the last
// step for the last element.
template <typename C, typename M, typename I>
HRESULT CatalogueList<C, M, I>::LoadFrom(const dom::Element& element) {
  const PutBack bound(m_element);
  if (element.Get() != m_element.Get()) m_element = element;
  dom::ElementList elements;
  HRESULT hr = xml::SelectChildren(element, C::kPath, elements);
  if (FAILED(hr)) return hr;
  hr = LoadElements(elements, m_records, hr,
                    [this](const dom::Element& record, LONG position, Loaded& loaded) {
                      return static_cast<C*>(this)->LoadRecord(record, position, loaded);
                    });
  this->SetDirty(0);
  return hr;
}

template <typename C, typename M, typename I>
HRESULT CatalogueList<C, M, I>::AddRecord(I* record) {
  if (record == nullptr) return E_POINTER;
  try {
    const HRESULT hr = m_records.Add(record);
    if (FAILED(hr)) return hr;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  this->SetDirty(1);
  return S_OK;
}

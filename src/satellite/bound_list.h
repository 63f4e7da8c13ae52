#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "core/gen_com_obj.h"
#include "platform/dom.h"
#include "platform/lack_of_memory.h"
#include "satellite/record_loading.h"
#include "xml/elements/xml_nodes.h"

/// What the four lists of the satellite model have in common: records of class `Own` in `kParts`
/// lists, the element that they were loaded from, and a dirty flag. `C` is the list's class and `M`
/// its interface. `C` supplies
///   HRESULT LoadFrom(element)        adds the records of the element;
///   HRESULT SaveTo(element)          writes them to it;
///   static void StripElement(element)
///       takes them out of it: they carry what no longer holds.
///
/// A list that was loaded keeps its element true to itself: clearing and removing strip the
/// element's records, of all parts. Only the reference counts are safe for concurrent use.
template <typename C, typename M, typename Own, std::size_t kParts = 1>
class BoundList : public CGenComObj<C, M> {
 public:
  BoundList() = default;
  ~BoundList() override { LetGo(); }

  HRESULT STDMETHODCALLTYPE Open() override { return this->Close(); }
  HRESULT STDMETHODCALLTYPE Close() override {
    // The element goes first, so that closing never strips the document.
    m_element = dom::Element();
    this->Clear();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clear() override {
    this->SetDirty(0);
    ReleaseAll();
    Strip();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Load(REFIID riid, IUnknown* pUnknown) override;
  HRESULT STDMETHODCALLTYPE Save(REFIID riid, IUnknown* pUnknown) override {
    return AnsweringLackOfMemory([=, this] {
      dom::Element element;
      const HRESULT hr = xml::SourceElement(riid, pUnknown, element);
      return FAILED(hr) ? hr : static_cast<C*>(this)->SaveTo(element);
    });
  }
  /// The list's own flag only.
  HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) override {
    if (plDirty == nullptr) return E_POINTER;
    *plDirty = m_dirty;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) override {
    m_dirty = lDirty;
    return S_OK;
  }

  /// Undoes opening and loading when its own scope is left by an exception.
  auto PutBackWhenRaised() { return PutBack(m_parts, m_element, m_dirty); }

 protected:
  using Interface = typename Own::Traits::Interface;
  using Part = RecordList<typename Own::Traits>;
  using Loaded = std::vector<typename Part::Loaded>;

  /// For destructors: closes, but leaves the element alone and asks nobody.
  void LetGo() {
    m_element = dom::Element();
    ReleaseAll();
  }
  Part& At(std::size_t part) { return m_parts[part]; }
  const Part& At(std::size_t part) const { return m_parts[part]; }

  // A null pointer is answered first, then a part that is none: E_FAIL.
  HRESULT AddRecord(Interface* record, std::size_t part = 0);
  HRESULT CountRecords(UINT* count, std::size_t part = 0) const;
  HRESULT FindByIndex(UINT index, Interface** out, std::size_t part = 0);
  /// Takes the record out, and releases one reference in any case; what is left is to be numbered.
  HRESULT RemoveRecord(Interface* record, std::size_t part = 0);
  /// Numbers the records of a part afresh, which no element of any part has then.
  HRESULT NumberRecords(Numbering from, std::size_t part = 0);

 private:
  void ReleaseAll() {
    for (Part& part : m_parts) part.ReleaseAll();
  }
  void Strip() const {
    if (const dom::Element element = m_element) C::StripElement(element);
  }

  std::array<Part, kParts> m_parts;
  dom::Element m_element;
  LONG m_dirty = 0;
};

// What is there stays. Records of all parts are added, or of none.
template <typename C, typename M, typename Own, std::size_t kParts>
HRESULT STDMETHODCALLTYPE BoundList<C, M, Own, kParts>::Load(REFIID riid, IUnknown* pUnknown) {
  return AnsweringLackOfMemory([=, this] {
    dom::Element element;
    const HRESULT hr = xml::SourceElement(riid, pUnknown, element);
    if (FAILED(hr)) return hr;
    const PutBack before(m_parts, m_element);
    if (element.Get() != m_element.Get()) m_element = element;
    return static_cast<C*>(this)->LoadFrom(element);
  });
}

template <typename C, typename M, typename Own, std::size_t kParts>
HRESULT BoundList<C, M, Own, kParts>::AddRecord(Interface* record, std::size_t part) {
  if (record == nullptr) return E_POINTER;
  if (part >= kParts) return E_FAIL;
  return AnsweringLackOfMemory([=, this] {
    const HRESULT hr = m_parts[part].Add(record);
    return FAILED(hr) ? hr : this->SetDirty(1);
  });
}

template <typename C, typename M, typename Own, std::size_t kParts>
HRESULT BoundList<C, M, Own, kParts>::CountRecords(UINT* count, std::size_t part) const {
  if (count == nullptr) return E_POINTER;
  if (part >= kParts) return E_FAIL;
  *count = m_parts[part].Count();
  return S_OK;
}

template <typename C, typename M, typename Own, std::size_t kParts>
HRESULT BoundList<C, M, Own, kParts>::FindByIndex(UINT index, Interface** out, std::size_t part) {
  if (out == nullptr) return E_POINTER;
  return part < kParts ? m_parts[part].FindByIndex(index, out) : E_FAIL;
}

template <typename C, typename M, typename Own, std::size_t kParts>
HRESULT BoundList<C, M, Own, kParts>::RemoveRecord(Interface* record, std::size_t part) {
  if (record == nullptr) return E_POINTER;
  if (part >= kParts) return E_FAIL;
  m_parts[part].RemoveAndRelease(record);
  return S_OK;
}

template <typename C, typename M, typename Own, std::size_t kParts>
HRESULT BoundList<C, M, Own, kParts>::NumberRecords(Numbering from, std::size_t part) {
  if (part >= kParts) return E_FAIL;
  m_parts[part].Number(from);
  this->SetDirty(1);
  Strip();
  return S_OK;
}

#pragma once

#include <optional>

#include "platform/bstr.h"
#include "platform/text.h"
#include "satellite/bound_list.h"

/// What the lists of the satellite catalogue (satellites, transponders, LNB types) have in common.
/// `C` is the list's class, `M` its interface, `Own` the class of its records. `C` supplies
///   static constexpr auto& kPath    the path of its records in its element;
///   HRESULT LoadRecord(element, position, loaded)
///       makes the record of one element and appends it to `loaded`; nothing is appended when
///       that fails.
template <typename C, typename M, typename Own>
class CatalogueList : public BoundList<C, M, Own> {
 protected:
  using Base = BoundList<C, M, Own>;
  using typename Base::Interface;
  using typename Base::Loaded;
  using Records = typename Base::Part;

  const Records& All() const { return this->At(0); }
  /// First record whose text `getter` gives is equal, with a reference. E_FAIL when there is none.
  HRESULT FindByText(HRESULT (STDMETHODCALLTYPE Interface::*getter)(BSTR*), BSTR text,
                     Interface** out) const;
  /// GetDirty of the lists that ask their records too.
  HRESULT GetDirtyOfAll(LONG* dirty) {
    LONG own = 0;
    Base::GetDirty(&own);
    if (dirty == nullptr) return E_POINTER;
    *dirty = own != 0 ? own : (All().HasDirtyRecord() ? 1 : 0);
    return S_OK;
  }

 private:
  friend Base;
  HRESULT LoadFrom(const dom::Element& element);
  // The catalogue comes with the application and is never written.
  HRESULT SaveTo(const dom::Element&) { return E_NOTIMPL; }
  static void StripElement(const dom::Element& element) {
    xml::RemoveAllChildren(element, C::kPath);
  }
};

// An element that cannot be read is left out. The result is that of the last step for the last
// element.
template <typename C, typename M, typename Own>
HRESULT CatalogueList<C, M, Own>::LoadFrom(const dom::Element& element) {
  dom::ElementList elements;
  const HRESULT hr = xml::SelectChildren(element, C::kPath, elements);
  if (FAILED(hr)) return hr;
  const std::optional<HRESULT> last = LoadElements(
      elements, this->At(0), [this](const dom::Element& record, LONG position, Loaded& loaded) {
        return static_cast<C*>(this)->LoadRecord(record, position, loaded);
      });
  this->SetDirty(0);
  return last.value_or(hr);
}

template <typename C, typename M, typename Own>
HRESULT CatalogueList<C, M, Own>::FindByText(HRESULT (STDMETHODCALLTYPE Interface::*getter)(BSTR*),
                                             BSTR text, Interface** out) const {
  return All().FindFirst(
      [=](const typename Records::Held& record) {
        Bstr other;
        return SUCCEEDED((record.Get()->*getter)(other.Receive())) &&
               text::Equal(other.Get(), text);
      },
      out);
}

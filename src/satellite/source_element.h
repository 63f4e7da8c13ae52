#pragma once

#include "platform/com.h"
#include "platform/dom.h"

/// The element that a list is loaded from or saved to, out of the arguments of Load and Save.
/// E_NOTIMPL for an identifier other than that of a node or an element, E_INVALIDARG for null and
/// for what is not an element of this library's documents.
inline HRESULT SourceElement(REFIID riid, IUnknown* pUnknown, dom::Element& element) {
  if (!(riid == dom::kIidNode) && !(riid == dom::kIidElement)) return E_NOTIMPL;
  if (pUnknown == nullptr) return E_INVALIDARG;
  return dom::Element::From(pUnknown, element);
}

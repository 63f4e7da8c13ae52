// MSXML 3.0 as the document seam uses it. The compiler's library lacks these identifiers.
#pragma once

#include <msxml2.h>

#include "platform/bstr.h"
#include "platform/com.h"
#include "platform/com_ptr.h"

namespace msxml {

inline constexpr CLSID kClsidDocument30 = {
    0xF5078F32, 0xC551, 0x11D3, {0x89, 0xB9, 0x00, 0x00, 0xF8, 0x1F, 0xE2, 0x21}};
inline constexpr IID kIidDocument = {
    0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
inline constexpr IID kIidDocument2 = {
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// The element behind a handle of one, which always holds the element's own interface.
inline IXMLDOMElement* ElementOf(IUnknown* node) { return static_cast<IXMLDOMElement*>(node); }

/// Owns what a VARIANT holds.
class Variant {
 public:
  Variant() { VariantInit(&m_value); }
  explicit Variant(LONG number) : Variant() {
    V_VT(&m_value) = VT_I4;
    V_I4(&m_value) = number;
  }
  explicit Variant(Bstr text) : Variant() {
    V_VT(&m_value) = VT_BSTR;
    V_BSTR(&m_value) = text.Release();
  }
  explicit Variant(IUnknown* object) : Variant() {
    V_VT(&m_value) = VT_UNKNOWN;
    V_UNKNOWN(&m_value) = object;
    object->AddRef();
  }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&m_value); }

  VARIANT Get() const { return m_value; }
  VARIANT* Receive() {
    VariantClear(&m_value);
    return &m_value;
  }
  bool IsText() const { return V_VT(&m_value) == VT_BSTR; }
  /// The text goes to the caller; only where IsText.
  Bstr TakeText() {
    V_VT(&m_value) = VT_EMPTY;
    return Bstr::Attach(V_BSTR(&m_value));
  }

 private:
  VARIANT m_value;
};

/// An empty document that loads synchronously and fetches nothing that a file refers to.
HRESULT CreateDocument(ComPtr<IXMLDOMDocument2>& out);

/// Loads what the stream holds. S_OK, or S_FALSE when it is not well-formed, or E_OUTOFMEMORY; the
/// document is empty then.
HRESULT LoadStream(IXMLDOMDocument2* document, IStream* stream);

}  // namespace msxml

#include "platform/windows/dom/msxml.h"

namespace msxml {

HRESULT CreateDocument(ComPtr<IXMLDOMDocument2>& out) {
  constexpr DWORD kContext = CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER;
  ComPtr<IXMLDOMDocument> document;
  void** place = reinterpret_cast<void**>(document.Receive());
  HRESULT hr = CoCreateInstance(kClsidDocument30, nullptr, kContext, kIidDocument, place);
  if (FAILED(hr)) return hr;
  ComPtr<IXMLDOMDocument2> document2;
  hr = document->QueryInterface(kIidDocument2, reinterpret_cast<void**>(document2.Receive()));
  if (FAILED(hr)) return hr;
  hr = document2->put_async(VARIANT_FALSE);
  if (SUCCEEDED(hr)) hr = document2->put_resolveExternals(VARIANT_FALSE);
  if (SUCCEEDED(hr)) out = std::move(document2);
  return hr;
}

HRESULT LoadStream(IXMLDOMDocument2* document, IStream* stream) {
  VARIANT_BOOL isLoaded = VARIANT_FALSE;
  const Variant source(stream);
  const HRESULT hr = document->load(source.Get(), &isLoaded);
  if (hr == E_OUTOFMEMORY) return hr;
  // Wine answers some malformed texts with a failure code; the outcome is the same.
  return hr == S_OK && isLoaded == VARIANT_TRUE ? S_OK : S_FALSE;
}

}  // namespace msxml

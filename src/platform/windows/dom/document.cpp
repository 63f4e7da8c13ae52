// Documents over MSXML 3.0.
#include "platform/dom.h"
#include "platform/dom_path.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/windows/dom/memory_stream.h"
#include "platform/windows/dom/msxml.h"

namespace dom {
namespace {

IXMLDOMDocument2* DocumentOf(void* document) { return static_cast<IXMLDOMDocument2*>(document); }

HRESULT Append(IXMLDOMDocument2* document, IXMLDOMNode* node) {
  ComPtr<IXMLDOMNode> appended;
  return document->appendChild(node, appended.Receive());
}

void Empty(IXMLDOMDocument2* document) {
  // What cannot be read leaves a document empty.
  VARIANT_BOOL isLoaded = VARIANT_FALSE;
  document->loadXML(Bstr(WideView()).Get(), &isLoaded);
}

/// MSXML writes characters that no XML document may hold. So what it wrote is read once more, and a
/// file is replaced only by one that loads.
HRESULT Verify(IStream* stream) {
  ComPtr<IXMLDOMDocument2> copy;
  HRESULT hr = msxml::CreateDocument(copy);
  if (SUCCEEDED(hr)) hr = memory_stream::Rewind(stream);
  if (FAILED(hr)) return hr;
  return msxml::LoadStream(copy.Get(), stream) == S_OK ? S_OK : E_FAIL;
}

HRESULT Replace(const std::string& path, IStream* contents) {
  std::string bytes;
  const HRESULT hr = memory_stream::Bytes(contents, bytes);
  if (FAILED(hr)) return hr;
  files::AtomicFile file(path);
  return file.Write(bytes) && file.Commit() ? S_OK : E_FAIL;
}

}  // namespace

Document::Document(const Document& other) : m_document(other.m_document) {
  if (m_document) DocumentOf(m_document)->AddRef();
}

HRESULT Document::Create() {
  Close();
  ComPtr<IXMLDOMDocument2> document;
  const HRESULT hr = RaiseLackOfMemory(msxml::CreateDocument(document));
  if (SUCCEEDED(hr)) m_document = document.Detach();
  return hr;
}

void Document::Close() {
  if (void* old = std::exchange(m_document, nullptr)) DocumentOf(old)->Release();
}

HRESULT Document::Load(const std::string& path, bool& success) {
  success = false;
  if (!m_document) return E_INVALIDARG;
  ComPtr<IStream> stream;
  HRESULT hr = memory_stream::FromFile(path, stream);
  if (SUCCEEDED(hr)) hr = msxml::LoadStream(DocumentOf(m_document), stream.Get());
  success = hr == S_OK;
  if (!success) Empty(DocumentOf(m_document));
  RaiseLackOfMemory(hr);
  return success ? S_OK : S_FALSE;
}

HRESULT Document::Save(const std::string& path) const {
  if (!m_document) return E_INVALIDARG;
  ComPtr<IStream> stream;
  HRESULT hr = memory_stream::Create(stream);
  if (FAILED(hr)) return hr;
  const msxml::Variant destination(stream.Get());
  hr = DocumentOf(m_document)->save(destination.Get());
  if (SUCCEEDED(hr)) hr = Verify(stream.Get());
  if (FAILED(hr)) return hr;
  return Replace(path, stream.Get());
}

HRESULT Document::DocumentElement(Element& out) const {
  out = Element();
  if (!m_document) return E_INVALIDARG;
  ComPtr<IXMLDOMElement> element;
  const HRESULT hr = DocumentOf(m_document)->get_documentElement(element.Receive());
  if (FAILED(hr)) return hr;
  if (!element) return S_FALSE;
  out = Element::Attach(element.Detach());
  return S_OK;
}

HRESULT Document::AppendProcessingInstruction(const char* target, const char* data) const {
  if (!m_document || target == nullptr || data == nullptr) return E_INVALIDARG;
  ComPtr<IXMLDOMProcessingInstruction> instruction;
  const HRESULT hr =
      DocumentOf(m_document)
          ->createProcessingInstruction(text::FromNarrow(target).Get(),
                                        text::FromNarrow(data).Get(), instruction.Receive());
  if (FAILED(hr)) return hr;
  return Append(DocumentOf(m_document), instruction.Get());
}

HRESULT Document::CreateElement(const char* name, Element& out) const {
  out = Element();
  // Wine takes any text for a name.
  if (!m_document || name == nullptr || !IsPlainName(name)) return E_INVALIDARG;
  const msxml::Variant type(LONG{NODE_ELEMENT});
  ComPtr<IXMLDOMNode> node;
  const HRESULT hr = DocumentOf(m_document)
                         ->createNode(type.Get(), text::FromNarrow(name).Get(),
                                      Bstr(WideView()).Get(), node.Receive());
  if (FAILED(hr)) return hr;
  return Element::From(node.Get(), out);
}

HRESULT Document::AppendChild(const Element& child) const {
  if (!m_document || !child) return E_INVALIDARG;
  // Wine takes a second document element.
  Element root;
  if (DocumentElement(root) == S_OK) return E_FAIL;
  return Append(DocumentOf(m_document), msxml::ElementOf(child.Get()));
}

}  // namespace dom

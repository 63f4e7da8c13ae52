#include "xml/documents/xml_document.h"

#include <utility>

#include "platform/files.h"
#include "xml/documents/xml_format.h"
#include "xml/elements/element_paths.h"
#include "xml/elements/xml_nodes.h"

HRESULT CXmlDocument::Open(const std::string& path) {
  const auto putBack = PutBackWhenRaised();
  Close();
  m_state.path = path;
  return m_state.document.Create();
}

HRESULT CXmlDocument::Close() {
  m_state.document.Close();
  m_state.dirty = false;
  m_state.unreadable = false;
  return S_OK;
}

HRESULT CXmlDocument::SetPreFormatted(bool on) {
  if (m_state.preFormatted != on) {
    m_state.preFormatted = on;
    m_state.dirty = true;
  }
  return S_OK;
}

HRESULT CXmlDocument::GetRoot(dom::Element& root) const {
  return m_state.document ? m_state.document.DocumentElement(root) : E_FAIL;
}

HRESULT CXmlDocument::CreateRoot(const char* name, dom::Element& root) const {
  const dom::Document& document = m_state.document;
  if (!document) return E_FAIL;
  HRESULT hr = document.AppendProcessingInstruction("xml", "version='1.0' encoding='utf-8'");
  if (hr == S_OK) hr = document.CreateElement(name, root);
  return hr == S_OK ? document.AppendChild(root) : hr;
}

HRESULT CXmlDocument::FindOrAppend(const char* path, dom::Element* element) {
  dom::Element root;
  HRESULT hr = GetRoot(root);
  if (hr != S_OK) return FAILED(hr) ? hr : E_FAIL;
  dom::Element child;
  if (root.SelectSingle(path, child) != S_OK) {
    hr = xml::AppendNew(root, xml::paths::NameOf(path), child);
    if (FAILED(hr)) return hr;
  }
  if (element == nullptr) return E_POINTER;
  *element = std::move(child);
  return S_OK;
}

HRESULT CXmlDocument::LoadFile(bool& success) {
  success = false;
  if (!m_state.document) return E_FAIL;
  dom::Document loaded;
  // A thread that can make no document (on Windows, one without COM) loads into the old one.
  if (FAILED(loaded.Create())) loaded = m_state.document;
  const HRESULT hr = loaded.Load(m_state.path, success);
  m_state.document = std::move(loaded);
  m_state.unreadable = !success && files::Size(m_state.path) > 0;
  return hr;
}

HRESULT CXmlDocument::LoadOrEmpty() {
  bool success = false;
  const HRESULT hr = LoadFile(success);
  if (success) m_state.dirty = false;
  return success ? S_OK : hr;
}

bool CXmlDocument::KeepUnreadable() {
  if (m_state.unreadable && files::Size(m_state.path) > 0 && !files::KeepUnreadable(m_state.path))
    return false;
  m_state.unreadable = false;
  return true;
}

HRESULT CXmlDocument::SaveFile() {
  if (!m_state.document) return E_FAIL;
  return KeepUnreadable() ? m_state.document.Save(m_state.path) : E_FAIL;
}

HRESULT CXmlDocument::SaveWhenClean() {
  if (!m_state.document) return E_FAIL;
  if (m_state.dirty) return S_FALSE;
  dom::Element root;
  const HRESULT hr = GetRoot(root);
  if (hr != S_OK) return hr;
  RaiseLackOfMemory(SaveFile());
  return S_OK;
}

HRESULT CXmlDocument::SaveFormattedFile(const std::string& text) {
  return KeepUnreadable() ? xml::WriteFormattedFile(m_state.path, text) : E_FAIL;
}

#include "xml/xml_document.h"

#include "platform/files.h"
#include "xml/xml_format.h"
#include "xml/xml_nodes.h"

HRESULT CXmlDocument::Open(const std::string& path) {
  Close();
  m_path = path;
  return m_document.Create();
}

HRESULT CXmlDocument::Close() {
  m_document.Close();
  m_dirty = false;
  m_unreadable = false;
  return S_OK;
}

HRESULT CXmlDocument::SetPreFormatted(bool on) {
  if (m_preFormatted != on) {
    m_preFormatted = on;
    m_dirty = true;
  }
  return S_OK;
}

HRESULT CXmlDocument::GetRoot(dom::Element& root) const {
  return m_document ? m_document.DocumentElement(root) : E_FAIL;
}

HRESULT CXmlDocument::FindOrAppend(const char* name, dom::Element* element) {
  dom::Element root;
  HRESULT hr = GetRoot(root);
  if (hr != S_OK) return FAILED(hr) ? hr : E_FAIL;
  dom::Element child;
  if (root.SelectSingle((std::string("./") + name).c_str(), child) != S_OK) {
    hr = xml::CreateElementFor(root, name, child);
    if (hr == S_OK) hr = root.AppendChild(child);
    if (FAILED(hr)) return hr;
  }
  if (element == nullptr) return E_POINTER;
  *element = std::move(child);
  return S_OK;
}

HRESULT CXmlDocument::LoadFile(bool& success) {
  success = false;
  if (!m_document) return E_FAIL;
  const HRESULT hr = m_document.Load(m_path, success);
  m_unreadable = !success && files::Size(m_path) > 0;
  return hr;
}

HRESULT CXmlDocument::LoadOrEmpty() {
  bool success = false;
  const HRESULT hr = LoadFile(success);
  if (success) m_dirty = false;
  return success ? S_OK : hr;
}

bool CXmlDocument::KeepUnreadable() {
  if (m_unreadable && files::Size(m_path) > 0 && !files::KeepUnreadable(m_path)) return false;
  m_unreadable = false;
  return true;
}

HRESULT CXmlDocument::SaveFile() {
  if (!m_document) return E_FAIL;
  return KeepUnreadable() ? m_document.Save(m_path) : E_FAIL;
}

HRESULT CXmlDocument::SaveUnlessDirty() {
  if (!m_document) return E_FAIL;
  if (m_dirty) return S_FALSE;
  dom::Element root;
  const HRESULT hr = GetRoot(root);
  if (hr != S_OK) return hr;
  SaveFile();
  return S_OK;
}

HRESULT CXmlDocument::SaveFormattedFile(const std::string& text) {
  return KeepUnreadable() ? xml::WriteFormattedFile(m_path, text) : E_FAIL;
}

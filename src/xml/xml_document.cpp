#include "xml/xml_document.h"

#include "platform/files.h"
#include "xml/xml_format.h"

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

HRESULT CXmlDocument::LoadFile(bool& success) {
  success = false;
  if (!m_document) return E_FAIL;
  const HRESULT hr = m_document.Load(m_path, success);
  m_unreadable = !success && files::Size(m_path) > 0;
  return hr;
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

HRESULT CXmlDocument::SaveFormattedFile(const std::string& text) {
  return KeepUnreadable() ? xml::WriteFormattedFile(m_path, text) : E_FAIL;
}

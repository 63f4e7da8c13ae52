#pragma once

#include <string>

#include "platform/dom.h"

/// What the four file parsers share: one document, its path and its flags.
class CXmlDocument {
 public:
  CXmlDocument() = default;
  CXmlDocument(const CXmlDocument&) = delete;
  CXmlDocument& operator=(const CXmlDocument&) = delete;
  virtual ~CXmlDocument() = default;

  /// Drops what was open, keeps the path and makes an empty document.
  HRESULT Open(const std::string& path);
  /// Drops the document and clears the dirty flag.
  HRESULT Close();
  /// Chooses the pre-formatted form for saving; a change marks the document dirty.
  HRESULT SetPreFormatted(bool on);
  void SetDirty(bool dirty) { m_dirty = dirty; }
  bool IsDirty() const { return m_dirty; }

 protected:
  /// Loads the file and remembers when there was something that could not be read.
  HRESULT LoadFile(bool& success);
  /// Writes the document to its path. A file that could not be read is first kept beside it; where
  /// that is not possible nothing is written.
  HRESULT SaveFile();
  /// The same for the pre-formatted form.
  HRESULT SaveFormattedFile();

  dom::Document m_document;

 private:
  bool KeepUnreadable();

  std::string m_path;
  bool m_dirty = false;
  bool m_preFormatted = false;
  bool m_unreadable = false;

 protected:
  bool IsPreFormatted() const { return m_preFormatted; }
};

#pragma once

#include <string>

#include "platform/dom.h"
#include "platform/lack_of_memory.h"

/// What the four file parsers share: one document, its path and its flags. Lack of memory is
/// raised; opening and loading then leave everything as it was.
class CXmlDocument {
 private:
  struct State {
    dom::Document document;
    std::string path;
    bool dirty = false;
    bool preFormatted = false;
    bool unreadable = false;
  };

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
  void SetDirty(bool dirty) { m_state.dirty = dirty; }
  bool IsDirty() const { return m_state.dirty; }
  /// Undoes opening and loading when its own scope is left by an exception: for calls that do more
  /// than that.
  auto PutBackWhenRaised() { return PutBack(m_state); }

 protected:
  const dom::Document& Doc() const { return m_state.document; }
  bool IsPreFormatted() const { return m_state.preFormatted; }

  /// E_FAIL without a document; S_FALSE with an empty handle when there is no document element.
  HRESULT GetRoot(dom::Element& root) const;
  /// Adds the declaration and a document element to an empty document. E_FAIL without one.
  HRESULT CreateRoot(const char* name, dom::Element& root) const;
  /// The first child of the document element at a path of one step, appended where it is missing.
  /// E_FAIL without a document or a document element; E_POINTER for null, after the element was
  /// made.
  HRESULT FindOrAppend(const char* path, dom::Element* element);
  /// Loads the file into a document of its own, which takes the place of the old one, and remembers
  /// when there was something in it that could not be read. E_FAIL without a document.
  HRESULT LoadFile(bool& success);
  /// The same for files that are never made anew: clears the dirty flag when the file was read,
  /// else leaves it and hands the document's answer up, which is S_FALSE for a missing or
  /// unreadable file.
  HRESULT LoadOrEmpty();
  /// Writes the document by itself. A file that could not be read is first kept beside its path;
  /// where that is not possible nothing is written.
  HRESULT SaveFile();
  /// S_FALSE while the document is dirty, else writes it and answers S_OK whatever comes of it. The
  /// test is the reverse of the channel file's, which the satellite and settings files have always
  /// had: choosing a storage form holds the former back until it is loaded again. E_FAIL without a
  /// document; without a document element nothing is written and that answer is handed up.
  HRESULT SaveWhenClean();
  /// Writes a pre-formatted body, with the same care.
  HRESULT SaveFormattedFile(const std::string& text);

 private:
  bool KeepUnreadable();

  State m_state;
};

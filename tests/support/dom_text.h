// Documents from text and back, for expectations.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/dom.h"
#include "support/temp_dir.h"
#include "xml/documents/xml_format.h"

/// A document loaded from text.
class TextDocument {
 public:
  explicit TextDocument(const std::string& xml) {
    bool success = false;
    const TempDir dir;
    dir.Write("document.xml", xml);
    EXPECT_EQ(S_OK, m_document.Create());
    EXPECT_EQ(S_OK, m_document.Load(dir.File("document.xml"), success));
    EXPECT_TRUE(success) << xml;
    EXPECT_EQ(S_OK, m_document.DocumentElement(root));
  }

  dom::Document& Document() { return m_document; }

  dom::Element root;

 private:
  dom::Document m_document;
};

/// The element and what is below it, one element a line, without escapes; lines end in LF.
inline std::string Formatted(const dom::Element& element) {
  std::string text;
  EXPECT_EQ(S_OK, xml::FormatElement(element, 0, text));
  std::erase(text, '\r');
  return text;
}

/// UTF-8 value of an attribute; "<missing>" where there is none.
inline std::string Attribute(const dom::Element& element, const char* name) {
  std::string value = "<missing>";
  element.GetUtf8(name, value);
  return value;
}

/// First match of a path; empty where there is none.
inline dom::Element Child(const dom::Element& parent, const char* path) {
  dom::Element child;
  parent.SelectSingle(path, child);
  return child;
}

/// How many elements a path selects.
inline LONG Count(const dom::Element& parent, const char* path) {
  dom::ElementList matches;
  EXPECT_EQ(S_OK, parent.Select(path, matches));
  return matches.Count();
}

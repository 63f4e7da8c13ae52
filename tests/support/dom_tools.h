// Short ways to make and to look at document trees.
#pragma once

#include <string>

#include "platform/dom.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace dom_tools {

inline dom::Document NewDocument() {
  dom::Document document;
  ExpectHr(S_OK, document.Create());
  return document;
}

inline dom::Element NewElement(const dom::Document& document, const char* name) {
  dom::Element element;
  ExpectHr(S_OK, document.CreateElement(name, element));
  return element;
}

/// A new child at the parent's end.
inline dom::Element AddChild(const dom::Element& parent, const char* name) {
  dom::Document document;
  ExpectHr(S_OK, parent.OwnerDocument(document));
  dom::Element child = NewElement(document, name);
  ExpectHr(S_OK, parent.AppendChild(child));
  return child;
}

/// A document with the declaration and an empty document element.
inline dom::Document NewDocumentWithRoot(const char* name) {
  dom::Document document = NewDocument();
  ExpectHr(S_OK, document.AppendProcessingInstruction("xml", "version='1.0' encoding='utf-8'"));
  ExpectHr(S_OK, document.AppendChild(NewElement(document, name)));
  return document;
}

inline dom::Element Root(const dom::Document& document) {
  dom::Element root;
  ExpectHr(S_OK, document.DocumentElement(root));
  return root;
}

/// A document loaded from these bytes, which must be acceptable.
inline dom::Document LoadBytes(const std::string& bytes) {
  const TempDir dir;
  dir.Write("file.xml", bytes);
  dom::Document document = NewDocument();
  bool success = false;
  ExpectHr(S_OK, document.Load(dir.File("file.xml"), success));
  EXPECT_TRUE(success);
  return document;
}

/// True when a document made from these bytes loads; checks that it is empty when not.
inline bool Loads(const std::string& bytes) {
  const TempDir dir;
  dir.Write("file.xml", bytes);
  dom::Document document = NewDocumentWithRoot("Old");
  bool success = false;
  const HRESULT hr = document.Load(dir.File("file.xml"), success);
  ExpectHr(success ? S_OK : S_FALSE, hr);
  dom::Element root;
  ExpectHr(success ? S_OK : S_FALSE, document.DocumentElement(root));
  EXPECT_EQ(success, static_cast<bool>(root));
  return success;
}

/// The attribute as UTF-8; "(none)" when it is missing.
inline std::string Utf8(const dom::Element& element, const char* name) {
  std::string value = "(none)";
  const HRESULT hr = element.GetUtf8(name, value);
  EXPECT_TRUE(hr == S_OK || hr == S_FALSE) << HrText(hr);
  return value;
}

inline std::string Tag(const dom::Element& element) {
  std::string name = "(none)";
  ExpectHr(S_OK, element.TagName(name));
  return name;
}

/// The element and everything below it, attributes in their order: "A[k=v](B C[x=1])".
inline std::string Describe(const dom::Element& element) {
  std::string text = Tag(element);
  ExpectHr(S_OK, element.VisitAttributes([&text](std::string_view name, std::string_view value) {
    text += '[' + std::string(name) + '=' + std::string(value) + ']';
  }));
  std::string children;
  dom::Element child;
  for (HRESULT hr = element.FirstChildElement(child); hr == S_OK;
       hr = child.NextSiblingElement(child)) {
    children += (children.empty() ? "" : " ") + Describe(child);
  }
  return children.empty() ? text : text + '(' + children + ')';
}

/// What the path selects: the tags with their "n" attributes.
inline std::string Selected(const dom::Element& element, const char* path) {
  dom::ElementList list;
  const HRESULT hr = element.Select(path, list);
  if (hr != S_OK) return HrText(hr);
  std::string text;
  for (LONG i = 0; i < list.Count(); ++i) {
    dom::Element item;
    ExpectHr(S_OK, list.Item(i, item));
    text += (i ? " " : "") + Tag(item) + Utf8(item, "n");
  }
  return text;
}

}  // namespace dom_tools

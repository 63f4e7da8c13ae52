#include "kit/check/rules/rewriting.h"

namespace zortunedex::kit::check {
namespace {

using markup::Attribute;
using markup::Document;
using markup::Edit;
using markup::Element;
using markup::Index;
using markup::Span;

std::string Escaped(std::string_view value) {
  std::string escaped;
  for (const char c : value) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&apos;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

bool IsEmptyTag(const Document& document, const Element& element) {
  return document.Text(element.tag).ends_with("/>");
}

constexpr bool IsXmlBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

EditList SetValue(const Attribute& attribute, std::string_view value) {
  return {{attribute.value, Escaped(value)}};
}

EditList SetValue(const Document& document, const Element& element, std::string_view attribute,
                  std::string_view value) {
  if (const Attribute* found = document.Find(element, attribute)) return SetValue(*found, value);
  const std::string_view tag = document.Text(element.tag);
  if (!tag.ends_with('>')) return {};
  std::size_t end = element.tag.end - (IsEmptyTag(document, element) ? 2U : 1U);
  while (end > element.name.end && IsXmlBlank(document.Bytes()[end - 1])) --end;
  return {{Span{end, end}, " " + std::string(attribute) + "=\"" + Escaped(value) + "\""}};
}

Edit Removal(const Document& document, const Element& element) {
  Span span = element.Whole();
  while (span.begin > 0 && IsXmlBlank(document.Bytes()[span.begin - 1])) --span.begin;
  return {span, {}};
}

Span ContentOf(const Element& element) {
  return element.endTag.IsEmpty() && element.endTag.begin == element.tag.end
             ? Span{element.tag.end, element.tag.end}
             : Span{element.tag.end, element.endTag.begin};
}

EditList Append(const Document& document, const Element& element, std::string_view text) {
  if (!IsEmptyTag(document, element)) {
    const std::size_t end = element.endTag.begin;
    // In front of the white space that the end tag is indented with.
    std::size_t place = end;
    while (place > element.tag.end && IsXmlBlank(document.Bytes()[place - 1])) --place;
    return {{Span{place, place}, std::string(text)}};
  }
  const std::string name(document.NameOf(element));
  return {
      {Span{element.tag.end - 2U, element.tag.end}, ">" + std::string(text) + "</" + name + ">"}};
}

std::string Rewritten(const Document& document, Span span, const EditList& edits) {
  markup::Edits inside;
  for (const Edit& edit : edits) {
    if (!span.Contains(edit.span)) continue;
    inside.Add(
        {{edit.span.begin - std::size_t{span.begin}, edit.span.end - std::size_t{span.begin}},
         edit.text});
  }
  return inside.Apply(document.Text(span)).value_or(std::string(document.Text(span)));
}

EditList Reorder(const Document& document, const std::vector<Index>& elements,
                 const std::vector<Index>& order, const std::vector<EditList>& inside) {
  const auto all = document.Elements();
  EditList edits;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const Span place = all[elements[i]].Whole();
    if (elements[i] == order[i]) {
      edits.insert(edits.end(), inside[i].begin(), inside[i].end());
    } else {
      edits.push_back({place, Rewritten(document, all[order[i]].Whole(), inside[i])});
    }
  }
  return edits;
}

}  // namespace zortunedex::kit::check

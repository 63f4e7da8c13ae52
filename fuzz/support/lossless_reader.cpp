#include "support/lossless_reader.h"

#include <algorithm>
#include <map>
#include <utility>

#include "platform/linux/markup/parser.h"
#include "support/fuzz.h"

namespace zortunedex::kit {

using markup::Document;

namespace {

/// The element behind this one in the order of the file; null behind the last one.
const domtree::Node* ElementBehind(const domtree::Node* element) {
  if (const auto* child = domtree::Node::ElementFrom(element->First())) return child;
  for (; element != nullptr && element->IsElement(); element = element->Parent()) {
    if (const auto* next = domtree::Node::ElementFrom(element->Next())) return next;
  }
  return nullptr;
}

bool IsBlankAlone(const markup::Damage& damage) {
  return damage.reason == markup::Reason::RawBlank;
}

}  // namespace

domtree::NewStore LibrarysTree(const std::string& bytes) {
  domtree::FileBytes file;
  Require(file.Assign(bytes));
  return domtree::Parse(std::move(file));
}

void RequireAre(const std::vector<markup::Token>& tokens, const std::string& bytes) {
  std::size_t end = 0;
  for (const markup::Token& token : tokens) {
    Require(token.span.begin == end && token.span.end > end);
    end = token.span.end;
  }
  Require(end == bytes.size());
}

void RequireSameTree(const Document& a, const Document& b) {
  Require(a.Elements().size() == b.Elements().size());
  for (std::size_t i = 0; i < a.Elements().size(); ++i) {
    const markup::Element& left = a.Elements()[i];
    const markup::Element& right = b.Elements()[i];
    Require(a.NameOf(left) == b.NameOf(right) && left.parent == right.parent);
    const auto attributes = a.AttributesOf(left);
    const auto others = b.AttributesOf(right);
    Require(attributes.size() == others.size());
    for (std::size_t k = 0; k < attributes.size(); ++k) {
      Require(a.NameOf(attributes[k]) == b.NameOf(others[k]));
      Require(a.ValueOf(attributes[k]) == b.ValueOf(others[k]));
    }
  }
}

void RequireSameTree(const Document& document, const domtree::Store& store) {
  const domtree::Names& names = store.GetNames();
  const domtree::Node* node = store.RootElement();
  std::map<const domtree::Node*, markup::Index> indexes = {{&store.Root(), markup::kNone}};
  for (const markup::Element& element : document.Elements()) {
    Require(node != nullptr && names.Text(node->Name()) == document.NameOf(element));
    Require(indexes.at(node->Parent()) == element.parent);
    indexes.emplace(node, static_cast<markup::Index>(indexes.size() - 1));
    std::uint32_t count = 0;
    for (const markup::Attribute& attribute : document.AttributesOf(element)) {
      // What declares the prefix that needs no declaration the library leaves out.
      if (document.NameOf(attribute) == "xmlns:xml") continue;
      Require(count < node->AttributeCount());
      const domtree::Attribute& other = node->At(count++);
      Require(names.Text(other.Name()) == document.NameOf(attribute));
      Require(node->ValueOf(other) == document.ValueOf(attribute));
    }
    Require(count == node->AttributeCount());
    node = ElementBehind(node);
  }
  Require(node == nullptr);
}

bool IsAllMended(const Document& document) {
  return std::ranges::all_of(document.Damages(), [](const markup::Damage& damage) {
    return damage.isMended || IsBlankAlone(damage);
  });
}

bool IsSound(const Document& document) {
  return document.IsReadable() && std::ranges::all_of(document.Damages(), IsBlankAlone);
}

bool MayHaveAttachedParts(const std::string& bytes) {
  return bytes.substr(0, bytes.find('>')).find("standalone") != std::string::npos;
}

}  // namespace zortunedex::kit

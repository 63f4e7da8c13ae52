// Elements, their places in the tree and paths below them.
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/dom.h"
#include "platform/dom_path.h"
#include "platform/lack_of_memory.h"
#include "platform/linux/dom/handles.h"
#include "platform/linux/dom/path_matches.h"
#include "platform/linux/dom/shared_document.h"
#include "platform/text.h"

namespace dom {
namespace {

using domtree::Node;
using domtree::NodeOf;

/// Hands a node out; S_FALSE and an empty handle for null.
HRESULT Answer(Node* node, Element& out) {
  if (node) node->AddRef();
  out = Element::Attach(node);
  return node ? S_OK : S_FALSE;
}

bool IsBelow(const Node* node, const Node& top) {
  while (node && node != &top) node = node->Parent();
  return node != nullptr;
}

/// The children that a path of one step without predicates selects, the commonest of all.
class NamedChildren {
 public:
  /// None for any other path.
  static std::optional<NamedChildren> Parse(const Node& context, std::string_view path) {
    const std::string_view name = NameInPath(path);
    if (name.empty()) return std::nullopt;
    return NamedChildren(context, context.Owner().GetNames().Find(name));
  }

  Node* Next() {
    while (m_next && (m_next->Name() != m_name || !m_next->IsElement())) m_next = m_next->Next();
    return m_next ? std::exchange(m_next, m_next->Next()) : nullptr;
  }

 private:
  NamedChildren(const Node& context, domtree::NameId name)
      : m_next(name == domtree::kNoName ? nullptr : context.First()), m_name(name) {}

  Node* m_next;
  domtree::NameId m_name;
};

/// Calls `use` with the matches of a path.
template <typename Use>
HRESULT WithMatches(const Node& context, const char* path, Use use) {
  std::string_view text(path);
  if (std::optional<NamedChildren> children = NamedChildren::Parse(context, text)) {
    return use(*children);
  }
  std::string converted;
  if (!domtree::IsAscii(text)) {
    converted = text::ToUtf8(text::FromNarrow(text).View());
    text = converted;
  }
  const std::optional<Path> parsed = Path::Parse(text);
  if (!parsed) return E_INVALIDARG;
  domtree::PathMatches matches(*parsed, context);
  return use(matches);
}

}  // namespace

Element::Element(const Element& other) : m_node(other.m_node), m_hint(other.m_hint) {
  if (m_node) m_node->AddRef();
}

HRESULT Element::From(IUnknown* node, Element& out) {
  if (node == nullptr || !Node::Is(node) || !NodeOf(node).IsElement()) return E_INVALIDARG;
  return Answer(&NodeOf(node), out);
}

Element Element::Attach(IUnknown* node) {
  Element element;
  element.m_node = node;
  return element;
}

ULONG Element::Release() {
  IUnknown* const node = std::exchange(m_node, nullptr);
  return node ? node->Release() : 0;
}

HRESULT Element::TagName(std::string& name) const {
  if (m_node == nullptr) return E_INVALIDARG;
  const Node& node = NodeOf(m_node);
  name = node.Owner().GetNames().Text(node.Name());
  return S_OK;
}

bool Element::HasTag(Name name) const {
  if (m_node == nullptr) return false;
  const Node& node = NodeOf(m_node);
  return node.Owner().GetNames().Is(node.Name(), name);
}

HRESULT Element::OwnerDocument(Document& out) const {
  if (m_node == nullptr) return E_INVALIDARG;
  Document document;
  document.m_document = domtree::SharedDocument::Of(NodeOf(m_node).Owner());
  out = std::move(document);
  return S_OK;
}

HRESULT Element::SelectSingle(const char* path, Element& out) const {
  if (m_node == nullptr || path == nullptr) return E_INVALIDARG;
  return WithMatches(NodeOf(m_node), path,
                     [&](auto& matches) { return Answer(matches.Next(), out); });
}

HRESULT Element::Select(const char* path, ElementList& out) const {
  if (m_node == nullptr || path == nullptr) return E_INVALIDARG;
  return WithMatches(NodeOf(m_node), path, [&](auto& matches) {
    std::vector<IUnknown*> found;
    while (Node* node = matches.Next()) found.push_back(node);
    ElementList list;
    if (found.empty()) {
      out = std::move(list);
      return S_OK;
    }
    list.m_items = new IUnknown*[found.size()];
    for (IUnknown* node : found) {
      node->AddRef();
      list.m_items[list.m_count++] = node;
    }
    out = std::move(list);
    return S_OK;
  });
}

HRESULT Element::CreateElement(Name name, Element& out) const {
  if (m_node == nullptr || name.text == nullptr) return E_INVALIDARG;
  Node* const created = NodeOf(m_node).Owner().NewElement(name);
  return created ? Answer(created, out) : E_INVALIDARG;
}

HRESULT Element::AppendChild(const Element& child) const { return InsertBefore(child, {}); }

HRESULT Element::InsertBefore(const Element& child, const Element& before) const {
  if (m_node == nullptr || child.m_node == nullptr) return E_INVALIDARG;
  Node& parent = NodeOf(m_node);
  Node& node = NodeOf(child.m_node);
  Node* const next = before.m_node ? &NodeOf(before.m_node) : nullptr;
  if (next && next->Parent() != &parent) return E_INVALIDARG;
  if (&node.Owner() != &parent.Owner() || &node == &parent) return E_INVALIDARG;
  if (node.First() && IsBelow(&parent, node)) return E_INVALIDARG;
  parent.Owner().Insert(parent, node, next);
  return S_OK;
}

HRESULT Element::RemoveChild(const Element& child) const {
  if (m_node == nullptr || child.m_node == nullptr) return E_INVALIDARG;
  Node& node = NodeOf(child.m_node);
  if (node.Parent() != &NodeOf(m_node)) return E_INVALIDARG;
  node.Owner().Unlink(node);
  return S_OK;
}

bool Element::HasChildNodes() const { return m_node && NodeOf(m_node).First() != nullptr; }

HRESULT Element::FirstChildElement(Element& out) const {
  if (m_node == nullptr) return E_INVALIDARG;
  return Answer(Node::ElementFrom(NodeOf(m_node).First()), out);
}

HRESULT Element::NextSiblingElement(Element& out) const {
  if (m_node == nullptr) return E_INVALIDARG;
  return Answer(Node::ElementFrom(NodeOf(m_node).Next()), out);
}

struct Element::Lent {
  explicit Lent(Node& node) { element.m_node = &node; }
  Lent(const Lent&) = delete;
  Lent& operator=(const Lent&) = delete;
  ~Lent() { element.m_node = nullptr; }

  Element element;
};

// Counting is atomic, and takes longer than most of what is asked of a child.
HRESULT Element::VisitChildren(const ChildVisitor& visit) const {
  if (m_node == nullptr) return E_INVALIDARG;
  for (Node* node = NodeOf(m_node).First(); (node = Node::ElementFrom(node)) != nullptr;
       node = node->Next()) {
    visit(Lent(*node).element);
  }
  return S_OK;
}

HRESULT Element::AppendFilled(Name name, const ChildVisitor& fill) const {
  if (m_node == nullptr || name.text == nullptr) return E_INVALIDARG;
  Node& parent = NodeOf(m_node);
  Node* const created = parent.Owner().NewElement(name);
  if (created == nullptr) return E_INVALIDARG;
  // Goes unless somebody kept it.
  const WhenRaised unfilled([created] {
    created->AddRef();
    created->Release();
  });
  fill(Lent(*created).element);
  parent.Owner().Insert(parent, *created, nullptr);
  return S_OK;
}

ElementList::~ElementList() {
  for (LONG i = 0; i < m_count; ++i) m_items[i]->Release();
  delete[] m_items;
}

HRESULT ElementList::Item(LONG position, Element& out) const {
  const bool isThere = position >= 0 && position < m_count;
  return Answer(isThere ? &NodeOf(m_items[position]) : nullptr, out);
}

}  // namespace dom

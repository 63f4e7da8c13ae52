// Document handles.
#include <string>
#include <string_view>
#include <utility>

#include "platform/dom.h"
#include "platform/dom_path.h"
#include "platform/linux/dom/handles.h"
#include "platform/linux/dom/shared_document.h"
#include "platform/text.h"

namespace dom {
namespace {

using domtree::Declaration;
using domtree::Kind;
using domtree::Node;
using domtree::NodeOf;
using domtree::SharedDocument;
using domtree::Store;

SharedDocument& SharedOf(void* document) { return *static_cast<SharedDocument*>(document); }

bool IsReserved(std::string_view target) {
  return target.size() == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm' &&
         (target[2] | 0x20) == 'l';
}

/// What `data` says about other documents: standalone='yes' or 'no'.
Declaration DeclarationFrom(std::string_view data) {
  const std::size_t key = data.find("standalone");
  if (key == std::string_view::npos) return Declaration::Plain;
  const std::size_t value = data.find_first_of("'\"", key);
  const bool isYes = value != std::string_view::npos && data.substr(value + 1, 3) == "yes";
  return isYes ? Declaration::Standalone : Declaration::NotStandalone;
}

HRESULT AppendDeclaration(Store& store, std::string_view data) {
  // It must be the first of all.
  if (store.Root().First() || store.GetDeclaration() != Declaration::None) return E_FAIL;
  if (!data.starts_with("version")) return E_INVALIDARG;
  store.SetDeclaration(DeclarationFrom(data));
  return S_OK;
}

}  // namespace

Document::Document(const Document& other) : m_document(other.m_document) {
  if (m_document) SharedOf(m_document).AddRef();
}

HRESULT Document::Create() {
  Close();
  m_document = SharedDocument::Create();
  return S_OK;
}

void Document::Close() {
  if (void* document = std::exchange(m_document, nullptr)) SharedOf(document).Release();
}

HRESULT Document::Load(const std::string& path, bool& success) {
  success = false;
  if (m_document == nullptr) return E_INVALIDARG;
  success = SharedOf(m_document).Load(path);
  return success ? S_OK : S_FALSE;
}

HRESULT Document::Save(const std::string& path) const {
  if (m_document == nullptr) return E_INVALIDARG;
  return SharedOf(m_document).Save(path) ? S_OK : E_FAIL;
}

HRESULT Document::DocumentElement(Element& out) const {
  if (m_document == nullptr) return E_INVALIDARG;
  Node* const root = SharedOf(m_document).Contents().RootElement();
  if (root) root->AddRef();
  out = Element::Attach(root);
  return root ? S_OK : S_FALSE;
}

HRESULT Document::AppendProcessingInstruction(const char* target, const char* data) const {
  if (m_document == nullptr || target == nullptr || data == nullptr) return E_INVALIDARG;
  Store& store = SharedOf(m_document).Contents();
  if (std::string_view(target) == "xml") return AppendDeclaration(store, data);
  const bool isSound = IsPlainName(target) && !IsReserved(target) &&
                       std::string_view(data).find("?>") == std::string_view::npos;
  if (!isSound) return E_INVALIDARG;
  const std::string text = text::ToUtf8(text::FromNarrow(data).View());
  const domtree::NameId name = store.GetNames().Intern(target);
  store.Insert(store.Root(), store.NewLeaf(Kind::Instruction, name, text), nullptr);
  return S_OK;
}

HRESULT Document::CreateElement(const char* name, Element& out) const {
  if (m_document == nullptr || name == nullptr) return E_INVALIDARG;
  Node* const created = SharedOf(m_document).Contents().NewElement(name);
  if (created == nullptr) return E_INVALIDARG;
  created->AddRef();
  out = Element::Attach(created);
  return S_OK;
}

HRESULT Document::AppendChild(const Element& child) const {
  if (m_document == nullptr || !child) return E_INVALIDARG;
  Store& store = SharedOf(m_document).Contents();
  Node& node = NodeOf(child.Get());
  if (&node.Owner() != &store) return E_INVALIDARG;
  const Node* const root = store.RootElement();
  if (root && root != &node) return E_FAIL;
  store.Insert(store.Root(), node, nullptr);
  return S_OK;
}

}  // namespace dom

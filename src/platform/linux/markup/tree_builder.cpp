#include "platform/linux/markup/tree_builder.h"

#include <cstddef>

#include "platform/linux/markup/start_tag.h"
#include "platform/linux/tree/namespaces.h"

namespace domtree {
namespace {

std::string_view ViewOf(const xmlChar* text) {
  return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

std::string_view ViewOf(const xmlChar* text, std::size_t length) {
  return {reinterpret_cast<const char*>(text), length};
}

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\n\r") == std::string_view::npos;
}

}  // namespace

TreeBuilder::TreeBuilder(Store& store, xmlParserCtxt* parser)
    : m_store(store), m_parser(parser), m_current(&store.Root()) {}

template <typename Step>
void TreeBuilder::RunStep(void* builder, Step step) {
  auto& self = *static_cast<TreeBuilder*>(builder);
  if (self.m_failed) return;
  if (!self.m_raised.Run([&] { step(self); })) self.Fail();
}

void TreeBuilder::Fail() {
  m_failed = true;
  xmlStopParser(m_parser);
}

xmlSAXHandler TreeBuilder::Handler() {
  xmlSAXHandler handler{};
  handler.initialized = XML_SAX2_MAGIC;
  handler.internalSubset = [](void* builder, const xmlChar*, const xmlChar*, const xmlChar*) {
    static_cast<TreeBuilder*>(builder)->Fail();
  };
  handler.startElementNs = [](void* builder, const xmlChar* local, const xmlChar* prefix,
                              const xmlChar*, int namespaceCount, const xmlChar** namespaces,
                              int attributeCount, int, const xmlChar** attributes) {
    RunStep(builder, [=](TreeBuilder& self) {
      self.StartElement(local, prefix, namespaceCount, namespaces, attributeCount, attributes);
    });
  };
  handler.endElementNs = [](void* builder, const xmlChar*, const xmlChar*, const xmlChar*) {
    RunStep(builder, [](TreeBuilder& self) { self.EndElement(); });
  };
  // Both the same: the parser then does not ask which white space may be ignored.
  handler.characters =
      handler.ignorableWhitespace = [](void* builder, const xmlChar* text, int length) {
        RunStep(builder, [=](TreeBuilder& self) {
          self.AddText(ViewOf(text, static_cast<std::size_t>(length)));
        });
      };
  handler.cdataBlock = [](void* builder, const xmlChar* text, int length) {
    RunStep(builder, [=](TreeBuilder& self) {
      self.AddLeaf(Kind::Cdata, kNoName, ViewOf(text, static_cast<std::size_t>(length)));
    });
  };
  handler.comment = [](void* builder, const xmlChar* text) {
    RunStep(builder,
            [=](TreeBuilder& self) { self.AddLeaf(Kind::Comment, kNoName, ViewOf(text)); });
  };
  handler.processingInstruction = [](void* builder, const xmlChar* target, const xmlChar* data) {
    RunStep(builder, [=](TreeBuilder& self) {
      self.AddLeaf(Kind::Instruction, self.m_store.GetNames().Intern(ViewOf(target)), ViewOf(data));
    });
  };
  return handler;
}

inline void TreeBuilder::TakeAttribute(const xmlChar**& next) {
  const auto length = static_cast<std::size_t>(next[4] - next[3]);
  m_store.Append(*m_current, NameOf(next[0], next[1]), ViewOf(next[3], length));
  next += 5;
}

void TreeBuilder::StartElement(const xmlChar* local, const xmlChar* prefix, int namespaceCount,
                               const xmlChar** namespaces, int attributeCount,
                               const xmlChar** attributes) {
  if (++m_depth > kDeepest) return Fail();
  m_declared[m_depth] = m_declared[m_depth - 1] + static_cast<std::size_t>(namespaceCount);
  if (m_declared[m_depth] > kMostDeclared) return Fail();
  EndText();
  const int count = namespaceCount + attributeCount;
  Node& element =
      m_store.NewNode(Kind::Element, NameOf(local, prefix), static_cast<std::size_t>(count));
  AddChild(element);
  m_current = &element;
  const xmlChar** const namespacesEnd = namespaces + std::ptrdiff_t{2} * namespaceCount;
  const xmlChar** const attributesEnd = attributes + std::ptrdiff_t{5} * attributeCount;
  if (namespaces != namespacesEnd) {
    TakeDeclarations(namespaces, namespacesEnd, attributes, attributesEnd);
  }
  while (attributes != attributesEnd) TakeAttribute(attributes);
}

void TreeBuilder::TakeDeclarations(const xmlChar** namespaces, const xmlChar** namespacesEnd,
                                   const xmlChar**& attributes, const xmlChar** attributesEnd) {
  // The parser tells both in their order, but not how they stood among each other.
  StartTag tag(CurrentTag());
  while (namespaces != namespacesEnd && attributes != attributesEnd) {
    const std::string_view name = tag.NextName();
    if (name == "xmlns:xml") continue;  // always in force: not among them
    IsNamespaceDeclaration(name) ? TakeDeclaration(namespaces) : TakeAttribute(attributes);
  }
  while (namespaces != namespacesEnd) TakeDeclaration(namespaces);
}

std::string_view TreeBuilder::CurrentTag() const {
  const xmlParserInput& input = *m_parser->input;
  const std::string_view parsed =
      ViewOf(input.base, static_cast<std::size_t>(input.cur - input.base));
  // No value holds another one as it is.
  const std::size_t start = parsed.rfind('<');
  return start == std::string_view::npos ? std::string_view() : parsed.substr(start);
}

void TreeBuilder::TakeDeclaration(const xmlChar**& next) {
  static const xmlChar* const kXmlns = reinterpret_cast<const xmlChar*>("xmlns");
  const NameId name = next[0] ? NameOf(next[0], kXmlns) : NameOf(kXmlns, nullptr);
  m_store.Append(*m_current, name, ViewOf(next[1]));
  next += 2;
}

void TreeBuilder::EndElement() {
  EndText();
  --m_depth;
  if (m_current->First()) m_current->SetSpaceAtEnd(m_sawSpace);
  m_sawSpace = false;
  m_current = m_current->Parent();
}

void TreeBuilder::AddLeaf(Kind kind, NameId target, std::string_view text) {
  EndText();
  AddChild(m_store.NewLeaf(kind, target, text));
}

void TreeBuilder::AddChild(Node& node) {
  node.SetSpaceBefore(m_sawSpace);
  m_sawSpace = false;
  m_store.Insert(*m_current, node, nullptr);
}

void TreeBuilder::EndText() {
  if (m_text.empty()) return;
  if (IsBlank(m_text)) {
    m_sawSpace = true;
  } else {
    AddChild(m_store.NewLeaf(Kind::Text, kNoName, m_text));
  }
  m_text.clear();
}

NameId TreeBuilder::LookUp(const xmlChar* local, const xmlChar* prefix) {
  const auto is = [=](const KnownName& name) {
    return name.local == local && name.prefix == prefix;
  };
  const auto address = reinterpret_cast<std::uintptr_t>(local);
  const std::size_t place = (address * 0x9E3779B97F4A7C15U >> 32) % m_known.size();
  KnownName& first = m_known[place];
  KnownName& second = m_known[place ^ 1];
  KnownName& known = is(first) || (first.local == nullptr && !is(second)) ? first : second;
  if (!is(known)) {
    std::string name(ViewOf(prefix));
    if (prefix) name += ':';
    name += ViewOf(local);
    known = {local, prefix, m_store.GetNames().Intern(name)};
  }
  m_lastName->next = &known;
  m_lastName = &known;
  return known.id;
}

}  // namespace domtree

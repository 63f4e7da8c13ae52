#pragma once

#include <libxml/parser.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/lack_of_memory.h"
#include "platform/linux/tree/store.h"

namespace domtree {

/// Puts what the parser reports into an empty store. Nothing is raised into the parser: after the
/// first failure it is stopped, and what it still reports is ignored. What was raised is raised
/// behind it.
class TreeBuilder {
 public:
  TreeBuilder(Store& store, xmlParserCtxt* parser);

  /// The functions that the parser calls, with the builder as their user data.
  static xmlSAXHandler Handler();

  bool HasFailed() const { return m_failed; }
  void RaiseWhatWasRaised() const { m_raised.RaiseIfAny(); }

 private:
  struct KnownName {
    const xmlChar* local = nullptr;
    const xmlChar* prefix = nullptr;
    NameId id = kNoName;
    /// The one that was reported after it the last time: files repeat themselves.
    KnownName* next = nullptr;
  };

  template <typename Step>
  static void RunStep(void* builder, Step step);
  void Fail();

  void StartElement(const xmlChar* local, const xmlChar* prefix, int namespaceCount,
                    const xmlChar** namespaces, int attributeCount, const xmlChar** attributes);
  /// The bytes of the start tag that the parser reports, up to the end of its last attribute.
  std::string_view CurrentTag() const;
  /// Gives the current element its declarations and the attributes in front of the last of these,
  /// which `attributes` moves behind.
  void TakeDeclarations(const xmlChar** namespaces, const xmlChar** namespacesEnd,
                        const xmlChar**& attributes, const xmlChar** attributesEnd);
  /// Both give the current element what stands at `next`, which moves on.
  void TakeDeclaration(const xmlChar**& next);
  void TakeAttribute(const xmlChar**& next);
  void EndElement();
  void AddText(std::string_view text) { m_text += text; }
  void AddLeaf(Kind kind, NameId target, std::string_view text);
  void AddChild(Node& node);
  /// Ends a run of text. White space alone is no node, only remembered.
  void EndText();
  NameId NameOf(const xmlChar* local, const xmlChar* prefix) {
    KnownName* const next = m_lastName->next;
    if (next == nullptr || next->local != local || next->prefix != prefix) {
      return LookUp(local, prefix);
    }
    m_lastName = next;
    return next->id;
  }
  NameId LookUp(const xmlChar* local, const xmlChar* prefix);

  /// Namespace declarations that may be in force at once: the parser looks through them for every
  /// element.
  static constexpr std::size_t kMostDeclared = 256;

  Store& m_store;
  xmlParserCtxt* m_parser;
  Node* m_current;
  std::uint32_t m_depth = 0;
  /// By level, how many are in force there.
  std::array<std::size_t, kDeepest + 1> m_declared{};
  std::string m_text;
  bool m_sawSpace = false;
  bool m_failed = false;
  RaisedLater m_raised;
  /// The parser keeps every name once: its pointers tell names apart.
  std::array<KnownName, 512> m_known;
  KnownName* m_lastName = m_known.data();
};

}  // namespace domtree

#include "platform/linux/dom_parser.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <memory>
#include <mutex>

#include "platform/linux/dom_attribute_bound.h"
#include "platform/linux/dom_encoding.h"
#include "platform/linux/dom_tree_builder.h"

namespace domtree {
namespace {

struct ParserEnd {
  void operator()(xmlParserCtxt* parser) const { xmlFreeParserCtxt(parser); }
};
using Parser = std::unique_ptr<xmlParserCtxt, ParserEnd>;

/// Keeps this thread's parser errors off the standard error stream.
class Silence {
 public:
  Silence() : m_function(xmlStructuredError), m_context(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(nullptr, [](void*, auto) {});
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;
  ~Silence() { xmlSetStructuredErrorFunc(m_context, m_function); }

 private:
  xmlStructuredErrorFunc m_function;
  void* m_context;
};

xmlParserInput* NewInput(xmlParserCtxt* parser, const FileBytes& file) {
  xmlParserInput* input = xmlNewInputStream(parser);
  if (input == nullptr) return nullptr;
  input->base = input->cur = reinterpret_cast<const xmlChar*>(file.Data());
  input->end = input->base + file.Size();
  return input;
}

bool Push(xmlParserCtxt* parser, xmlParserInput* input) {
  if (input == nullptr) return false;
  if (inputPush(parser, input) >= 0) return true;
  xmlFreeInputStream(input);
  return false;
}

/// The parser takes a zero for the end of its input.
bool HasReadAll(const xmlParserInput* input) {
  return input != nullptr && input->cur == input->end;
}

/// The parser believes bytes that it reads in place to be UTF-8 whatever they say they are.
bool IsLabelledRight(const xmlParserCtxt* parser) {
  const xmlChar* label = parser->encoding;
  return label == nullptr || xmlStrcasecmp(label, BAD_CAST "UTF-8") == 0 ||
         xmlStrcasecmp(label, BAD_CAST "UTF8") == 0;
}

Declaration DeclarationOf(const xmlParserCtxt* parser) {
  switch (parser->standalone) {
    case 1:
      return Declaration::Standalone;
    case 0:
      return Declaration::NotStandalone;
    case -2:
      return Declaration::Plain;
    default:
      return Declaration::None;
  }
}

bool ParseUtf8(Store& store, int options) {
  const FileBytes& file = store.File();
  if (!IsWithinAttributeBound({file.Data(), file.Size()})) return false;
  const Silence silence;
  const Parser parser(xmlNewParserCtxt());
  if (!parser) return false;
  // Without NOENT an ampersand in an attribute is reported as a reference. There are no entities to
  // substitute but the predefined ones: the builder stops at a document type.
  xmlCtxtUseOptions(parser.get(), XML_PARSE_NONET | XML_PARSE_NOENT | options);
  TreeBuilder builder(store, parser.get());
  *parser->sax = TreeBuilder::Handler();
  parser->userData = &builder;
  if (!Push(parser.get(), NewInput(parser.get(), file))) return false;
  if (xmlParseDocument(parser.get()) != 0 || builder.HasFailed()) return false;
  if (parser->disableSAX || parser->errNo == XML_ERR_NO_MEMORY) return false;
  if (!parser->wellFormed || !parser->nsWellFormed) return false;
  if (!HasReadAll(parser->input) || !IsLabelledRight(parser.get())) return false;
  store.SetDeclaration(DeclarationOf(parser.get()));
  return true;
}

}  // namespace

bool Parse(Store& store) {
  static std::once_flag once;
  std::call_once(once, xmlInitParser);
  if (ParseUtf8(store, 0)) return true;
  // Another encoding is refused in front of the first node.
  return !store.Root().First() && ConvertToUtf8(store.File()) &&
         ParseUtf8(store, XML_PARSE_IGNORE_ENC);
}

}  // namespace domtree

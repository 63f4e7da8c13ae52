#include "platform/linux/dom_parser.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <memory>
#include <mutex>

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

enum class Feed { InPlace, Converted };

xmlParserInput* NewInput(xmlParserCtxt* parser, const FileBytes& file, Feed feed) {
  if (feed == Feed::InPlace) {
    xmlParserInput* input = xmlNewInputStream(parser);
    if (input == nullptr) return nullptr;
    input->base = input->cur = reinterpret_cast<const xmlChar*>(file.Data());
    input->end = input->base + file.Size();
    return input;
  }
  xmlParserInputBuffer* copy = xmlParserInputBufferCreateMem(
      file.Data(), static_cast<int>(file.Size()), XML_CHAR_ENCODING_NONE);
  if (copy == nullptr) return nullptr;
  xmlParserInput* input = xmlNewIOInputStream(parser, copy, XML_CHAR_ENCODING_NONE);
  if (input == nullptr) xmlFreeParserInputBuffer(copy);
  return input;
}

bool Push(xmlParserCtxt* parser, xmlParserInput* input) {
  if (input == nullptr) return false;
  if (inputPush(parser, input) >= 0) return true;
  xmlFreeInputStream(input);
  return false;
}

/// The parser takes a zero for the end of its input, and what cannot be converted too.
bool HasReadAll(const xmlParserInput* input) {
  if (input == nullptr || input->cur != input->end) return false;
  const xmlParserInputBuffer* buffer = input->buf;
  return !buffer || (!buffer->error && (!buffer->raw || xmlBufUse(buffer->raw) == 0));
}

/// The parser believes bytes that it reads in place to be UTF-8 whatever they say they are.
bool IsLabelledRight(const xmlParserCtxt* parser, Feed feed) {
  const xmlChar* label = parser->encoding;
  return feed == Feed::Converted || label == nullptr ||
         xmlStrcasecmp(label, BAD_CAST "UTF-8") == 0 || xmlStrcasecmp(label, BAD_CAST "UTF8") == 0;
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

bool Parse(Store& store, Feed feed) {
  const Silence silence;
  const Parser parser(xmlNewParserCtxt());
  if (!parser) return false;
  // Without NOENT an ampersand in an attribute is reported as a reference. There are no entities to
  // substitute but the predefined ones: the builder stops at a document type.
  xmlCtxtUseOptions(parser.get(), XML_PARSE_NONET | XML_PARSE_NOENT);
  TreeBuilder builder(store, parser.get());
  *parser->sax = TreeBuilder::Handler();
  parser->userData = &builder;
  if (!Push(parser.get(), NewInput(parser.get(), store.File(), feed))) return false;
  if (xmlParseDocument(parser.get()) != 0 || builder.HasFailed()) return false;
  if (parser->disableSAX || parser->errNo == XML_ERR_NO_MEMORY) return false;
  if (!parser->wellFormed || !parser->nsWellFormed) return false;
  if (!HasReadAll(parser->input) || !IsLabelledRight(parser.get(), feed)) return false;
  store.SetDeclaration(DeclarationOf(parser.get()));
  return true;
}

}  // namespace

bool Parse(Store& store) {
  static std::once_flag once;
  std::call_once(once, xmlInitParser);
  if (Parse(store, Feed::InPlace)) return true;
  // Another encoding is refused in front of the first node.
  if (store.Root().First() || !Parse(store, Feed::Converted)) return false;
  store.File().Reset();
  return true;
}

}  // namespace domtree

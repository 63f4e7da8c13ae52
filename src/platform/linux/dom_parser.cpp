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

/// The parser reads the bytes where they are.
bool Feed(xmlParserCtxt* parser, const FileBytes& file) {
  xmlParserInputBuffer* buffer = xmlParserInputBufferCreateStatic(
      file.Data(), static_cast<int>(file.Size()), XML_CHAR_ENCODING_NONE);
  if (buffer == nullptr) return false;
  xmlParserInput* input = xmlNewIOInputStream(parser, buffer, XML_CHAR_ENCODING_NONE);
  if (input == nullptr) {
    xmlFreeParserInputBuffer(buffer);
    return false;
  }
  if (inputPush(parser, input) >= 0) return true;
  xmlFreeInputStream(input);
  return false;
}

/// The parser takes a zero for the end of its input, and what cannot be converted too.
bool HasReadAll(const xmlParserInput* input) {
  if (input == nullptr || input->cur != input->end) return false;
  const xmlParserInputBuffer* buffer = input->buf;
  return buffer->error == 0 && (buffer->raw == nullptr || xmlBufUse(buffer->raw) == 0);
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

}  // namespace

bool Parse(Store& store) {
  static std::once_flag once;
  std::call_once(once, xmlInitParser);
  const Silence silence;
  Parser parser(xmlNewParserCtxt());
  if (!parser) return false;
  xmlCtxtUseOptions(parser.get(), XML_PARSE_NONET);
  TreeBuilder builder(store, parser.get());
  *parser->sax = TreeBuilder::Handler();
  parser->userData = &builder;
  if (!Feed(parser.get(), store.File()) || xmlParseDocument(parser.get()) != 0) return false;
  if (builder.HasFailed() || parser->disableSAX || parser->errNo == XML_ERR_NO_MEMORY) return false;
  if (!parser->wellFormed || !parser->nsWellFormed || !HasReadAll(parser->input)) return false;
  store.SetDeclaration(DeclarationOf(parser.get()));
  const bool isConverted = parser->input->buf->encoder != nullptr;
  parser.reset();
  // Nothing points into bytes of another encoding.
  if (isConverted) store.File().Reset();
  return true;
}

}  // namespace domtree

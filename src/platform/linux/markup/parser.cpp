#include "platform/linux/markup/parser.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <memory>
#include <mutex>
#include <new>
#include <utility>

#include "platform/linux/markup/attribute_bound.h"
#include "platform/linux/markup/encoding.h"
#include "platform/linux/markup/tree_builder.h"

namespace domtree {
namespace {

struct ParserEnd {
  void operator()(xmlParserCtxt* parser) const {
    // No tree is asked for, but entities make a document to stand in, which a parse that is broken
    // off leaves behind.
    if (parser->myDoc != nullptr) xmlFreeDoc(parser->myDoc);
    xmlFreeParserCtxt(parser);
  }
};
using Parser = std::unique_ptr<xmlParserCtxt, ParserEnd>;

/// What a file comes to. The parser does not tell everywhere that it lacked memory: without room
/// for a name it takes a document for malformed.
enum class Verdict { Good, Refused, Malformed };

/// Keeps this thread's parser errors off the standard error stream, and takes note of the first one
/// and of those that are lack of memory.
class Errors {
 public:
  Errors() : m_function(xmlStructuredError), m_context(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(
        this, [](void* errors, auto error) { static_cast<Errors*>(errors)->Take(*error); });
  }
  Errors(const Errors&) = delete;
  Errors& operator=(const Errors&) = delete;
  ~Errors() { xmlSetStructuredErrorFunc(m_context, m_function); }

  bool AreLackOfMemory() const { return m_lacksMemory; }
  Place First() const { return m_first; }

 private:
  void Take(const xmlError& error) {
    if (error.code == XML_ERR_NO_MEMORY) m_lacksMemory = true;
    if (error.level < XML_ERR_ERROR || m_first.line != 0) return;
    m_first = {static_cast<unsigned>(error.line), static_cast<unsigned>(error.int2)};
  }

  xmlStructuredErrorFunc m_function;
  void* m_context;
  bool m_lacksMemory = false;
  Place m_first;
};

/// A parser of bytes that stay. Raises std::bad_alloc.
Parser NewParser(const FileBytes& file, int options) {
  Parser parser(xmlNewParserCtxt());
  if (!parser) throw std::bad_alloc();
  // Without NOENT an ampersand in an attribute is reported as a reference. There are no entities to
  // substitute but the predefined ones: the builder stops at a document type.
  xmlCtxtUseOptions(parser.get(), XML_PARSE_NONET | XML_PARSE_NOENT | options);
  xmlParserInput* const input = xmlNewInputStream(parser.get());
  if (input == nullptr) throw std::bad_alloc();
  input->base = input->cur = reinterpret_cast<const xmlChar*>(file.Data());
  input->end = input->base + file.Size();
  if (inputPush(parser.get(), input) < 0) {
    xmlFreeInputStream(input);
    throw std::bad_alloc();
  }
  return parser;
}

/// Raises std::bad_alloc where the parser tells that it lacked memory.
bool IsWellFormed(xmlParserCtxt* parser, const Errors& errors) {
  const bool hasParsed = xmlParseDocument(parser) == 0;
  if (errors.AreLackOfMemory() || parser->errNo == XML_ERR_NO_MEMORY) throw std::bad_alloc();
  return hasParsed && !parser->disableSAX && parser->wellFormed && parser->nsWellFormed;
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

Verdict Build(Store& store, int options, Place& place) {
  const FileBytes& file = store.File();
  if (!IsWithinAttributeBound({file.Data(), file.Size()})) return Verdict::Refused;
  const Errors errors;
  const Parser parser = NewParser(file, options);
  TreeBuilder builder(store, parser.get());
  *parser->sax = TreeBuilder::Handler();
  parser->userData = &builder;
  const bool isWellFormed = IsWellFormed(parser.get(), errors);
  builder.RaiseWhatWasRaised();
  place = errors.First();
  if (builder.HasFailed()) return Verdict::Refused;
  if (!isWellFormed) return Verdict::Malformed;
  if (!HasReadAll(parser->input) || !IsLabelledRight(parser.get())) return Verdict::Malformed;
  store.SetDeclaration(DeclarationOf(parser.get()));
  return Verdict::Good;
}

/// Reads again without a tree, in much less memory. Raises std::bad_alloc when the document is well
/// formed after all.
void ConfirmMalformed(const FileBytes& file, int options) {
  const Errors errors;
  const Parser parser = NewParser(file, options);
  *parser->sax = xmlSAXHandler{};
  parser->sax->initialized = XML_SAX2_MAGIC;
  const bool isWellFormed = IsWellFormed(parser.get(), errors);
  if (isWellFormed && HasReadAll(parser->input) && IsLabelledRight(parser.get())) {
    throw std::bad_alloc();
  }
}

}  // namespace

NewStore Parse(FileBytes file, Place* place) {
  static std::once_flag once;
  std::call_once(once, xmlInitParser);
  NewStore store(new Store);
  store->File() = std::move(file);
  int options = 0;
  Place ignored;
  Place& found = place == nullptr ? ignored : *place;
  Verdict verdict = Build(*store, options, found);
  // Another encoding is refused in front of the first node.
  if (verdict != Verdict::Good && !store->Root().First() && ConvertToUtf8(store->File())) {
    options = XML_PARSE_IGNORE_ENC;
    verdict = Build(*store, options, found);
  }
  if (verdict == Verdict::Good) return store;
  file = std::move(store->File());
  store.reset();
  if (verdict == Verdict::Malformed) ConfirmMalformed(file, options);
  return nullptr;
}

}  // namespace domtree

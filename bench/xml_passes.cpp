#include "bench/xml_passes.h"

#include <libxml/parser.h>

#include "bench/check.h"

namespace bench {

std::size_t RunSax(const std::string& bytes) {
  xmlSAXHandler handler = {};
  handler.initialized = XML_SAX2_MAGIC;
  handler.startElementNs = [](void* count, const xmlChar*, const xmlChar*, const xmlChar*, int,
                              const xmlChar**, int, int,
                              const xmlChar**) { ++*static_cast<std::size_t*>(count); };
  std::size_t count = 0;
  const int result =
      xmlSAXUserParseMemory(&handler, &count, bytes.data(), static_cast<int>(bytes.size()));
  Check(result == 0, "libxml2 could not parse the file");
  return count;
}

XmlTree ReadXmlTree(const std::string& bytes) {
  // Its limit on what is looked at in one piece is below the largest of the files.
  constexpr int kOptions = XML_PARSE_NONET | XML_PARSE_HUGE;
  XmlTree tree(
      xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, kOptions));
  Check(tree != nullptr, "libxml2 could not read the file");
  return tree;
}

}  // namespace bench

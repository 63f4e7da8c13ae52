// libxml2 alone, for comparison.
#pragma once

#include <libxml/tree.h>

#include <cstddef>
#include <memory>
#include <string>

namespace bench {

/// One pass of the SAX2 parser that looks at nothing. Answers the number of elements.
std::size_t RunSax(const std::string& bytes);

struct XmlTreeEnd {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using XmlTree = std::unique_ptr<xmlDoc, XmlTreeEnd>;

/// libxml2's own tree.
XmlTree ReadXmlTree(const std::string& bytes);

}  // namespace bench

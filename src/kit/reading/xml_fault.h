// Why a text that no parser takes is no XML document, in plain words and with its place. It looks
// for what goes wrong in files that people edit and programs break off; it judges nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zortunedex::kit {

struct XmlFault {
  unsigned line = 0;    ///< from 1
  unsigned column = 0;  ///< in characters, from 1
  std::string reason;   ///< "an & stands alone; &amp; is meant"
};

/// The first fault of a text in an encoding that extends ASCII; nothing where none is found, and
/// for a text in UTF-16.
std::optional<XmlFault> FindXmlFault(std::string_view xml);

}  // namespace zortunedex::kit

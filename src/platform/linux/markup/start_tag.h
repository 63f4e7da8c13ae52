#pragma once

#include <string_view>

namespace domtree {

/// The attribute names of a start tag, in the order of its bytes.
class StartTag {
 public:
  /// `tag` begins with its "<" and is well-formed; of other bytes the names mean nothing.
  explicit StartTag(std::string_view tag);

  /// Empty behind the last one.
  std::string_view NextName();

 private:
  /// Takes what stands in front of the first of these bytes.
  std::string_view TakeUpTo(std::string_view ends);

  std::string_view m_rest;
};

}  // namespace domtree

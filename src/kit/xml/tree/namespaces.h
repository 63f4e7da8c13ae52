#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zortunedex::kit::markup {

/// The namespaces in force at one place of a file.
class Namespaces {
 public:
  struct Name {
    std::string_view name;   ///< with its prefix
    std::string_view value;  ///< of an attribute
  };

  /// Takes the declarations among the attributes. False when an element or an attribute has a
  /// prefix that nothing declares, when a declaration is none, or when two attributes are one.
  /// Ends with the element: call Leave then.
  bool Enter(std::string_view element, const std::vector<Name>& attributes);
  void Leave();

  /// Up to one more than kMostNamespaces: what goes beyond is not taken.
  std::size_t CountInForce() const { return m_declared.size(); }

 private:
  struct Declared {
    std::string_view prefix;
    std::string uri;
  };

  bool Declare(const Name& declaration);
  const std::string* UriOf(std::string_view prefix) const;
  bool AreTold(const std::vector<Name>& attributes) const;

  std::vector<Declared> m_declared;
  std::vector<std::size_t> m_levels;
};

}  // namespace zortunedex::kit::markup

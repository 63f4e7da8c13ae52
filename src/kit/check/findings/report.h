#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "kit/check/findings/finding.h"
#include "kit/check/findings/paths.h"

namespace zortunedex::kit::check {

/// Takes the findings of one file. Each begins with its code's severity and repair; a rule adds the
/// edits, and takes the repair back where there are none (Settle).
class Report {
 public:
  /// Of each code so many findings are taken: those beyond are not told.
  Report(const markup::Document& document, std::string file, std::vector<Finding>& findings,
         std::size_t mostOfACode = SIZE_MAX);

  /// At an element.
  Finding& Add(std::string_view code, markup::Index element, const std::string& text);
  /// At an attribute of an element.
  Finding& Add(std::string_view code, markup::Index element, const markup::Attribute& attribute,
               const std::string& text);
  /// At any byte of an element, or outside of all with kNone.
  Finding& AddAt(std::string_view code, std::size_t offset, markup::Index element,
                 const std::string& text);

  /// The file's name.
  const std::string& File() const { return m_file; }

 private:
  const markup::Document& m_document;
  std::string m_file;
  std::vector<Finding>& m_findings;
  Paths m_paths;
  std::size_t m_mostOfACode;
  std::map<const Code*, std::size_t> m_counts;
  Finding m_untold;
};

/// A finding of a file as a whole.
Finding OfFile(std::string_view code, std::string file, const std::string& text);

/// A repair without edits is none.
void Settle(Finding& finding);

/// A value for a finding: cut to what is readable.
std::string Shown(std::string_view value);

}  // namespace zortunedex::kit::check

#include <utility>

#include "kit/check/rules/other_rules.h"
#include "kit/check/rules/rewriting.h"
#include "kit/check/subject/numbers.h"

namespace zortunedex::kit::check {

using markup::Document;
using markup::Index;

std::int32_t NumberOf(const Document& document, Index element, std::string_view attribute) {
  const auto text = document.ValueOf(document.Elements()[element], attribute);
  return text ? ReadNumber(*text).value : 0;
}

void CheckSeconds(const Document& document, Index parent, std::string_view name, const char* code,
                  Report& report) {
  const auto elements = document.Elements();
  const std::vector<Index> same = ChildrenOf(document, parent, name);
  if (same.size() < 2) return;
  std::string text;
  EditList edits;
  for (std::size_t i = 1; i < same.size(); ++i) {
    text += document.Text(ContentOf(elements[same[i]]));
    edits.push_back(Removal(document, elements[same[i]]));
  }
  const EditList joined = Append(document, elements[same.front()], text);
  edits.insert(edits.end(), joined.begin(), joined.end());
  for (std::size_t i = 1; i < same.size(); ++i) {
    report.Add(code, same[i], "of several " + std::string(name) + " only the first is read").edits =
        std::exchange(edits, {});
  }
}

}  // namespace zortunedex::kit::check

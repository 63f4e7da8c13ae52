#include "support/lossless_reader.h"

#include <algorithm>
#include <utility>

#include "platform/linux/markup/parser.h"
#include "support/fuzz.h"

using markup::Document;

bool LibraryReads(const std::string& bytes) {
  domtree::FileBytes file;
  Require(file.Assign(bytes));
  return domtree::Parse(std::move(file)) != nullptr;
}

void RequireAre(const std::vector<markup::Token>& tokens, const std::string& bytes) {
  std::size_t end = 0;
  for (const markup::Token& token : tokens) {
    Require(token.span.begin == end && token.span.end > end);
    end = token.span.end;
  }
  Require(end == bytes.size());
}

void RequireSameTree(const Document& a, const Document& b) {
  Require(a.Elements().size() == b.Elements().size());
  for (std::size_t i = 0; i < a.Elements().size(); ++i) {
    const markup::Element& left = a.Elements()[i];
    const markup::Element& right = b.Elements()[i];
    Require(a.NameOf(left) == b.NameOf(right) && left.parent == right.parent);
    const auto attributes = a.AttributesOf(left);
    const auto others = b.AttributesOf(right);
    Require(attributes.size() == others.size());
    for (std::size_t k = 0; k < attributes.size(); ++k) {
      Require(a.NameOf(attributes[k]) == b.NameOf(others[k]));
      Require(a.ValueOf(attributes[k]) == b.ValueOf(others[k]));
    }
  }
}

bool IsAllMended(const Document& document) {
  return std::all_of(document.Damages().begin(), document.Damages().end(),
                     [](const markup::Damage& damage) {
                       return damage.isMended || damage.reason == markup::Reason::RawBlank;
                     });
}

bool SeesRawMarkup(const Document& document) {
  return std::any_of(document.Damages().begin(), document.Damages().end(),
                     [](const markup::Damage& damage) {
                       return damage.reason == markup::Reason::RawTagEnd ||
                              damage.reason == markup::Reason::ReadsTwoWays;
                     });
}

bool MayHaveAttachedParts(const std::string& bytes) {
  return bytes.substr(0, bytes.find('>')).find("standalone") != std::string::npos;
}

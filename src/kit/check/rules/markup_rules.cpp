#include <algorithm>
#include <iterator>

#include "kit/check/rules/rewriting.h"
#include "kit/check/rules/rules.h"
#include "kit/check/subject/encodings.h"

namespace zortunedex::kit::check {
namespace {

using markup::Attribute;
using markup::Damage;
using markup::Document;
using markup::Element;
using markup::Index;
using markup::kNone;
using markup::Reason;
using markup::Span;

/// The innermost element around a byte.
Index ElementAt(const Document& document, std::uint32_t offset) {
  const auto elements = document.Elements();
  const auto next = std::ranges::upper_bound(
      elements, offset, {}, [](const Element& element) { return element.tag.begin; });
  if (next == elements.begin()) return kNone;
  auto index = static_cast<Index>(next - elements.begin() - 1);
  while (index != kNone && elements[index].Whole().end <= offset) index = elements[index].parent;
  return index;
}

const Attribute* AttributeAt(const Document& document, Index element, Span span) {
  if (element == kNone) return nullptr;
  const auto attributes = document.AttributesOf(document.Elements()[element]);
  const auto next = std::ranges::upper_bound(attributes, span.begin, {},
                                             [](const Attribute& one) { return one.name.begin; });
  if (next == attributes.begin()) return nullptr;
  const Attribute& attribute = *std::prev(next);
  return attribute.Whole().Contains(span) ? &attribute : nullptr;
}

bool SplitsInSeveralWays(const Damage& damage) {
  return damage.reason == Reason::Ambiguous || damage.reason == Reason::ReadsTwoWays;
}

void SettleRepair(const Damage& damage, Finding& finding) {
  if (SplitsInSeveralWays(damage)) return;
  if (damage.isMended) {
    if (finding.code->repair == Repair::Yes) return;
    finding.repair = Repair::Yes;
    finding.option = Option::None;
  } else if (damage.reason == Reason::NotUtf8) {
    finding.repair = Repair::Option;
    finding.option = Option::CodePage;
  } else {
    Settle(finding);
  }
}

/// The channel around what splits in several ways is left out; nothing larger is.
void DropChannel(const Document& document, Index element, Finding& finding) {
  const auto elements = document.Elements();
  while (element != kNone && document.NameOf(elements[element]) != "Channel") {
    element = elements[element].parent;
  }
  if (element != kNone) {
    finding.edits = {Removal(document, elements[element])};
    finding.element = element;
  }
  Settle(finding);
}

void ReportDamage(const Document& document, const Damage& damage, Report& report) {
  const Index element = ElementAt(document, damage.span.begin);
  Finding& finding = report.AddAt(markup::CodeOf(damage.reason), damage.span.begin, element,
                                  markup::TextOf(damage.reason));
  if (const Attribute* attribute = AttributeAt(document, element, damage.span)) {
    finding.attribute = Shown(document.NameOf(*attribute));
  }
  finding.value = damage.reason == Reason::OtherEncoding ? Shown(document.EncodingName())
                                                         : Shown(document.Text(damage.span));
  const auto mends = document.MendsOf(damage);
  finding.edits.assign(mends.begin(), mends.end());
  if (SplitsInSeveralWays(damage)) DropChannel(document, element, finding);
  if (damage.reason == Reason::OtherEncoding) {
    if (auto text = ToUtf8(document.Bytes(), document.EncodingName())) {
      finding.edits = {{markup::Span{0, document.Bytes().size()}, std::move(*text)}};
    }
  }
  SettleRepair(damage, finding);
}

/// The first damage that keeps the file from being read, and whether all of them can be mended.
void ReportUnreadable(const Document& document, Report& report) {
  const Damage* first = nullptr;
  bool isMended = true;
  bool isOptional = true;
  for (const Damage& damage : document.Damages()) {
    if (!markup::IsBeyondReading(damage.reason)) continue;
    if (first == nullptr) first = &damage;
    isMended = isMended && damage.isMended;
    isOptional = isOptional && (damage.isMended || SplitsInSeveralWays(damage));
  }
  if (first == nullptr) return;
  const Index element = ElementAt(document, first->span.begin);
  Finding& finding =
      report.AddAt("ZT001", first->span.begin, element,
                   "the file cannot be read: " + std::string(markup::TextOf(first->reason)));
  finding.value = markup::CodeOf(first->reason);
  if (isMended) return;
  finding.repair = isOptional ? Repair::Option : Repair::No;
  finding.option = isOptional ? Option::DropUnrepairable : Option::None;
}

}  // namespace

void CheckMarkup(const Document& document, Report& report) {
  ReportUnreadable(document, report);
  for (const Damage& damage : document.Damages()) ReportDamage(document, damage, report);
}

}  // namespace zortunedex::kit::check

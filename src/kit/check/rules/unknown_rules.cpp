#include <algorithm>
#include <utility>

#include "kit/check/rules/rules.h"
#include "kit/check/subject/lookups.h"
#include "kit/check/subject/schema.h"

namespace zortunedex::kit::check {
namespace {

using markup::Attribute;
using markup::Document;
using markup::Element;
using markup::Index;
using markup::kNone;
using schema::Part;
using station_blocks::Layout;
using station_blocks::StreamList;

/// Where the walk is: what is known below depends on the channel set's signal.
struct Here {
  Part part = Part::Table;
  const Layout* layout = nullptr;
  const StreamList* list = nullptr;
};

class UnknownRules : public ChannelRules {
 public:
  UnknownRules(const Subject& subject, const Layout* layout)
      : m_subject(subject), m_document(subject.document), m_layout(layout) {}

  void Check(Index channel) override { Walk(channel, {Part::Channel, m_layout}); }

  /// All but the channels of the lists.
  void CheckAround() {
    Walk(0, {});
    for (const markup::Leaf& leaf : m_document.Leaves()) {
      if (leaf.parent == kNone) continue;
      const bool isComment = leaf.kind == markup::TokenKind::Comment;
      Finding& finding =
          m_subject.report.AddAt("ZT031", leaf.span.begin, leaf.parent,
                                 isComment ? "a comment ends with a save in the pre-formatted form"
                                           : "text between elements is not read");
      finding.value = Shown(m_document.Text(leaf.span));
    }
  }

 private:
  // As deep as the table of parts, whatever the file.
  void Walk(Index index, const Here& here) {
    CheckAttributes(index, here);
    const Layout* layout = here.layout;
    if (here.part == Part::ChannelSet) layout = LayoutOfSet(index);
    bool hasStreams = false;
    bool hasParams = false;
    const auto elements = m_document.Elements();
    for (Index i = elements[index].firstChild; i != kNone; i = elements[i].next) {
      const std::string_view name = m_document.NameOf(elements[i]);
      const std::optional<Here> child = Below({here.part, layout, nullptr}, name);
      const Part part = child ? child->part : Part::Table;
      const bool isSecond = (part == Part::ElementStreams && std::exchange(hasStreams, true)) ||
                            (part == Part::SatelliteParams && std::exchange(hasParams, true));
      if (!child || isSecond) {
        ReportElement(i, here.part, isSecond);
      } else if (part != Part::Channel || child->layout == nullptr) {
        Walk(i, *child);
      }
    }
  }

  const Layout* LayoutOfSet(Index set) const {
    const auto key = m_document.ValueOf(m_document.Elements()[set], "inputSignalType");
    const std::int32_t type = key ? ReadNumber(*key).value : 0;
    return station_blocks::Find(static_cast<InputSignalType>(type));
  }

  std::optional<Here> Below(const Here& here, std::string_view name) const {
    const auto is = [&](Part parent, const char* element) {
      return here.part == parent && name == element;
    };
    const bool presets = m_subject.file == ChannelFile::Presets;
    if (is(Part::Table, "Country")) return Here{Part::Country};
    if (is(Part::Country, "ChannelSet")) return Here{Part::ChannelSet};
    if (presets && is(Part::ChannelSet, "Area")) return Here{Part::Area, here.layout};
    if (presets && is(Part::Area, "SubArea")) return Here{Part::SubArea, here.layout};
    const Part holder = presets ? Part::SubArea : Part::ChannelSet;
    if (is(holder, "Channel")) return Here{Part::Channel, here.layout};
    if (here.layout == nullptr) return std::nullopt;
    if (is(Part::Channel, "ElementStreams") && !here.layout->elementStreams.Empty()) {
      return Here{Part::ElementStreams, here.layout};
    }
    if (is(Part::Channel, "SatelliteParams") && !here.layout->satelliteParams.Empty()) {
      return Here{Part::SatelliteParams, here.layout};
    }
    if (is(Part::ElementStreams, "Components") && here.layout->components != nullptr) {
      return Here{Part::Components, here.layout};
    }
    const StreamList* list = schema::ListOf(*here.layout, name);
    if (here.part == Part::ElementStreams && list != nullptr) {
      return Here{Part::Entry, here.layout, list};
    }
    return std::nullopt;
  }

  void ReportElement(Index index, Part parent, bool isSecond) {
    if (isSecond) {
      m_subject.report.Add("ZT031", index, "of two of these the second one is not read");
    } else if (parent == Part::ElementStreams) {
      m_subject.report.Add("ZT032", index, "the next save of this channel takes the element away");
    } else {
      m_subject.report.Add("ZT031", index, "the library does not know this element");
    }
  }

  /// Those of parts with rows are gone through with their values; see MakeValueRules.
  void CheckAttributes(Index index, const Here& here) {
    if (here.part == Part::Channel) return;
    if (here.layout != nullptr && !schema::FieldsOf(here.part, *here.layout, here.list).Empty()) {
      return;
    }
    for (const Attribute& attribute : m_document.AttributesOf(m_document.Elements()[index])) {
      if (schema::IsOwn(here.part, m_document.NameOf(attribute))) continue;
      m_subject.report.Add("ZT031", index, attribute, kUnknownAttribute);
    }
  }

  const Subject& m_subject;
  const Document& m_document;
  const Layout* m_layout;
};

}  // namespace

void CheckUnknown(const Subject& subject) { UnknownRules(subject, nullptr).CheckAround(); }

ChannelRulesPtr MakeUnknownRules(const Subject& subject, const ChannelGroup& group) {
  return std::make_unique<UnknownRules>(subject, group.layout);
}

}  // namespace zortunedex::kit::check

#include <algorithm>
#include <optional>

#include "kit/check/rules/rewriting.h"
#include "kit/check/rules/rules.h"
#include "kit/check/subject/base64.h"
#include "kit/check/subject/lookups.h"
#include "kit/check/subject/schema.h"
#include "kit/check/subject/words.h"
#include "kit/model/channel_layout.h"

namespace zortunedex::kit::check {
namespace {

using markup::Attribute;
using markup::Document;
using markup::Element;
using markup::Index;
using markup::kNone;
using schema::Part;
using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Source;
using station_blocks::Use;

/// Numbers that identify something and have 16 bits in every broadcast but T-DMB.
constexpr const char* kIdentifiers[] = {"serviceID", "TSID",      "ONID",
                                        "NetworkID", "ServiceID", "programNumber"};

class ValueRules : public ChannelRules {
 public:
  ValueRules(const Subject& subject, const ChannelGroup& group)
      : m_subject(subject),
        m_document(subject.document),
        m_layout(*group.layout),
        m_isTdmb(group.signal == InputSignalTDMBMobile) {}

  void Check(Index channel) override {
    CheckPart(channel, Part::Channel);
    const Index streams = Child(channel, "ElementStreams", m_layout.elementStreams);
    if (streams != kNone) {
      CheckPart(streams, Part::ElementStreams);
      for (Index i = At(streams).firstChild; i != kNone; i = At(i).next) CheckEntry(i);
    }
    const Index params = Child(channel, "SatelliteParams", m_layout.satelliteParams);
    if (params != kNone) CheckPart(params, Part::SatelliteParams);
  }

 private:
  const Element& At(Index index) const { return m_document.Elements()[index]; }
  /// None where the type has no such part.
  Index Child(Index parent, const char* name, station_blocks::Rows<Field> rows) const {
    return rows.Empty() ? kNone : FirstChild(m_document, At(parent), name);
  }

  void CheckEntry(Index entry) {
    const std::string_view name = m_document.NameOf(At(entry));
    if (const station_blocks::StreamList* list = schema::ListOf(m_layout, name)) {
      CheckPart(entry, Part::Entry, list);
    } else if (m_layout.components != nullptr && name == "Components") {
      CheckNumber(entry, "ID", 4);
      CheckNumber(entry, "type", 4);
      if (const Attribute* text = m_document.Find(At(entry), "name")) CheckInPage(entry, *text);
    }
  }

  void CheckPart(Index element, Part part, const station_blocks::StreamList* list = nullptr) {
    FieldLookup fields(schema::FieldsOf(part, m_layout, list));
    for (const Attribute& attribute : m_document.AttributesOf(At(element))) {
      const Field* field = fields.Find(m_document.NameOf(attribute));
      if (field == nullptr) {
        m_subject.report.Add("ZT031", element, attribute, kUnknownAttribute);
      } else if (field->source != Source::Index) {
        // That one is a key, which has a rule of its own.
        CheckField(element, attribute, *field);
      }
    }
  }

  void CheckField(Index element, const Attribute& attribute, const Field& field) {
    switch (field.form) {
      case Form::Number:
        return CheckNumber(element, attribute, field.width == 0 ? 4 : field.width);
      case Form::Language:
        return CheckNumber(element, attribute, 4);
      case Form::Text:
        return CheckText(element, attribute, field);
      case Form::Base64:
        return CheckEncoded(element, attribute, field);
      default:
        return CheckWord(element, attribute, field.form);
    }
  }

  void CheckNumber(Index element, const char* name, std::size_t width) {
    const Attribute* attribute = m_document.Find(At(element), name);
    if (attribute != nullptr) CheckNumber(element, *attribute, width);
  }

  void CheckNumber(Index element, const Attribute& attribute, std::size_t width) {
    const Number number = ReadNumber(m_document.ValueOf(attribute));
    if (number.spelling == Spelling::OtherText) {
      const std::string value = std::to_string(number.value);
      m_subject.report.Add("ZT100", element, attribute, "this is read as " + value).edits =
          SetValue(attribute, value);
      return;
    }
    const bool isBeyond = width < 4 && Unsigned(number.value) >> (8 * width) != 0;
    if (number.spelling == Spelling::OutOfRange || isBeyond) {
      m_subject.report.Add("ZT101", element, attribute,
                           "the number has no room in " + std::to_string(8 * width) + " bits");
    } else if (Unsigned(number.value) > 0xFFFF && IsIdentifier(attribute)) {
      m_subject.report.Add("ZT101", element, attribute, "no identifier is above 65535");
    }
  }

  bool IsIdentifier(const Attribute& attribute) const {
    const std::string_view name = m_document.NameOf(attribute);
    return !m_isTdmb &&
           std::ranges::any_of(kIdentifiers, [&](const char* one) { return name == one; });
  }

  void CheckText(Index element, const Attribute& attribute, const Field& field) {
    const std::string_view value = m_document.ValueOf(attribute);
    // It is itself in every code page.
    if (IsAscii(value)) return ReportLong(element, attribute, value.size(), TextLimit(field));
    if (!CheckInPage(element, attribute)) return;
    ReportLong(element, attribute, m_subject.text.Of(value).bytes.size(), TextLimit(field));
  }

  void ReportLong(Index element, const Attribute& attribute, std::size_t size, std::size_t limit) {
    if (size <= limit) return;
    m_subject.report.Add("ZT103", element, attribute,
                         "of the text the first " + std::to_string(limit) + " bytes are read");
  }

  /// False, and reported, for a text with characters that the code page lacks.
  bool CheckInPage(Index element, const Attribute& attribute) {
    if (m_subject.text.Of(m_document.ValueOf(attribute)).isWhole) return true;
    m_subject.report.Add("ZT103", element, attribute,
                         "the text has characters that the code page lacks");
    return false;
  }

  void CheckEncoded(Index element, const Attribute& attribute, const Field& field) {
    const std::string_view text = m_document.ValueOf(attribute);
    if (!base64::IsProper(text)) {
      m_subject.report.Add("ZT105", element, attribute, "the name is no base64");
      return;
    }
    const std::string narrow = base64::Decode(text);
    if (!m_subject.text.Decode(narrow)) {
      m_subject.report.Add("ZT105", element, attribute, NoText(narrow));
    } else {
      ReportLong(element, attribute, narrow.size(), TextLimit(field));
    }
  }

  static std::string NoText(const std::string& narrow) {
    std::string text = "the name is no text of the code page";
    if (IsShiftJis(narrow)) text += "; it is one of 932 (--codepage 932)";
    if (utf::ToWide(narrow)) text += "; it is UTF-8 (--codepage 65001)";
    return text;
  }

  static bool IsShiftJis(std::string_view bytes) {
    while (!bytes.empty()) {
      const auto lead = static_cast<unsigned char>(bytes.front());
      const bool isSingle = lead < 0x80 || (lead >= 0xA1 && lead <= 0xDF);
      const bool isDouble = (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
      if (!isSingle && (!isDouble || bytes.size() < 2)) return false;
      if (isDouble) {
        const auto trail = static_cast<unsigned char>(bytes[1]);
        if (trail < 0x40 || trail == 0x7F || trail > 0xFC) return false;
      }
      bytes.remove_prefix(isSingle ? 1 : 2);
    }
    return true;
  }

  void CheckWord(Index element, const Attribute& attribute, Form form) {
    const std::string_view word = m_document.ValueOf(attribute);
    // The library itself writes no text for what has no word.
    if (word.empty() || !words::IsLost(form, word)) return;
    const char* meant = words::Meant(form, word);
    Finding& finding = m_subject.report.Add(
        "ZT106", element, attribute,
        meant != nullptr ? "the word is spelled " + std::string(meant)
                         : std::string("there is no such word: it is lost with the next save"));
    if (meant != nullptr) finding.edits = SetValue(attribute, meant);
    Settle(finding);
  }

  const Subject& m_subject;
  const Document& m_document;
  const Layout& m_layout;
  bool m_isTdmb;
};

}  // namespace

ChannelRulesPtr MakeValueRules(const Subject& subject, const ChannelGroup& group) {
  return std::make_unique<ValueRules>(subject, group);
}

}  // namespace zortunedex::kit::check

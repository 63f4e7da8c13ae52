#include <algorithm>
#include <map>
#include <utility>

#include "kit/check/rules/rewriting.h"
#include "kit/check/rules/rules.h"
#include "kit/check/subject/schema.h"

namespace zortunedex::kit::check {
namespace {

using markup::Attribute;
using markup::Document;
using markup::Edit;
using markup::Element;
using markup::Index;
using markup::kNone;

struct KeyName {
  const char* element;
  const char* attribute;
};

constexpr KeyName kCountry = {"Country", "countrycode"};
constexpr KeyName kSet = {"ChannelSet", "inputSignalType"};

class TreeRules {
 public:
  explicit TreeRules(const Subject& subject) : m_subject(subject) {}

  void Check() {
    if (m_subject.file == ChannelFile::Channels && Doc().NameOf(At(0)) != "CHANNELTABLE") {
      m_subject.report.Add("ZT040", 0, "the document element is no CHANNELTABLE");
    }
    std::vector<Keyed> countries(m_subject.tree.countries.begin(), m_subject.tree.countries.end());
    CheckSiblings(0, countries, kCountry);
    CheckRepeated("ZT041", countries, kCountry);
    for (const CountryNode& country : m_subject.tree.countries) {
      CheckCountry(country);
      CheckSiblings(country.element, country.sets, kSet);
      CheckRepeated("ZT043", country.sets, kSet);
      for (const Keyed& set : country.sets) CheckSet(set);
    }
    if (m_subject.file == ChannelFile::Presets) CheckPresetKeys();
  }

 private:
  const Document& Doc() const { return m_subject.document; }
  const Element& At(Index index) const { return Doc().Elements()[index]; }

  /// Keys in other spellings, and the order.
  void CheckSiblings(Index parent, const std::vector<Keyed>& siblings, const KeyName& name) {
    for (const Keyed& sibling : siblings) CheckSpelling(sibling.element, name.attribute);
    const bool isSorted = std::ranges::is_sorted(siblings, {}, &Keyed::key);
    if (isSorted) return;
    std::vector<Keyed> sorted = siblings;
    std::ranges::stable_sort(sorted, {}, &Keyed::key);
    Finding& finding = m_subject.report.Add(
        "ZT044", parent, "the " + std::string(name.element) + " elements are out of order");
    finding.edits = Reorder(Doc(), ElementsOf(siblings), ElementsOf(sorted),
                            std::vector<EditList>(siblings.size()));
  }

  static std::vector<Index> ElementsOf(const std::vector<Keyed>& siblings) {
    std::vector<Index> elements;
    elements.reserve(siblings.size());
    for (const Keyed& sibling : siblings) elements.push_back(sibling.element);
    return elements;
  }

  void CheckSpelling(Index element, const char* attribute) {
    const Attribute* key = Doc().Find(At(element), attribute);
    if (key == nullptr) return;
    const std::string_view text = Doc().ValueOf(*key);
    const Number number = ReadNumber(text);
    const std::string usual = std::to_string(number.value);
    if (text == usual) return;
    Finding& finding =
        m_subject.report.Add("ZT042", element, *key, "the key is looked for as \"" + usual + "\"");
    // What is no number says nothing of what it should be.
    const bool isMeant = number.spelling == Spelling::OtherText
                             ? number.value != 0
                             : number.spelling != Spelling::OutOfRange;
    if (isMeant) finding.edits = SetValue(*key, usual);
    Settle(finding);
  }

  /// All with the key of an earlier one go into the one that is read, or into the first.
  void CheckRepeated(const char* code, const std::vector<Keyed>& siblings, const KeyName& name) {
    std::map<std::int32_t, std::vector<const Keyed*>> byKey;
    for (const Keyed& sibling : siblings) {
      if (Doc().Find(At(sibling.element), name.attribute)) {
        byKey[sibling.key].push_back(&sibling);
      }
    }
    for (const auto& [key, same] : byKey) {
      if (same.size() < 2) continue;
      const auto found = std::ranges::find_if(same, [](const Keyed* one) { return one->isFound; });
      const Keyed& target = found == same.end() ? *same.front() : **found;
      EditList edits = Joined(target, same, code == std::string_view("ZT043"));
      for (const Keyed* one : same) {
        if (one == &target) continue;
        const Attribute& attribute = *Doc().Find(At(one->element), name.attribute);
        Finding& finding =
            m_subject.report.Add(code, one->element, attribute,
                                 std::string(name.element) + " " + std::to_string(key) +
                                     " stands there twice: this one is not read");
        finding.edits = std::exchange(edits, {});
      }
    }
  }

  EditList Joined(const Keyed& target, const std::vector<const Keyed*>& same, bool numbers) {
    EditList edits;
    std::string text;
    std::uint32_t highest = HighestIndex(target.element);
    for (const Keyed* one : same) {
      if (one == &target) continue;
      EditList inside;
      if (numbers) inside = Numbered(one->element, highest);
      text += Rewritten(Doc(), TrimmedContent(one->element), inside);
      edits.push_back(Removal(Doc(), At(one->element)));
    }
    const EditList appended = Append(Doc(), At(target.element), text);
    edits.insert(edits.end(), appended.begin(), appended.end());
    return edits;
  }

  markup::Span TrimmedContent(Index element) const {
    markup::Span content = ContentOf(At(element));
    const std::string_view bytes = Doc().Bytes();
    constexpr std::string_view kBlanks = " \t\r\n";
    while (content.begin < content.end &&
           kBlanks.find(bytes[content.end - 1U]) != std::string_view::npos) {
      --content.end;
    }
    return content;
  }

  std::vector<std::uint32_t> Indexes(Index set) const {
    ChannelGroup group;
    group.channels = ChildrenOf(Doc(), set, "Channel");
    return IndexesOf(Doc(), group);
  }

  std::uint32_t HighestIndex(Index set) const {
    std::uint32_t highest = 0;
    for (const std::uint32_t index : Indexes(set)) {
      if (index != UINT32_MAX) highest = std::max(highest, index);
    }
    return highest;
  }

  /// Numbers the channels of a set on from the highest index.
  EditList Numbered(Index set, std::uint32_t& highest) const {
    const std::vector<Index> channels = ChildrenOf(Doc(), set, "Channel");
    EditList edits;
    for (const std::size_t place : ListOrder(Indexes(set))) {
      const EditList one = SetValue(Doc(), At(channels[place]), "index", std::to_string(++highest));
      edits.insert(edits.end(), one.begin(), one.end());
    }
    return edits;
  }

  void CheckCountry(const CountryNode& country) {
    const Attribute* key = Doc().Find(At(country.element), kCountry.attribute);
    if (key == nullptr) {
      m_subject.report.Add("ZT047", country.element, "a country without a code is never found");
    } else if (m_subject.knowsCountry && !m_subject.knowsCountry(Unsigned(country.key))) {
      m_subject.report.Add("ZT047", country.element, *key, "no country has this code");
    }
  }

  void CheckSet(const Keyed& set) {
    const Attribute* key = Doc().Find(At(set.element), kSet.attribute);
    if (key == nullptr || !schema::IsSignal(set.key)) {
      const char* text = "no signal type has this number";
      if (key == nullptr) {
        m_subject.report.Add("ZT047", set.element, text);
      } else {
        m_subject.report.Add("ZT047", set.element, *key, text);
      }
    }
    if (schema::IsFormless(set.key)) CheckEmptyChannels(set.element);
  }

  void CheckEmptyChannels(Index set) {
    EditList removals;
    for (const Index channel : ChildrenOf(Doc(), set, "Channel")) {
      const Element& element = At(channel);
      if (element.attributeCount == 0 && element.firstChild == kNone) {
        removals.push_back(Removal(Doc(), element));
      }
    }
    if (removals.empty()) return;
    Finding& finding = m_subject.report.Add(
        "ZT046", set,
        std::to_string(removals.size()) + " empty channels of a signal that has no form here");
    finding.edits = std::move(removals);
  }

  void CheckPresetKeys() {
    for (const CountryNode& country : m_subject.tree.countries) {
      for (const Keyed& set : country.sets) {
        for (const Index area : ChildrenOf(Doc(), set.element, "Area")) {
          CheckSpelling(area, "AreaIndex");
          for (const Index subArea : ChildrenOf(Doc(), area, "SubArea")) {
            CheckSpelling(subArea, "SubAreaIndex");
          }
        }
      }
    }
  }

  const Subject& m_subject;
};

}  // namespace

void CheckTree(const Subject& subject) { TreeRules(subject).Check(); }

}  // namespace zortunedex::kit::check

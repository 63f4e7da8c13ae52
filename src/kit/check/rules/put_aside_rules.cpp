#include "kit/check/rules/put_aside_rules.h"

#include <algorithm>
#include <map>
#include <set>

#include "kit/check/findings/report.h"
#include "kit/check/rules/rewriting.h"
#include "kit/check/rules/services.h"
#include "kit/check/subject/files.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Element;
using markup::Index;

ChannelFile KindOf(const std::string& target) {
  return target == kPresets ? ChannelFile::Presets : ChannelFile::Channels;
}

/// Of a channel that identifies no service its name.
std::string IdentityOf(const Document& document, Index channel, InputSignalType signal) {
  std::string identity = ServiceIdentity(document, channel, signal);
  if (!identity.empty()) return identity;
  return "name " + std::string(document.ValueOf(document.Elements()[channel], "name").value_or(""));
}

/// The text of an element with the white space in front of it.
std::string TextOf(const Document& document, Index element, const EditList& inside) {
  const markup::Span span = Removal(document, document.Elements()[element]).span;
  return Rewritten(document, span, inside);
}

/// Puts what one file lacks into it.
class Union {
 public:
  Union(const Document& aside, const Document& current, ChannelFile kind)
      : m_aside(aside), m_current(current), m_tree(ReadTree(current, kind)) {
    for (const ChannelGroup& group : m_tree.groups) {
      m_groups.emplace(group.Key(), &group);
      for (const Index channel : group.channels) {
        m_known.emplace(group.Key(), IdentityOf(current, channel, group.signal));
      }
    }
  }

  void Add(const ChannelGroup& group) {
    const auto target = m_groups.find(group.Key());
    std::uint32_t index = 0;
    if (target != m_groups.end()) index = Highest(*target->second);
    std::string text;
    for (const Index channel : group.channels) {
      const std::string identity = IdentityOf(m_aside, channel, group.signal);
      if (!m_known.emplace(group.Key(), identity).second) continue;
      ++m_missing;
      text +=
          TextOf(m_aside, channel,
                 SetValue(m_aside, m_aside.Elements()[channel], "index", std::to_string(++index)));
    }
    if (text.empty()) return;
    target != m_groups.end() ? AddTo(target->second->holder, text) : AddGroup(group, text);
  }

  std::size_t Missing() const { return m_missing; }

  EditList Edits() const {
    EditList edits;
    for (const auto& [holder, text] : m_texts) {
      const EditList one = Append(m_current, m_current.Elements()[holder], text);
      edits.insert(edits.end(), one.begin(), one.end());
    }
    return edits;
  }

 private:
  std::uint32_t Highest(const ChannelGroup& group) const {
    const std::vector<std::uint32_t> indexes = IndexesOf(m_current, group);
    std::uint32_t highest = 0;
    for (const std::uint32_t index : indexes) {
      if (index != UINT32_MAX) highest = std::max(highest, index);
    }
    return highest;
  }

  void AddTo(Index holder, const std::string& text) { m_texts[holder] += text; }

  /// A set, and where that lacks, too, a country, around the channels. Areas of presets come from
  /// the application: what has no sub-area any more is not put back.
  void AddGroup(const ChannelGroup& group, const std::string& text) {
    if (group.area != 0 || group.subArea != 0) return;
    const Element& set = m_aside.Elements()[group.holder];
    std::string whole = Around(set, text);
    const auto country = std::ranges::find(m_tree.countries, group.country, &CountryNode::key);
    if (country != m_tree.countries.end()) return AddTo(country->element, whole);
    AddTo(0, Around(m_aside.Elements()[set.parent], whole));
  }

  std::string Around(const Element& element, const std::string& text) const {
    std::string tag(m_aside.Text(element.tag));
    if (tag.ends_with("/>")) tag.erase(tag.size() - 2, 1);
    return "\r\n" + tag + text + "\r\n</" + std::string(m_aside.NameOf(element)) + ">";
  }

  const Document& m_aside;
  const Document& m_current;
  ChannelTree m_tree;
  std::map<GroupKey, const ChannelGroup*> m_groups;
  std::set<std::pair<GroupKey, std::string>> m_known;
  std::map<Index, std::string> m_texts;
  std::size_t m_missing = 0;
};

Finding Nothing(const std::string& name) {
  Finding finding = OfFile("ZT003", name, "everything that it holds is in the file, too");
  finding.fate = Finding::Fate::Removed;
  return finding;
}

/// It may hold what nobody can look into: it stays.
Finding Unknown(const std::string& name) {
  Finding finding = OfFile("ZT002", name, "what the file holds cannot be told");
  Settle(finding);
  return finding;
}

}  // namespace

Finding CheckPutAside(const Document& aside, const Document* current, const std::string& name,
                      const std::string& target) {
  if (aside.Bytes().empty()) return Nothing(name);
  if (aside.Elements().empty() || !aside.IsReadable()) return Unknown(name);
  const ChannelTree tree = ReadTree(aside, KindOf(target));
  static const Document kEmpty = Document::Read("<CHANNELTABLE></CHANNELTABLE>");
  Union both(aside, current != nullptr ? *current : kEmpty, KindOf(target));
  for (const ChannelGroup& group : tree.groups) {
    if (group.layout != nullptr) both.Add(group);
  }
  if (both.Missing() == 0) return Nothing(name);
  Finding finding = OfFile(
      "ZT002", name, std::to_string(both.Missing()) + " channels are here and not in " + target);
  finding.target = target;
  finding.fate = Finding::Fate::Removed;
  finding.edits = current != nullptr ? both.Edits()
                                     : EditList{{markup::Span{0, 0}, std::string(aside.Bytes())}};
  return finding;
}

}  // namespace zortunedex::kit::check

#include "kit/interchange/list/comparison.h"

#include <algorithm>

#include "kit/interchange/services/channel_values.h"
#include "kit/interchange/services/shown_name.h"
#include "kit/model/channel_layout.h"
#include "kit/selection/channel_field.h"
#include "kit/text/utf.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Source;

namespace interchange {
namespace {

bool IsNothing(const FieldValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return *number == 0;
  if (const auto* text = std::get_if<std::string>(&value))
    return text->empty() || *text == "NotSet";
  return true;
}

/// An entry as a table has it: "27|257|0".
std::string EntryText(const EntryValues& entry) {
  std::string text;
  for (const FieldValue& value : entry) {
    if (!text.empty()) text += '|';
    text += FieldText(value);
  }
  return text;
}

class Comparer {
 public:
  Comparer(const Channel& was, const Channel& became, const ComparisonRules& rules, Losses& losses)
      : m_was(was),
        m_became(became),
        m_rules(rules),
        m_losses(losses),
        m_place{was.index, utf::FromWide(was.displayName)} {}

  void Run() {
    CompareNames();
    for (const Column& column : ColumnsOf(m_rules.context.signal)) {
      column.field != nullptr ? CompareField(*column.field) : CompareList(column);
    }
  }

 private:
  void Add(Code usual, const std::string& field, const FieldValue& was, const FieldValue& became) {
    const auto own = std::ranges::find_if(
        m_rules.codes, [&](const FieldCode& known) { return field == known.field; });
    m_losses.Add(own != m_rules.codes.end() ? own->code : usual, field, m_place, was, became);
  }

  /// A name that is carried and differs was changed; the other one has no place of its own.
  void CompareNames() {
    const Layout& layout = LayoutOf(m_rules.context.signal);
    const Field& row = *station_blocks::FindField(layout.channel, "name");
    const FieldValue wasName = ValueOf(m_was, row, m_rules.context.narrow);
    const FieldValue name = ValueOf(m_became, row, m_rules.context.narrow);
    const bool isUsers = !IsFilledName(m_was, m_rules.context);
    const bool showsUsers = m_rules.names == Names::Shown && isUsers;
    if (wasName != name) {
      Add(showsUsers ? Code::NoPlace : Code::NameChanged, "name", wasName, name);
    }
    if (m_was.displayName == m_became.displayName) return;
    Add(showsUsers || !isUsers ? Code::NameChanged : Code::NoPlace, "nameDisplay",
        utf::FromWide(m_was.displayName), utf::FromWide(m_became.displayName));
  }

  bool IsCountOfList(const Field& field) const {
    const Layout& layout = LayoutOf(m_rules.context.signal);
    if (field.source != Source::Block || field.width == 0) return false;
    if (layout.components != nullptr && layout.components->countOffset == field.offset) return true;
    return std::ranges::any_of(layout.lists, [&](const station_blocks::StreamList& list) {
      return list.countOffset == field.offset;
    });
  }

  void CompareField(const Field& field) {
    if (field.source == Source::Name || field.source == Source::DisplayName) return;
    if (IsCountOfList(field)) return;
    const FieldValue was = ValueOf(m_was, field, m_rules.context.narrow);
    const FieldValue became = ValueOf(m_became, field, m_rules.context.narrow);
    if (was == became || (IsNothing(was) && IsNothing(became))) return;
    // What a format has a code of its own for is a value that the list knows.
    const bool isKnown = !IsNothing(was) || IsMark(field) || IsText(field);
    if (isKnown) {
      Add(UsualCode(field, became), field.attribute, was, became);
    } else {
      m_losses.Add(AssumedCode(field), field.attribute, m_place, was, became);
    }
  }

  static bool IsMark(const Field& field) {
    return field.source == Source::Index || field.source == Source::Favorite ||
           field.source == Source::Lock;
  }
  static bool IsText(const Field& field) {
    return field.form == Form::Text || field.form == Form::Base64;
  }

  /// What the list does not know and the target cannot leave open.
  static Code AssumedCode(const Field& field) {
    if (std::string_view(field.attribute) == "serviceType") return Code::TypeAssumed;
    return field.form == Form::Number ? Code::TuningDerived : Code::SystemAssumed;
  }

  static Code UsualCode(const Field& field, const FieldValue& became) {
    if (IsMark(field)) return Code::MarkDropped;
    if (IsNothing(became)) return Code::NoPlace;
    if (IsText(field)) return Code::NameChanged;
    return field.form == Form::Number ? Code::NumberRounded : Code::WordLacking;
  }

  /// Entries are held against each other one by one. Some that are missing are further ones; a list
  /// that is gone as a whole has no place.
  void CompareList(const Column& column) {
    const std::vector<EntryValues> was = EntriesOf(m_was, column, m_rules.context.narrow);
    const std::vector<EntryValues> became = EntriesOf(m_became, column, m_rules.context.narrow);
    const std::vector<const char*> names = EntryNames(column);
    const std::size_t common = std::min(was.size(), became.size());
    for (std::size_t i = 0; i < common; ++i) {
      for (std::size_t j = 0; j < names.size(); ++j) {
        if (was[i][j] == became[i][j]) continue;
        Add(EntryCode(names[j]), std::string(column.name) + "." + names[j], was[i][j],
            became[i][j]);
      }
    }
    const Code code = became.empty() ? Code::NoPlace : Code::StreamsDropped;
    for (std::size_t i = common; i < was.size(); ++i) {
      Add(code, column.name, EntryText(was[i]), {});
    }
    for (std::size_t i = common; i < became.size(); ++i) {
      Add(Code::TypeAssumed, column.name, {}, EntryText(became[i]));
    }
  }

  static Code EntryCode(std::string_view name) {
    return name == "type" || name == "lang" ? Code::StreamKindDropped : Code::NoPlace;
  }

  const Channel& m_was;
  const Channel& m_became;
  const ComparisonRules& m_rules;
  Losses& m_losses;
  Place m_place;
};

}  // namespace

void AddDifferences(const Channel& was, const Channel& became, const ComparisonRules& rules,
                    Losses& losses) {
  Comparer(was, became, rules, losses).Run();
}

}  // namespace interchange

}  // namespace zortunedex::kit

#include <algorithm>
#include <map>

#include "kit/merge/merge_report.h"
#include "kit/selection/channel_field.h"
#include "kit/text/printable.h"

namespace zortunedex::kit::merge {
namespace {

std::string Words(const FieldValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr && text->empty() ? "\"\"" : FieldText(value);
}

std::string Step(const FieldValue& from, const FieldValue& to) {
  return Words(from) + " -> " + Words(to);
}

const FieldChange* FindField(const Change& change, std::string_view name) {
  const auto found = std::ranges::find(change.fields, name, &FieldChange::field);
  return found == change.fields.end() ? nullptr : &*found;
}

/// "V" of "LinearV".
std::string ShortPolarisation(const FieldValue& value) {
  const std::string word = Words(value);
  return word.empty() ? word : word.substr(word.size() - 1);
}

/// Where a change says in its line what changed, those fields are not told again below it.
using ToldFields = std::vector<std::string_view>;

std::string MovedText(const Change& change, ToldFields& told) {
  const FieldChange* polarisation = FindField(change, "polarisation");
  for (const std::string_view name : {"freq", "Frequency", "physicalChannel", "TSID", "ONID"}) {
    const FieldChange* field = FindField(change, name);
    if (field == nullptr) continue;
    told.push_back(name);
    std::string from = Words(field->list);
    std::string to = Words(field->result);
    if (name == "physicalChannel") {
      from.insert(0, "RF ");
      to.insert(0, "RF ");
    }
    if (polarisation != nullptr && name == "freq") {
      told.emplace_back("polarisation");
      from += " " + ShortPolarisation(polarisation->list);
      to += " " + ShortPolarisation(polarisation->result);
    }
    std::string text = "moved ";
    return text.append(from).append(" -> ").append(to);
  }
  return "moved";
}

std::string RenumberedText(const Change& change, ToldFields& told) {
  std::string text = "renumbered";
  for (const std::string_view name :
       {"serviceID", "ServiceID", "majorChannel", "minorChannel", "programNumber"}) {
    const FieldChange* field = FindField(change, name);
    if (field == nullptr) continue;
    told.push_back(name);
    text += (text == "renumbered" ? " " : ", ") + std::string(name) + " " +
            Step(field->list, field->result);
  }
  return text;
}

std::string RenamedText(const Change& change, ToldFields& told) {
  const FieldChange* shown = FindField(change, "nameDisplay");
  const FieldChange* name = FindField(change, "name");
  const FieldChange* field = name != nullptr ? name : shown;
  if (field == nullptr) return "renamed";
  told.emplace_back(field->field);
  const bool isSame = shown != nullptr && name != nullptr && shown->list == name->list &&
                      shown->result == name->result;
  if (isSame) told.emplace_back("nameDisplay");
  return "renamed " + Step(field->list, field->result);
}

std::string AbsentText(const Change& change) {
  return change.absent < 2 ? "" : " (" + std::to_string(change.absent) + " in a row)";
}

class PlanWriter {
 public:
  PlanWriter(const MergePlan& plan, PlanKind kind)
      : m_plan(plan), m_other(kind == PlanKind::Merge ? "the scan" : "the other list") {}

  std::string Run() {
    for (const Change& change : m_plan.changes) {
      if (change.code != Code::Unchanged && !IsConflict(change)) Write(change);
    }
    for (const Change& change : m_plan.changes) {
      if (IsConflict(change)) Write(change);
    }
    WriteSummary();
    return std::move(m_text);
  }

 private:
  static bool IsConflict(const Change& change) { return change.code >= Code::Ambiguous; }

  static char SignOf(const Change& change) {
    if (IsConflict(change)) return '!';
    switch (change.code) {
      case Code::New:
        return '+';
      case Code::NewLeftOut:
      case Code::TwiceInScan:
      case Code::DeletedByUser:
        return '.';
      case Code::NotFound:
      case Code::Marked:
      case Code::CannotMark:
        return '?';
      case Code::Removed:
        return '-';
      default:
        return '~';
    }
  }

  void Write(const Change& change) {
    ToldFields told;
    const std::string what = IsConflict(change) ? ConflictText(change, told) : Text(change, told);
    const UINT index = change.index != 0 ? change.index : change.resultIndex;
    m_text += SignOf(change);
    if (index != 0) m_text += " " + std::to_string(index);
    m_text += " " + (change.name.empty() ? change.identity : Printable(change.name)) + "  " +
              CodeName(change.code) + " " + what + "\n";
    for (const FieldChange& field : change.fields) {
      if (std::ranges::find(told, field.field) != told.end()) continue;
      m_text += "    " + field.field + " " + Step(field.list, field.result) + "\n";
    }
  }

  std::string Text(const Change& change, ToldFields& told) const {
    switch (change.code) {
      case Code::Moved:
        return MovedText(change, told);
      case Code::Renumbered:
        return RenumberedText(change, told);
      case Code::Renamed:
        return RenamedText(change, told);
      case Code::New:
        return "new " + change.identity;
      case Code::NewLeftOut:
      case Code::DeletedByUser:
        return std::string(MeaningOf(change.code)) + ", " + change.identity;
      case Code::TwiceInScan:
        return "twice in " + m_other + ", " + change.identity;
      case Code::NotFound:
      case Code::Marked:
      case Code::Removed:
      case Code::CannotMark:
        return MeaningOf(change.code) + AbsentText(change);
      default:
        return MeaningOf(change.code);
    }
  }

  std::string ConflictText(const Change& change, ToldFields& told) const {
    if (change.code == Code::Ambiguous) return AmbiguousText(change);
    if (change.code == Code::TuningEdited) return EditedText(change, told);
    const FieldChange* name = FindField(change, "name");
    if (name == nullptr) return MeaningOf(change.code);
    told.emplace_back("name");
    const std::string list = Words(name->list);
    if (change.code == Code::RenamedByBoth) {
      return "was " + Words(name->base) + ", is " + list + " here and " + Words(name->scan) +
             " in " + m_other + ": stays " + list;
    }
    return "is " + list + " here and " + Words(name->scan) + " in " + m_other +
           "; whose name it is, is not known: stays " + list;
  }

  std::string AmbiguousText(const Change& change) const {
    std::string text = "is left alone: it may be ";
    for (std::size_t i = 0; i < change.candidates.size(); ++i) {
      if (i > 0) text += i + 1 == change.candidates.size() ? " or " : ", ";
      const Candidate& candidate = change.candidates[i];
      text += candidate.identity;
      if (!candidate.name.empty()) text += " " + Printable(candidate.name);
    }
    return text;
  }

  std::string EditedText(const Change& change, ToldFields& told) const {
    std::string text;
    for (const FieldChange& field : change.fields) {
      const bool isAtOdds = field.base != FieldValue{} && field.list != field.base &&
                            field.list != field.scan && field.scan != FieldValue{};
      if (!isAtOdds) continue;
      told.emplace_back(field.field);
      text += (text.empty() ? "" : "; ") + field.field + " was " + Words(field.base) +
              ", you set " + Words(field.list) + ", " + m_other + " has " + Words(field.scan) +
              ": " + Words(field.result) + (field.result == field.list ? " stays" : " is taken");
    }
    return text.empty() ? MeaningOf(change.code) : text;
  }

  void WriteSummary() {
    std::map<Code, std::size_t> counts;
    for (const Change& change : m_plan.changes) ++counts[change.code];
    for (const auto& [code, count] : counts) {
      m_text += CodeName(code) + " " + std::to_string(count) + " " + MeaningOf(code) + "\n";
    }
  }

  const MergePlan& m_plan;
  std::string m_other;
  std::string m_text;
};

}  // namespace

std::string PlanText(const MergePlan& plan, PlanKind kind) { return PlanWriter(plan, kind).Run(); }

}  // namespace zortunedex::kit::merge

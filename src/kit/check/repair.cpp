#include "kit/check/repair.h"

#include <algorithm>
#include <iterator>

#include "kit/check/edit_plan.h"
#include "kit/check/prediction/comparison.h"
#include "kit/check/prediction/preservation.h"
#include "kit/check/prediction/satellite_comparison.h"
#include "kit/failure.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;

// A repair can bring up another finding: a key in its usual spelling is one that stands there
// twice. Each pass takes one away; more than a few do not follow from each other.
constexpr int kMostPasses = 12;

bool IsMarkup(const Finding& finding) {
  const std::string_view name = finding.code->name;
  return name == "ZT007" || name == "ZT008" || (name >= "ZT020" && name <= "ZT026");
}

/// What moves whole elements goes first: what is mended inside of them waits for the next pass.
int RankOf(const Finding& finding) {
  constexpr std::string_view kOrder[] = {"ZT025", "ZT041", "ZT043", "ZT044", "ZT046",
                                         "ZT070", "ZT060", "ZT061", "ZT062"};
  return static_cast<int>(std::ranges::find(kOrder, finding.code->name) - std::begin(kOrder));
}

class Repairer {
 public:
  Repairer(const Files& files, const RepairSettings& settings)
      : m_settings(settings), m_checker(settings.check) {
    m_result.before = files;
    m_result.after = files;
  }

  Repaired Run() {
    Checked checked = m_checker.Check(m_result.after);
    RequireMendable(checked);
    for (int pass = 0; pass < kMostPasses && Pass(checked); ++pass) {
      checked = m_checker.Check(m_result.after);
    }
    PutBackUnreadable(checked);
    RequireAsPredicted(checked);
    Sort(m_result.mended);
    m_result.left = std::move(checked.findings);
    return std::move(m_result);
  }

 private:
  /// Nothing is written while it cannot be told what a part of a file means.
  void RequireMendable(const Checked& checked) const {
    for (const Finding& finding : checked.findings) {
      const bool isDropped = m_settings.options.contains(Option::DropUnrepairable);
      if (finding.code->name != "ZT025" || isDropped) continue;
      throw Failure{E_FAIL, finding.file + ":" + std::to_string(finding.place->line) + ":" +
                                std::to_string(finding.place->column) + ": " + finding.text +
                                "; --drop-unrepairable leaves such elements out"};
    }
  }

  bool Pass(const Checked& checked) {
    m_edits.clear();
    std::vector<const Finding*> chosen;
    for (const Finding& finding : checked.findings) {
      if (IsAsked(finding, m_settings) && IsReady(finding, checked)) chosen.push_back(&finding);
    }
    std::ranges::stable_sort(chosen, {}, [](const Finding* one) { return RankOf(*one); });
    std::vector<const Finding*> mended;
    for (const Finding* finding : chosen) {
      if (Take(*finding)) mended.push_back(finding);
    }
    if (mended.empty()) return false;
    // What is mended together with another one.
    std::vector<const Finding*> all = mended;
    const Fellows fellows(mended);
    for (const Finding* finding : chosen) {
      if (!IsOwn(*finding) && fellows.HasOne(*finding)) all.push_back(finding);
    }
    for (const Finding* finding : all) Note(*finding);
    Apply(checked, all);
    return true;
  }

  /// One that has to wait for the next pass is the same finding then.
  void Note(const Finding& finding) {
    const markup::Place place = finding.place.value_or(markup::Place{0, 0});
    const std::string key = std::string(finding.code->name) + " " + finding.file + " " +
                            std::to_string(place.line) + " " + std::to_string(place.column) + " " +
                            finding.path + " " + finding.attribute.value_or("") + " " +
                            finding.text;
    if (m_noted.insert(key).second) m_result.mended.push_back(finding);
  }

  static bool IsOwn(const Finding& finding) {
    return !finding.edits.empty() || finding.fate != Finding::Fate::Stays;
  }

  /// Findings that are mended together with others: the rest of a list that is numbered, and a file
  /// that cannot be read, with what is broken in it.
  class Fellows {
   public:
    explicit Fellows(const std::vector<const Finding*>& mended) {
      for (const Finding* one : mended) {
        m_codes.emplace(one->file, one->code);
        if (IsMarkup(*one)) m_markup.insert(one->file);
      }
    }
    bool HasOne(const Finding& finding) const {
      return finding.code->name == "ZT001" ? m_markup.contains(finding.file)
                                           : m_codes.contains({finding.file, finding.code});
    }

   private:
    std::set<std::pair<std::string_view, const Code*>> m_codes;
    std::set<std::string_view> m_markup;
  };

  /// A file is mended as text first; what it means is looked at when it can be read.
  bool IsReady(const Finding& finding, const Checked& checked) const {
    if (IsMarkup(finding) || finding.code->name == "ZT001") return true;
    const std::string& target = finding.target.empty() ? finding.file : finding.target;
    const auto document = checked.documents.find(target);
    return document == checked.documents.end() || document->second.IsReadable();
  }

  bool Take(const Finding& finding) {
    if (!IsOwn(finding)) return false;
    const std::string& target = finding.target.empty() ? finding.file : finding.target;
    return finding.edits.empty() || m_edits[target].Add(finding.edits);
  }

  void Apply(const Checked& checked, const std::vector<const Finding*>& mended) {
    for (const auto& [name, edits] : m_edits) {
      std::optional<std::string>& bytes = m_result.after[name];
      std::optional<std::string> changed = edits.Apply(bytes.value_or(""));
      if (!changed) throw Failure{E_UNEXPECTED, "edits of " + name + " are outside of it"};
      RequireKept(checked, name, mended, *changed);
      bytes = std::move(changed);
    }
    for (const Finding* finding : mended) {
      if (finding->fate == Finding::Fate::Removed) m_result.after[finding->file] = std::nullopt;
    }
  }

  void RequireKept(const Checked& checked, const std::string& name,
                   const std::vector<const Finding*>& mended, const std::string& changed) {
    const auto before = checked.documents.find(name);
    if (before == checked.documents.end()) return;
    std::vector<const Finding*> here;
    for (const Finding* finding : mended) {
      if (finding->file == name || finding->target == name) here.push_back(finding);
    }
    const std::optional<std::string> lost = Lost(name, before->second, here, changed);
    if (lost) throw Failure{E_FAIL, name + " is left as it is: " + *lost};
  }

  std::optional<std::string> Lost(const std::string& name, const Document& before,
                                  const std::vector<const Finding*>& mended,
                                  const std::string& changed) {
    const Document after = m_checker.Read(changed);
    if (before.Elements().empty()) {
      // Only the library can read what it was.
      const auto differences =
          CompareFile(name, after, before.Bytes(), m_checker.Library(), m_checker.Text());
      return differences.empty() ? std::nullopt : std::optional(differences.front().text);
    }
    if (after.Elements().empty()) return "nothing can be read any more";
    if (name == kCatalogue) return WhatIsLostOfCatalogue(before, mended, after, m_checker.Text());
    if (name == kSettings) return WhatIsLostOfDishes(before, mended, after, m_checker.Text());
    const ChannelFile kind = name == kPresets ? ChannelFile::Presets : ChannelFile::Channels;
    return WhatIsLost(before, mended, after, kind, m_checker.Library(), m_checker.Text());
  }

  /// A file that cannot be read all the same stays as it is, to the letter.
  void PutBackUnreadable(Checked& checked) {
    bool isAny = false;
    for (const auto& [file, document] : checked.documents) {
      const std::string& name = file;
      if (document.IsReadable() || m_result.after[name] == m_result.before[name]) continue;
      m_result.after[name] = m_result.before[name];
      std::erase_if(m_result.mended, [&](const Finding& one) { return one.file == name; });
      isAny = true;
    }
    if (isAny) checked = m_checker.Check(m_result.after);
  }

  void RequireAsPredicted(Checked& checked) {
    const std::vector<Finding> differences = m_checker.Compare(checked.documents);
    for (const Finding& difference : differences) {
      if (m_result.after[difference.file] == m_result.before[difference.file]) {
        checked.findings.push_back(difference);
        continue;
      }
      throw Failure{E_FAIL, difference.file + " is left as it is: the library would read the " +
                                "repaired file otherwise: " + difference.text};
    }
    Sort(checked.findings);
  }

  const RepairSettings& m_settings;
  Checker m_checker;
  Repaired m_result;
  std::map<std::string, EditPlan> m_edits;
  std::set<std::string> m_noted;
};

}  // namespace

bool IsAsked(const Finding& finding, const RepairSettings& settings) {
  const std::string_view name = finding.code->name;
  if (finding.repair == Repair::No) return false;
  if (finding.repair == Repair::Option && finding.option != Option::None &&
      !settings.options.contains(finding.option)) {
    return false;
  }
  const bool isPartOfUnreadable = name >= "ZT020" && name <= "ZT025";
  return settings.codes.empty() || settings.codes.contains(name) ||
         (isPartOfUnreadable && settings.codes.contains("ZT001"));
}

Repaired Repair(const Files& files, const RepairSettings& settings) {
  return Repairer(files, settings).Run();
}

}  // namespace zortunedex::kit::check

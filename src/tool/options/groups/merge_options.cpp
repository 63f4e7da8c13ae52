#include "tool/options/groups/merge_options.h"

#include <array>
#include <utility>

#include "kit/interchange/list/formats.h"
#include "tool/options/groups/exchange_options.h"

namespace zortunedex::kit::tool {

using merge::Deleted;
using merge::EditedTuning;
using merge::Gone;
using merge::NewOnes;
using merge::Numbers;
using merge::Scope;

namespace {

constexpr const char* kScanHelp =
    "A data directory, or a file of a format that 'channels import' takes; without --format it is\n"
    "told by its bytes. docs/merge.md tells how a service is recognised and what is kept.";

/// A word that stands for a value.
template <typename Value>
using Meaning = std::pair<const char*, Value>;

template <typename Value, std::size_t Count>
void AddChoice(CLI::App* app, const std::string& name, const std::string& help, Value& target,
               const std::array<Meaning<Value>, Count>& meanings) {
  AddWord(app, name, help, [&target, meanings](const std::string& text) {
    for (const auto& [word, value] : meanings) {
      if (text != word) continue;
      target = value;
      return true;
    }
    return false;
  });
}

/// "remove=3": absent that many times in a row.
bool TakeGone(const std::string& text, merge::MergePolicy& policy) {
  constexpr std::string_view kRemoveAfter = "remove=";
  policy.goneAfter = 1;
  if (text == "keep") {
    policy.gone = Gone::Keep;
  } else if (text == "mark") {
    policy.gone = Gone::Mark;
  } else if (text == "remove") {
    policy.gone = Gone::Remove;
  } else if (text.starts_with(kRemoveAfter)) {
    const auto times = ParseNumber(text.substr(kRemoveAfter.size()), 1, UINT32_MAX);
    if (!times) return false;
    policy.gone = Gone::Remove;
    policy.goneAfter = static_cast<std::uint32_t>(*times);
  } else {
    return false;
  }
  return true;
}

/// What both commands take.
void AddScan(CLI::App* app, Options& options, const std::string& name, const std::string& what) {
  app->add_option(name, options.exchange.file, what)->type_name("FILE")->required();
  AddScanFormat(app, options);
  AddPosition(app, options);
  AddChoice<Scope>(
      app, "--scope",
      "transponders (default), full or none: where a channel that is not found counts\n"
      "as gone",
      options.merging.policy.scope,
      std::array{Meaning<Scope>{"transponders", Scope::Transponders},
                 Meaning<Scope>{"full", Scope::Full}, Meaning<Scope>{"none", Scope::None}});
  app->add_flag("--loose-names", options.merging.policy.looseNames,
                "compare names without case, blanks and a final HD");
  app->add_flag("--exit-code", options.merging.exitCode,
                "end with status 3 when something would change");
  AddFileUnit(app, options);
  app->footer(kScanHelp);
}

void AddMerge(CLI::App* channels, Options& options) {
  CLI::App* app = channels->add_subcommand("merge", "Take a new scan into the list");
  AddScan(app, options, "SCAN", "what the scan wrote");
  merge::MergePolicy& policy = options.merging.policy;
  AddChoice<NewOnes>(app, "--new", "end (default), transponder or none: where new channels go",
                     policy.newOnes,
                     std::array{Meaning<NewOnes>{"end", NewOnes::End},
                                Meaning<NewOnes>{"transponder", NewOnes::Transponder},
                                Meaning<NewOnes>{"none", NewOnes::None}});
  AddWord(app, "--gone",
          "keep (default), mark, remove or remove=N: what becomes of channels that are gone, N\n"
          "times in a row",
          [&policy](const std::string& text) { return TakeGone(text, policy); });
  app->add_flag("--gone-favorites", policy.goneFavorites,
                "remove favourites and locked channels, too");
  AddChoice<Numbers>(
      app, "--numbers",
      "keep or scan: whose physical channel; without it the list's for DVB-S, else\n"
      "the scan's",
      policy.numbers,
      std::array{Meaning<Numbers>{"keep", Numbers::Keep}, Meaning<Numbers>{"scan", Numbers::Scan}});
  AddChoice<EditedTuning>(app, "--tuning",
                          "scan (default) or keep: what becomes of tuning that the user changed",
                          policy.tuning,
                          std::array{Meaning<EditedTuning>{"scan", EditedTuning::Scan},
                                     Meaning<EditedTuning>{"keep", EditedTuning::Keep}});
  AddChoice<Deleted>(
      app, "--deleted", "out (default) or add: what becomes of services that the user deleted",
      policy.deleted,
      std::array{Meaning<Deleted>{"out", Deleted::StayOut}, Meaning<Deleted>{"add", Deleted::Add}});
  app->add_option("--base", options.merging.base,
                  "scan to tell changes of the user by: the base of an earlier merge, or none;\n"
                  "without it that of the last merge")
      ->type_name("FILE");
}

}  // namespace

void AddMergeCommands(CLI::App* channels, Options& options) {
  AddMerge(channels, options);
  CLI::App* app = channels->add_subcommand("diff", "Say how another list differs");
  AddScan(app, options, "OTHER", "another list");
}

}  // namespace zortunedex::kit::tool

#include "tool/options/groups/history_options.h"

#include <algorithm>
#include <string_view>

#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

namespace {

/// The numbers of snapshots, `least` to `most` of them.
void AddSnapshots(CLI::App* app, Options& options, int least, int most, const std::string& help) {
  const auto take = [&options](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
      const std::optional<std::int64_t> value = ParseNumber(text, 1, UINT32_MAX);
      if (!value) throw CLI::ValidationError("N", "'" + text + "' is no number of a snapshot");
      options.snapshots.push_back(static_cast<UINT>(*value));
    }
  };
  app->add_option_function<std::vector<std::string>>("N", take, help)
      ->type_name("")
      ->required()
      ->expected(least, most);
}

bool IsPlain(char letter) {
  constexpr std::string_view kPlain = "_./:=,+@%-[]";
  return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
         (letter >= 'a' && letter <= 'z') || kPlain.find(letter) != kPlain.npos;
}

std::string Quoted(const std::string& word) {
  if (!word.empty() && std::all_of(word.begin(), word.end(), IsPlain)) return word;
  std::string quoted = "'";
  for (const char letter : word) letter == '\'' ? quoted += "'\\''" : quoted += letter;
  return quoted + "'";
}

}  // namespace

void AddHistoryGlobals(CLI::App& app, Options& options) {
  app.add_flag("--dry-run", options.dryRun, "print what would change, and change nothing");
  app.add_flag("--no-history", options.noHistory, "do not record what changes");
  const auto take = [&options](const std::string& text) {
    const std::optional<std::int64_t> value = ParseNumber(text, 0, 1000000);
    if (!value) throw CLI::ValidationError("--wait", "'" + text + "' is no number of seconds");
    options.wait = static_cast<UINT>(*value);
  };
  app.add_option_function<std::string>(
         "--wait", take, "how long to wait for another command that changes the directory; 10")
      ->type_name("SECONDS");
}

void AddHistoryCommands(CLI::App& app, Options& options) {
  app.add_subcommand("undo", "Take the last change back");
  app.add_subcommand("redo", "Make a change again that was taken back");
  CLI::App* history = app.add_subcommand("history", "What changed, and files as they were");
  history->require_subcommand(1);
  history->add_subcommand("list", "List the snapshots, newest first");
  CLI::App* show = history->add_subcommand("show", "Show a snapshot and its files");
  AddSnapshots(show, options, 1, 1, "number of a snapshot");
  CLI::App* diff = history->add_subcommand("diff", "Tell what changed from one to another");
  AddSnapshots(diff, options, 1, 2,
               "a snapshot, and a later one; without it the files as they are");
  CLI::App* restore = history->add_subcommand("restore", "Bring the files of a snapshot back");
  AddSnapshots(restore, options, 1, 1, "number of a snapshot");
  restore->add_option("--file", options.file, "this file alone")->type_name("NAME");
  CLI::App* prune = history->add_subcommand("prune", "Remove old snapshots and what is damaged");
  AddNumber(prune, "--keep", options.keep,
            "how many of the newest are kept; without it 50 or 64 MB");
}

void CompleteHistoryOptions(const Options& options) {
  const bool isHistory = options.command == "undo" || options.command == "redo" ||
                         options.command.starts_with("history ");
  if (!isHistory) return;
  if (options.noHistory)
    throw UsageError{options.command + " is about the history; no --no-history"};
  if (options.keep == 0U) throw UsageError{"--keep takes at least 1"};
}

std::string TypedCommand(const CLI::App& app, const std::vector<std::string>& arguments) {
  std::string typed;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    const std::size_t equals = word.find('=');
    const CLI::Option* option =
        word.starts_with("--") ? app.get_option_no_throw(word.substr(0, equals)) : nullptr;
    if (option == nullptr) {
      typed += (typed.empty() ? "" : " ") + Quoted(word);
    } else if (equals == std::string::npos && option->get_items_expected_max() > 0) {
      ++i;  // its value
    }
  }
  return typed;
}

}  // namespace zortunedex::kit::tool

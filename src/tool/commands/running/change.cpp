#include "tool/commands/running/change.h"

#include <iostream>

#include "tool/printing/change_report.h"
#include "tool/printing/held_output.h"

namespace zortunedex::kit::tool::commands {

history::ChangeSettings SettingsOf(const Options& options) {
  return {options.directory, options.typed, !options.noHistory, options.dryRun,
          std::chrono::seconds(options.wait)};
}

void RunChange(const Options& options, void (*run)(const Options& options), Trial trial) {
  std::string text;
  bool isBegun = false;
  history::Difference difference;
  try {
    difference = history::MakeChange(SettingsOf(options), [&](const std::string& scratch) {
      isBegun = true;
      const HeldOutput held;
      Options there = options;
      there.directory = scratch;
      run(there);
      text = held.Text();
    });
  } catch (const UnreadableFile&) {
    const bool isReplaced = options.unreadable == Unreadable::TakeAsEmpty;
    if (isBegun || options.dryRun || !isReplaced) throw;
    // Where not even its bytes can be had, there is nothing to copy or to record.
    return history::ChangeInPlace(SettingsOf(options), [&] { run(options); });
  }
  if (options.dryRun && trial == Trial::Differences) return PrintDryRun(difference, options.json);
  std::cout << text;
}

}  // namespace zortunedex::kit::tool::commands

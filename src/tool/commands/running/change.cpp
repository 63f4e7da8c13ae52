#include "tool/commands/running/change.h"

#include <iostream>

#include "kit/failure.h"
#include "kit/saving/save_watch.h"
#include "tool/printing/change_report.h"
#include "tool/printing/held_output.h"

namespace zortunedex::kit::tool::commands {
namespace {

/// Messages name the directory that the user did.
std::string Renamed(std::string message, const std::string& from, const std::string& to) {
  for (std::size_t at = message.find(from); at != std::string::npos;
       at = message.find(from, at + to.size())) {
    message.replace(at, from.size(), to);
  }
  return message;
}

void RunOn(const std::string& scratch, const Options& options, void (*run)(const Options&)) {
  Options there = options;
  there.directory = scratch;
  const auto shown = [&](const std::exception& error) {
    return Renamed(error.what(), scratch, options.directory);
  };
  try {
    run(there);
  } catch (const InvalidArgument& error) {
    if (shown(error) == error.what()) throw;
    throw InvalidArgument{shown(error)};
  } catch (const FailedSave& error) {
    // What its state tells is that of the copy.
    throw Failure{error.Result(),
                  Renamed(error.cause, scratch, options.directory) + "; the file is unchanged"};
  } catch (const Failure& error) {
    if (shown(error) == error.what()) throw;
    throw Failure{error.Result(), shown(error)};
  }
}

}  // namespace

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
      RunOn(scratch, options, run);
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

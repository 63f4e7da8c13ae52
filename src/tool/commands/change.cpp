#include "tool/commands/change.h"

#include <iostream>
#include <sstream>

#include "kit/failure.h"
#include "tool/printing/change_report.h"

namespace commands {
namespace {

/// Holds back what is printed while it lives.
class HeldOutput {
 public:
  HeldOutput() : m_target(std::cout.rdbuf(m_text.rdbuf())) {}
  HeldOutput(const HeldOutput&) = delete;
  HeldOutput& operator=(const HeldOutput&) = delete;
  ~HeldOutput() { std::cout.rdbuf(m_target); }

  std::string Text() const { return m_text.str(); }

 private:
  std::ostringstream m_text;
  std::streambuf* m_target;
};

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

void RunChange(const Options& options, void (*run)(const Options& options)) {
  std::string text;
  const history::Difference difference =
      history::MakeChange(SettingsOf(options), [&](const std::string& scratch) {
        const HeldOutput held;
        RunOn(scratch, options, run);
        text = held.Text();
      });
  if (options.dryRun) return PrintDryRun(difference, options.json);
  std::cout << text;
}

}  // namespace commands

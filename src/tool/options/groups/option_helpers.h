// What the parts of the command line share.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "kit/text/ascii.h"
#include "tool/options/options.h"
#include "tool/options/typing/words.h"

namespace zortunedex::kit::tool {

/// A callback for a number of 32 bits without a sign.
template <typename Number>
CLI::Option* AddNumber(CLI::App* app, const std::string& name, std::optional<Number>& target,
                       const std::string& help) {
  const auto take = [&target, name](const std::string& text) {
    const std::optional<std::int64_t> value = ParseNumber(text, 0, UINT32_MAX);
    if (!value) throw CLI::ValidationError(name, "'" + text + "' is no number of 32 bits");
    target = static_cast<Number>(*value);
  };
  return app->add_option_function<std::string>(name, take, help)->type_name("NUMBER");
}

/// An option or a word whose text is taken by `take`, which answers false for one it does not know.
template <typename Take>
CLI::Option* AddWord(CLI::App* app, const std::string& name, const std::string& help, Take take) {
  return app
      ->add_option_function<std::string>(
          name,
          [name, take](const std::string& text) {
            if (!take(text)) throw CLI::ValidationError(name, UnknownWord(text, WordsOf(name)));
          },
          help)
      ->type_name("");
}

/// Indexes, `least` to `most` of them.
void AddIndexes(CLI::App* app, Options& options, int least, int most,
                const std::string& help = "stored index of a channel");

/// UsageError that names what is missing.
void RequireGiven(bool given, const std::string& what);

/// Gives a parser all commands and options; what it parses goes to the options.
void FillParser(CLI::App& app, Options& options);

/// The commands of the catalogue, the satellites and the dishes.
void AddSatelliteCommands(CLI::App& app, Options& options);
/// UsageError when one of these commands lacks something.
void CompleteSatelliteOptions(const Options& options);

}  // namespace zortunedex::kit::tool

#include "tool/options/groups/batch_options.h"

#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>

#include "kit/files/whole_file.h"
#include "kit/text/command_words.h"
#include "kit/text/utf.h"
#include "tool/commands/commands.h"
#include "tool/options/groups/channel_options.h"
#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

namespace {

constexpr const char* kBatchHelp =
    "FILE, or standard input without one or with '-', has one command a line, without\n"
    "'tunedex' and the global options, which stand here and are those of every line:\n"
    "  tunedex --dir home --country 49 --signal DVBSatellite batch changes.txt\n"
    "  channels favor 3-9 12\n"
    "  channels edit --where 'networkName=ASTRA 1' --set lock=1\n"
    "Words are quoted as in a POSIX shell; nothing is expanded. Empty lines and those that\n"
    "begin with # are comments. The commands of channels, dishes and presets that change\n"
    "something are taken. All lines are read before the first one is carried out, each sees\n"
    "what those before it did, and nothing is saved unless all can be done.";

std::string ReadAll(std::istream& stream) {
  std::string text;
  char buffer[65536];
  while (stream.read(buffer, sizeof(buffer)), stream.gcount() > 0) {
    text.append(buffer, static_cast<std::size_t>(stream.gcount()));
  }
  if (stream.bad()) throw UsageError{"the batch cannot be read"};
  return text;
}

std::string ReadText(const std::string& name) {
  if (name.empty() || name == "-") return ReadAll(std::cin);
  std::ifstream file(whole_file::PathOf(name), std::ios::binary);
  if (!file) throw UsageError{"the batch " + name + " cannot be read"};
  return ReadAll(file);
}

/// Takes the first line off, without its end.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/// The words of a line, none for a comment.
std::vector<std::string> WordsOfLine(std::string_view line) {
  if (!utf::ToWide(line)) throw UsageError{"this is not UTF-8"};
  if (line.find('\0') != std::string_view::npos) throw UsageError{"this holds a zero byte"};
  const std::size_t first = line.find_first_not_of(" \t");
  if (first == std::string_view::npos || line[first] == '#') return {};
  std::optional<std::vector<std::string>> words = CommandWords(line);
  if (!words) throw UsageError{"a quotation has no end, or nothing stands behind a backslash"};
  return *std::move(words);
}

void RequireTaken(const Options& line) {
  if (!commands::IsOfBatch(line.command)) {
    throw UsageError{line.command + " is no command of a batch"};
  }
  if (line.command == "presets select" && !line.yes) {
    throw UsageError{"presets select cannot ask in a batch; --yes allows it"};
  }
}

}  // namespace

void AddBatchCommand(CLI::App& app, Options& options) {
  CLI::App* batch = app.add_subcommand("batch", "Carry out several commands, all or none");
  batch->add_option("FILE", options.batchFile, "commands; '-' or none: standard input")
      ->type_name("");
  batch->footer(kBatchHelp);
}

void CompleteBatchOptions(Options& options) {
  if (options.command != "batch") return;
  const std::string bytes = ReadText(options.batchFile);
  std::string_view text = bytes;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  CommandParser parser(options);
  for (std::size_t number = 1; !text.empty(); ++number) {
    try {
      std::vector<std::string> words = WordsOfLine(TakeLine(text));
      if (words.empty()) continue;
      Options line = parser.Parse(std::move(words));
      RequireTaken(line);
      line.line = number;
      options.batch.push_back(std::move(line));
    } catch (const InvalidArgument& error) {
      throw UsageError{"line " + std::to_string(number) + ": " + error.what()};
    }
  }
}

void CompleteBatchForSignal(Options& options) {
  for (Options& line : options.batch) {
    line.country = options.country;
    line.signal = options.signal;
    try {
      RequireFieldsOfSignal(line);
    } catch (const InvalidArgument& error) {
      throw UsageError{"line " + std::to_string(line.line) + ": " + error.what(), options.command};
    }
  }
}

}  // namespace zortunedex::kit::tool

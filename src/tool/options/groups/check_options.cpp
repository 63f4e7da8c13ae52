#include "tool/options/groups/check_options.h"

#include <algorithm>

namespace zortunedex::kit::tool {

namespace {

bool TakeLevel(const std::string& text, std::optional<check::Severity>& level) {
  for (const check::Severity severity :
       {check::Severity::Error, check::Severity::Warning, check::Severity::Note}) {
    if (text != check::NameOf(severity)) continue;
    level = level ? std::max(*level, severity) : severity;
    return true;
  }
  return false;
}

void AddRepairOption(CLI::App* repair, Options& options, check::Option option, const char* help) {
  repair->add_flag_function(
      check::NameOf(option), [&options, option](std::int64_t) { options.repairs.insert(option); },
      help);
}

}  // namespace

void AddCheckCommands(CLI::App& app, Options& options) {
  CLI::App* look = app.add_subcommand("check", "Say what is wrong with the files");
  look->add_option("--file", options.file, "this file alone")->type_name("NAME");
  const auto takeLevels = [&options](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
      if (!TakeLevel(text, options.level)) {
        throw CLI::ValidationError("--level", UnknownWord(text, WordsOf("--level")));
      }
    }
  };
  look->add_option_function<std::vector<std::string>>(
          "--level", takeLevels, "what to report: error, warning (default) or note; repeatable")
      ->type_name("")
      ->allow_extra_args(false);
  look->footer("Ends with status 3 when something is found at that level.");
  CLI::App* repair = app.add_subcommand("repair", "Mend what is wrong with the files");
  const auto takeCodes = [&options](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
      if (check::FindCode(text) == nullptr) {
        throw CLI::ValidationError("--code", "'" + text + "' is no code");
      }
      options.codes.insert(text);
    }
  };
  repair
      ->add_option_function<std::vector<std::string>>("--code", takeCodes,
                                                      "mend this alone; repeatable")
      ->type_name("ZTnnn")
      ->allow_extra_args(false);
  AddRepairOption(repair, options, check::Option::Renumber,
                  "number lists with gaps 1, 2, 3 in their order");
  AddRepairOption(repair, options, check::Option::FixUnits,
                  "bring frequencies and symbol rates to kHz and thousands");
  AddRepairOption(repair, options, check::Option::Restore,
                  "put channels of NAME.unreadable back into the file");
  AddRepairOption(repair, options, check::Option::DropDuplicates,
                  "keep one of each service: the favourite, else the first");
  AddRepairOption(repair, options, check::Option::ToUtf8, "convert files in another encoding");
  AddRepairOption(repair, options, check::Option::DropUnrepairable,
                  "leave out channels whose markup splits in several ways");
  repair->footer(
      "Ends with status 3 when something is left, and when a dry run would write something.");
}

}  // namespace zortunedex::kit::tool

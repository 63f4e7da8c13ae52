#include "tool/options/typing/completion.h"

#include <algorithm>
#include <map>

#include "tool/options/groups/option_helpers.h"
#include "tool/options/typing/command_tree.h"

namespace zortunedex::kit::tool {

namespace {

using command_tree::Place;
using Words = std::vector<std::string>;

/// What the tables of the script are made of.
struct Tables {
  std::string commands;   ///< places that a word leads to
  std::string words;      ///< by place, what may stand there
  std::string arguments;  ///< by option, what it takes
  std::string takers;     ///< options that take something
};

std::string Joined(const Words& words, const char* between) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
  return text;
}

/// "known=(a b)", or what asks for files or folders.
std::string Offer(const CLI::Option& option, const std::string& name) {
  const std::string type = option.get_type_name();
  if (type == "DIR" || name == "FOLDER") return "kind=folders";
  if (type == "FILE" || name == "FILE") return "kind=files";
  return "known=(" + Joined(WordsOf(name), " ") + ")";
}

Words NamesOf(const CLI::Option& option) {
  Words names;
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  return names;
}

/// The script's line for what follows an option, where something does.
void AddArgument(const CLI::Option& option, Tables& tables, Words& takers) {
  const Words names = NamesOf(option);
  if (option.get_items_expected_max() == 0 || names.empty()) return;
  if (std::find(takers.begin(), takers.end(), names.front()) != takers.end()) return;
  takers.insert(takers.end(), names.begin(), names.end());
  std::string offer = Offer(option, names.front());
  // The option of all commands, and that of lists.
  if (names.front() == "--format") {
    offer = "known=(" + Joined(WordsOf("--format"), " ") +
            ")\n"
            "      [[ $place == channels\\ *port || $place == channels\\ merge ||\n"
            "        $place == channels\\ diff ]] && known=(" +
            Joined(WordsOf(kListFormat), " ") + ")";
  }
  tables.arguments += "    " + Joined(names, "|") + ") " + offer + " ;;\n";
}

void AddPlaceTo(const Place& place, const Words& globals, Tables& tables) {
  const Words below = command_tree::Commands(*place.app);
  Words known = below;
  std::string more;
  for (const CLI::Option* option : place.app->get_options()) {
    if (!option->get_positional()) continue;
    const std::string offer = Offer(*option, option->get_name());
    const Words words = WordsOf(option->get_name());
    known.insert(known.end(), words.begin(), words.end());
    if (offer.starts_with("kind")) more = " " + offer;
  }
  Words options = command_tree::Options(*place.app);
  options.insert(options.end(), globals.begin(), globals.end());
  std::sort(options.begin(), options.end());
  options.erase(std::unique(options.begin(), options.end()), options.end());
  tables.words += "    \"" + place.name + "\") known=(" + Joined(known, " ") + ") flags=(" +
                  Joined(options, " ") + ")" + more + " ;;\n";
  if (!place.name.empty()) {
    tables.commands += (tables.commands.empty() ? "" : "|") + ("\"" + place.name + "\"");
  }
}

Tables MakeTables() {
  Options unused;
  CLI::App app("", "tunedex");
  FillParser(app, unused);
  Tables tables;
  Words takers;
  const Words globals = command_tree::Options(app);
  for (const Place& place : command_tree::All(app)) {
    AddPlaceTo(place, globals, tables);
    for (const CLI::Option* option : place.app->get_options()) {
      AddArgument(*option, tables, takers);
    }
  }
  tables.takers = Joined(takers, "|");
  return tables;
}

/// What both shells read alike: from the words in front of the present one to `known`, `flags`
/// and `kind`. `at` is the first word behind the program's name, `end` the present one.
std::string Common(const Tables& tables, const std::string& at, const std::string& end,
                   const std::string& words) {
  return "  local place= skip= kind= before= i one\n"
         "  local -a known flags\n"
         "  for ((i = " +
         at + "; i < " + end +
         "; ++i)); do\n"
         "    one=${" +
         words +
         "[i]}\n"
         "    before=$one\n"
         "    if [[ -n $skip ]]; then skip= before=; continue; fi\n"
         "    case $one in\n"
         "    " +
         tables.takers +
         ") skip=1; continue ;;\n"
         "    -*) continue ;;\n"
         "    esac\n"
         "    one=\"${place:+$place }$one\"\n"
         "    case $one in\n"
         "    " +
         tables.commands +
         ") place=$one ;;\n"
         "    esac\n"
         "  done\n"
         "  case $place in\n" +
         tables.words +
         "  esac\n"
         "  if [[ -n $skip ]]; then\n"
         "    known=() flags=() kind=\n"
         "    case $before in\n" +
         tables.arguments +
         "    esac\n"
         "  fi\n";
}

std::string BashScript(const Tables& tables) {
  return "# Completes command lines of tunedex in bash. Printed by 'tunedex completion bash'.\n"
         "_tunedex() {\n" +
         Common(tables, "1", "COMP_CWORD", "COMP_WORDS") +
         "  local word=${COMP_WORDS[COMP_CWORD]}\n"
         "  [[ $word == -* ]] && known=(\"${flags[@]}\")\n"
         "  COMPREPLY=($(compgen -W \"${known[*]}\" -- \"$word\"))\n"
         "  [[ $kind == files ]] && COMPREPLY+=($(compgen -f -- \"$word\"))\n"
         "  [[ $kind == folders ]] && COMPREPLY+=($(compgen -d -- \"$word\"))\n"
         "  return 0\n"
         "}\n"
         "complete -o filenames -F _tunedex tunedex\n";
}

std::string ZshScript(const Tables& tables) {
  return "#compdef tunedex\n"
         "# Completes command lines of tunedex in zsh. Printed by 'tunedex completion zsh'.\n"
         "_tunedex() {\n" +
         Common(tables, "2", "CURRENT", "words") +
         "  [[ ${words[CURRENT]} == -* ]] && known=(\"${flags[@]}\")\n"
         "  compadd -- \"${known[@]}\"\n"
         "  [[ $kind == files ]] && _files\n"
         "  [[ $kind == folders ]] && _files -/\n"
         "  return 0\n"
         "}\n"
         "_tunedex \"$@\"\n";
}

}  // namespace

std::string CompletionScript(const std::string& shell) {
  const Tables tables = MakeTables();
  return shell == "zsh" ? ZshScript(tables) : BashScript(tables);
}

}  // namespace zortunedex::kit::tool

#include "tool/options/typing/typing_errors.h"

#include <algorithm>

#include "kit/text/nearest.h"
#include "tool/options/typing/command_tree.h"

namespace zortunedex::kit::tool {

namespace {

using command_tree::Place;
using Words = std::vector<std::string>;

std::string WithKnown(std::string text, const std::string& word, const Words& known) {
  const std::optional<std::string> nearest = Nearest(word, known);
  if (nearest) text += "; the nearest is " + *nearest;
  return text + "; known are " + Listed(known);
}

UsageError UnknownOption(const CLI::App& app, const Place& place, const std::string& word) {
  const std::string option = word.substr(0, word.find('='));
  Words known = command_tree::Options(*place.app);
  for (const std::string& name : command_tree::Options(app)) {
    if (std::find(known.begin(), known.end(), name) == known.end()) known.push_back(name);
  }
  const std::string text = place.name.empty() ? "there is no option '" + option + "'"
                                              : place.name + " has no option '" + option + "'";
  return {WithKnown(text, option, known), place.name};
}

UsageError UnknownWordAt(const Place& place, const std::string& word) {
  const Words known = command_tree::Commands(*place.app);
  if (known.empty()) return {place.name + " does not take '" + word + "'", place.name};
  const std::string command = place.name.empty() ? word : place.name + " " + word;
  return {WithKnown("there is no command '" + command + "'", word, known), place.name};
}

}  // namespace

UsageError ExplainTyping(const CLI::App& app, const CLI::ParseError& error) {
  const Place place = command_tree::Deepest(app);
  const bool isIncomplete = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
  const bool hasExtras = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
  const Words unknown = app.remaining(true);
  if ((isIncomplete || hasExtras) && !unknown.empty()) {
    const std::string& word = unknown.front();
    return word.starts_with('-') && word != "-" ? UnknownOption(app, place, word)
                                                : UnknownWordAt(place, word);
  }
  const Words commands = command_tree::Commands(*place.app);
  if (isIncomplete && !commands.empty()) {
    const std::string behind = place.name.empty() ? "" : " behind '" + place.name + "'";
    return {"a command is missing" + behind + "; known are " + Listed(commands), place.name};
  }
  return {error.what(), place.name};
}

}  // namespace zortunedex::kit::tool

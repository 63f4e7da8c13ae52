// What the parser knows of its commands and options, for messages, completion and tests.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace zortunedex::kit::tool::command_tree {

/// The command that the words so far lead to; `name` is "channels list", empty for none.
struct Place {
  const CLI::App* app;
  std::string name;
};

/// Where parsing came to.
Place Deepest(const CLI::App& app);
/// Every command and group of commands, the whole first, each in front of what is below it.
std::vector<Place> All(const CLI::App& app);

/// Names of the commands directly below one.
std::vector<std::string> Commands(const CLI::App& app);
/// Long and short names of its own options, with their dashes.
std::vector<std::string> Options(const CLI::App& app);

}  // namespace zortunedex::kit::tool::command_tree

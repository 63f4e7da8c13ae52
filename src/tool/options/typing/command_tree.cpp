#include "tool/options/typing/command_tree.h"

namespace zortunedex::kit::tool::command_tree {
namespace {

std::string Join(const std::string& name, const std::string& word) {
  return name.empty() ? word : name + " " + word;
}

std::vector<const CLI::App*> Below(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

void AddAll(const Place& place, std::vector<Place>& all) {
  all.push_back(place);
  for (const CLI::App* below : Below(*place.app)) {
    AddAll({below, Join(place.name, below->get_name())}, all);
  }
}

}  // namespace

Place Deepest(const CLI::App& app) {
  Place place = {&app, {}};
  while (!place.app->get_subcommands().empty()) {
    place.app = place.app->get_subcommands().front();
    place.name = Join(place.name, place.app->get_name());
  }
  return place;
}

std::vector<Place> All(const CLI::App& app) {
  std::vector<Place> all;
  AddAll({&app, {}}, all);
  return all;
}

std::vector<std::string> Commands(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* below : Below(app)) names.push_back(below->get_name());
  return names;
}

std::vector<std::string> Options(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    for (const std::string& name : option->get_snames()) names.push_back("-" + name);
  }
  return names;
}

}  // namespace zortunedex::kit::tool::command_tree

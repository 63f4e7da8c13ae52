#include "kit/text/satellite_words.h"
#include "tool/options/groups/option_helpers.h"
#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

namespace {

constexpr const char* kAssignHelp =
    "SATELLITE is an id or a name of the catalogue. The oscillators and the switch frequency are\n"
    "those of an LNB type of the catalogue (--lnb), or given in kHz (--low; --high is the same\n"
    "unless given, --switch is 0). A satellite that the dish has in that band already is changed.";

/// A satellite by id or name.
void AddSatellite(CLI::App* app, Options& options) {
  app->add_option("SATELLITE", options.satellite, "id or name")->type_name("")->required();
}

CLI::Option* AddBand(CLI::App* app, Options& options) {
  return AddWord(app, "--band", "c or ku", [&options](const std::string& text) {
    options.band = ParseBand(text);
    return options.band.has_value();
  });
}

void AddDish(CLI::App* app, Options& options) {
  const auto take = [&options](const std::string& text) {
    const std::optional<std::int64_t> dish = ParseNumber(text, 1, 4);
    if (!dish) throw CLI::ValidationError("DISH", "'" + text + "' is not 1, 2, 3 or 4");
    options.dish = static_cast<UINT>(*dish);
  };
  app->add_option_function<std::string>("DISH", take, "1 to 4")->type_name("")->required();
}

void AddCatalogue(CLI::App& app, Options& options) {
  CLI::App* catalogue = app.add_subcommand("catalogue", "Make a catalogue of satellites");
  catalogue->require_subcommand(1);
  CLI::App* build =
      catalogue->add_subcommand("build", "Make a SatelliteInfo.xml of a folder of tables");
  build->add_option("FOLDER", options.folder, "transponder tables, one file for a satellite")
      ->type_name("")
      ->required();
  build->add_option("-o,--output", options.output, "file to be made")
      ->type_name("FILE")
      ->required();
  build->add_flag("--force", options.force, "replace the file when it is there");
}

void AddSatellites(CLI::App& app, Options& options) {
  CLI::App* satellites = app.add_subcommand("satellites", "Read the catalogue of satellites");
  satellites->require_subcommand(1);
  CLI::App* list = satellites->add_subcommand("list", "List the satellites");
  AddWord(list, "--region", "asia, europe, atlantic, america or unknown",
          [&options](const std::string& text) {
            options.region = ParseRegion(text);
            return options.region.has_value();
          });
  AddWord(list, "--division", "1 to 9; 0: unknown", [&options](const std::string& text) {
    const std::optional<std::int64_t> number = ParseNumber(text, SatcoDX_Unknown, SatcoDX_9);
    if (number) options.division = static_cast<ESatDivision>(*number);
    return number.has_value();
  });
  AddSatellite(satellites->add_subcommand("show", "Show a satellite"), options);
  CLI::App* transponders = app.add_subcommand("transponders", "Read a satellite's transponders");
  transponders->require_subcommand(1);
  CLI::App* ofSatellite = transponders->add_subcommand("list", "List the transponders");
  AddSatellite(ofSatellite, options);
  AddBand(ofSatellite, options);
  CLI::App* lnbs = app.add_subcommand("lnbs", "Read the LNB types");
  lnbs->require_subcommand(1);
  lnbs->add_subcommand("list", "List the LNB types");
}

void AddDishes(CLI::App& app, Options& options) {
  CLI::App* dishes = app.add_subcommand("dishes", "Read and change what the dishes receive");
  dishes->require_subcommand(1);
  dishes->add_subcommand("list", "List the satellites of the dishes");
  CLI::App* assign = dishes->add_subcommand("assign", "Assign a satellite to a dish");
  AddDish(assign, options);
  AddSatellite(assign, options);
  AddBand(assign, options)->required();
  assign->add_option("--lnb", options.lnb, "LNB type of the catalogue")->type_name("TYPE");
  AddNumber(assign, "--low", options.lowFrequency, "low oscillator");
  AddNumber(assign, "--high", options.highFrequency, "high oscillator");
  AddNumber(assign, "--switch", options.switchFrequency, "from here on the high oscillator");
  assign->footer(kAssignHelp);
  CLI::App* remove = dishes->add_subcommand("remove", "Remove a satellite from a dish");
  AddDish(remove, options);
  AddIndexes(remove, options, 1, 1, "place on the dish, counted from 1");
  dishes->add_subcommand("clear", "Remove all satellites from all dishes");
}

}  // namespace

void AddSatelliteCommands(CLI::App& app, Options& options) {
  AddCatalogue(app, options);
  AddSatellites(app, options);
  AddDishes(app, options);
}

void CompleteSatelliteOptions(const Options& options) {
  if (options.command != "dishes assign") return;
  if (options.lnb.has_value() == options.lowFrequency.has_value()) {
    throw UsageError{"dishes assign takes either --lnb or --low"};
  }
  if (options.lnb && (options.highFrequency || options.switchFrequency)) {
    throw UsageError{"--high and --switch go with --low"};
  }
}

}  // namespace zortunedex::kit::tool

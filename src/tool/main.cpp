// tunedex: the command-line host. Exit status 0; 1 when an operation failed; 2 for wrong usage.
#include <exception>
#include <iostream>

#include "kit/failure.h"
#include "platform/com_error.h"
#include "platform/host.h"
#include "tool/commands/commands.h"
#include "tool/printing/output.h"

namespace {

struct Command {
  const char* name;
  void (*run)(const Options& options);
};

constexpr Command kCommands[] = {
    {"channels list", commands::ListChannels},
    {"channels show", commands::ShowChannel},
    {"channels next", commands::NextChannel},
    {"channels previous", commands::PreviousChannel},
    {"channels find", commands::FindChannel},
    {"channels add", commands::AddChannel},
    {"channels set", commands::SetChannel},
    {"channels remove", commands::RemoveChannels},
    {"channels rename", commands::RenameChannel},
    {"channels favor", commands::FavorChannel},
    {"channels lock", commands::LockChannel},
    {"channels move", commands::MoveChannel},
    {"channels sort", commands::SortChannels},
    {"catalogue build", commands::BuildCatalogue},
    {"satellites list", commands::ListSatellites},
    {"satellites show", commands::ShowSatellite},
    {"transponders list", commands::ListTransponders},
    {"lnbs list", commands::ListLnbs},
    {"dishes list", commands::ListDishes},
    {"dishes assign", commands::AssignSatellite},
    {"dishes remove", commands::RemoveAssignment},
    {"dishes clear", commands::ClearDishes},
    {"presets areas", commands::ListAreas},
    {"presets subareas", commands::ListSubAreas},
    {"presets list", commands::ListPresetChannels},
    {"presets select", commands::SelectPreset},
    {"presets current", commands::ShowSelectedPreset},
    {"presets save", commands::SaveCustomerList},
    {"presets delete", commands::DeleteCustomerList},
    {"info", commands::ShowInfo},
    {"format", commands::FormatFile},
    {"countries", commands::ListCountries},
};

void SetCodePage(const Options& options) {
  if (!options.codePage) return;
  const HRESULT hr = host::SetCodePage(*options.codePage);
  Require(hr, hr == E_NOTIMPL
                  ? "--codepage is not supported here: texts are in the system's code page"
                  : "code page " + std::to_string(*options.codePage) + " cannot be had");
}

void RunCommand(const Options& options) {
  SetCodePage(options);
  for (const Command& command : kCommands) {
    if (options.command == command.name) command.run(options);
  }
  FinishOutput();
}

int Fail(const std::string& command, HRESULT hr, const std::string& message) {
  std::cerr << "tunedex: " << command << ": " << ResultText(hr) << ": " << Printable(message)
            << '\n';
  return 1;
}

int FailUnread(const Options& options, const UnreadableFile& failure) {
  const int status = Fail(options.command, failure.Result(), failure.what());
  std::cerr << "Try 'tunedex --dir " << Printable(options.directory) << " repair'.\n";
  return status;
}

int Run(const std::vector<std::string>& arguments) {
  std::string command = "tunedex";
  std::optional<Options> options;
  try {
    options = ParseOptions(arguments);
    if (!options) return 0;
    command = options->command;
    RunCommand(*options);
    return 0;
  } catch (const InvalidArgument& error) {
    std::cerr << "tunedex: " << Printable(error.what()) << "\nTry 'tunedex --help'.\n";
    return 2;
  } catch (const UnreadableFile& failure) {
    return FailUnread(*options, failure);
  } catch (const Failure& failure) {
    return Fail(command, failure.Result(), failure.what());
  } catch (const ComError& error) {
    return Fail(command, error.Error(), "no memory is left");
  } catch (const std::bad_alloc&) {
    return Fail(command, E_OUTOFMEMORY, "no memory is left");
  } catch (const std::exception& error) {
    return Fail(command, E_UNEXPECTED, error.what());
  }
}

}  // namespace

int main(int argc, char** argv) {
  host::Prepare();
  return Run(host::Arguments(argc, argv));
}

// tunedex: the command-line host. Exit status 0; 1 when an operation failed; 2 for wrong usage; 3
// when it is done and something should be looked at.
#include <exception>
#include <iostream>

#include "kit/failure.h"
#include "kit/history/directory_lock.h"
#include "platform/com_error.h"
#include "platform/host.h"
#include "tool/commands/commands.h"
#include "tool/commands/running/change.h"
#include "tool/commands/running/directory_state.h"
#include "tool/commands/running/exit_status.h"
#include "tool/options/location.h"
#include "tool/options/usage_error.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {
namespace {

/// What a command does to the files of the directory.
enum class Does {
  Read,
  Change,        ///< it is run on a copy of them
  ChangeByPlan,  ///< the same; what it prints says what would change
  Restore,       ///< it makes the change itself: among those that were recorded, or a repair
  Make,          ///< it leaves them alone and makes another
};

struct Command {
  const char* name;
  void (*run)(const Options& options);
  Does does = Does::Read;
};

constexpr Command kCommands[] = {
    {"channels list", commands::ListChannels},
    {"channels show", commands::ShowChannel},
    {"channels next", commands::NextChannel},
    {"channels previous", commands::PreviousChannel},
    {"channels find", commands::FindChannel},
    {"channels add", commands::AddChannel, Does::Change},
    {"channels set", commands::SetChannel, Does::Change},
    {"channels edit", commands::EditChannels, Does::Change},
    {"channels remove", commands::RemoveChannels, Does::Change},
    {"channels rename", commands::RenameChannel, Does::Change},
    {"channels favor", commands::FavorChannel, Does::Change},
    {"channels lock", commands::LockChannel, Does::Change},
    {"channels move", commands::MoveChannel, Does::Change},
    {"channels sort", commands::SortChannels, Does::Change},
    {"channels export", commands::ExportChannels, Does::Make},
    {"channels import", commands::ImportChannels, Does::Change},
    {"channels merge", commands::MergeChannels, Does::ChangeByPlan},
    {"channels diff", commands::CompareChannels},
    {"catalogue build", commands::BuildCatalogue, Does::Make},
    {"satellites list", commands::ListSatellites},
    {"satellites show", commands::ShowSatellite},
    {"transponders list", commands::ListTransponders},
    {"lnbs list", commands::ListLnbs},
    {"dishes list", commands::ListDishes},
    {"dishes assign", commands::AssignSatellite, Does::Change},
    {"dishes remove", commands::RemoveAssignment, Does::Change},
    {"dishes clear", commands::ClearDishes, Does::Change},
    {"presets areas", commands::ListAreas},
    {"presets subareas", commands::ListSubAreas},
    {"presets list", commands::ListPresetChannels},
    {"presets select", commands::SelectPreset, Does::Change},
    {"presets current", commands::ShowSelectedPreset},
    {"presets save", commands::SaveCustomerList, Does::Change},
    {"presets delete", commands::DeleteCustomerList, Does::Change},
    {"batch", commands::RunBatch, Does::Change},
    {"check", commands::CheckFiles},
    {"repair", commands::RepairFiles, Does::Restore},
    {"info", commands::ShowInfo},
    {"format", commands::FormatFile, Does::Change},
    {"countries", commands::ListCountries},
    {"undo", commands::UndoChange, Does::Restore},
    {"redo", commands::RedoChange, Does::Restore},
    {"history list", commands::ListHistory},
    {"history show", commands::ShowSnapshot},
    {"history diff", commands::CompareSnapshots},
    {"history restore", commands::RestoreSnapshot, Does::Restore},
    {"history prune", commands::PruneHistory, Does::Restore},
    {"completion", commands::PrintCompletion},
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
    if (options.command != command.name) continue;
    if (options.dryRun && command.does == Does::Read) {
      throw UsageError{"--dry-run: " + options.command + " changes nothing"};
    }
    switch (command.does) {
      case Does::Change:
        commands::RunChange(options, command.run, commands::Trial::Differences);
        break;
      case Does::ChangeByPlan:
        commands::RunChange(options, command.run, commands::Trial::OwnOutput);
        break;
      case Does::Read:
      case Does::Restore:
      case Does::Make:
        command.run(options);
        break;
    }
  }
  FinishOutput();
}

int Fail(const std::string& command, HRESULT hr, const std::string& message) {
  std::cerr << "tunedex: " << command << ": " << ResultText(hr) << ": " << Printable(message)
            << '\n';
  return 1;
}

/// The command's help tells more; no command: that of all.
int Refuse(const std::string& command, const std::string& message) {
  std::cerr << "tunedex: " << Printable(message) << "\nTry 'tunedex " << command
            << (command.empty() ? "" : " ") << "--help'.\n";
  return 2;
}

int FailUnread(const Options& options, const UnreadableFile& failure) {
  const int status = Fail(options.command, failure.Result(), failure.what());
  std::cerr << "Try 'tunedex --dir " << Printable(options.directory) << " repair'.\n";
  return status;
}

/// The command may have come further than its message says.
int FailLate(const Options& options, const DirectoryState& before, HRESULT hr,
             const std::string& message) {
  return Fail(options.command, hr,
              before.HasChanged() ? message + "; the change was made" : message);
}

int RunGuarded(const Options& options) {
  const DirectoryState before(options);
  try {
    RunCommand(options);
    return commands::ExitStatus();
  } catch (const UnreadableFile& failure) {
    return FailUnread(options, failure);
  } catch (const history::DirectoryBusy& failure) {
    return Fail(options.command, failure.Result(),
                std::string(failure.what()) + ", --wait SECONDS waits longer");
  } catch (const UnwrittenOutput& failure) {
    return FailLate(options, before, failure.Result(), failure.what());
  } catch (const Failure& failure) {
    return Fail(options.command, failure.Result(), failure.what());
  } catch (const InvalidArgument& error) {
    return Refuse(options.command, error.what());
  } catch (const ComError& error) {
    return FailLate(options, before, error.Error(), "no memory is left");
  } catch (const std::bad_alloc&) {
    return FailLate(options, before, E_OUTOFMEMORY, "no memory is left");
  }
}

int Run(const std::vector<std::string>& arguments) {
  std::optional<Options> options;
  try {
    options = ParseOptions(arguments);
    if (!options) return 0;
    // What the command line alone can tell comes before the directory is looked at.
    const bool isKnown = options->country && options->signal;
    if (isKnown) CompleteForSignal(*options);
    CompleteLocation(*options);
    if (!isKnown) CompleteForSignal(*options);
    return RunGuarded(*options);
  } catch (const UnreadableFile& failure) {
    return FailUnread(*options, failure);
  } catch (const UsageError& error) {
    return Refuse(error.command, error.what());
  } catch (const InvalidArgument& error) {
    return Refuse(options ? options->command : "", error.what());
  } catch (const std::bad_alloc&) {
    return Fail("tunedex", E_OUTOFMEMORY, "no memory is left");
  } catch (const std::exception& error) {
    return Fail(options ? options->command : "tunedex", E_UNEXPECTED, error.what());
  }
}

}  // namespace
}  // namespace zortunedex::kit::tool

int main(int argc, char** argv) {
  host::Prepare();
  return zortunedex::kit::tool::Run(host::Arguments(argc, argv));
}

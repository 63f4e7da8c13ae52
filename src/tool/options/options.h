// The command line.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/interfaces.h"
#include "kit/check/findings/codes.h"
#include "kit/model/field_setter.h"
#include "kit/reading/readable.h"
#include "kit/selection/channel_filter.h"
#include "tool/options/exchange.h"
#include "tool/options/merging.h"

namespace zortunedex::kit::tool {

/// Which of the two names `channels rename` changes.
enum class RenameTarget { Both, NameOnly, DisplayOnly };

struct Options {
  std::string command;  ///< "channels show"

  std::string directory;
  std::string directorySource = "--dir";  ///< what named it
  std::optional<DWORD> country;
  std::optional<InputSignalType> signal;
  std::optional<UINT> codePage;
  std::optional<EStorageType> format;
  bool json = false;
  Unreadable unreadable = Unreadable::Refuse;
  bool dryRun = false;     ///< tell what would change, and write nothing
  bool noHistory = false;  ///< leave the history as it is
  UINT wait = 10;          ///< seconds for others that change the directory
  std::string typed;       ///< the command as it was typed, without what stands for all commands

  ChannelFilter filter;              ///< channels that are meant
  std::vector<std::string> columns;  ///< of the list; the usual ones where there are none
  std::vector<UINT> indexes;         ///< single places, in the order they were given
  std::vector<Assignment> assignments;
  std::string name;
  RenameTarget renameTarget = RenameTarget::Both;
  UINT mark = 1;  ///< favourite or lock value
  ESortType sort = SortNone;
  bool descending = false;
  DWORD services = static_cast<DWORD>(ServiceAll);
  bool favoritesOnly = false;
  bool loop = false;
  std::optional<UINT> number;  ///< channel number to find
  std::optional<UINT> like;    ///< index of the channel to find the like of
  std::optional<EStorageType> rewriteAs;
  std::optional<DWORD> countryRow;

  std::string folder;  ///< of transponder tables
  std::string output;  ///< file to be made
  bool force = false;
  std::optional<ESatRegion> region;
  std::optional<ESatDivision> division;
  std::string satellite;  ///< id or name
  std::optional<ESatFreqBand> band;
  UINT dish = 0;  ///< 1 to 4
  std::optional<std::string> lnb;
  std::optional<DWORD> lowFrequency;
  std::optional<DWORD> highFrequency;
  std::optional<DWORD> switchFrequency;
  std::vector<LONG> places;  ///< an area and a sub-area, or a customer list
  std::string shell;         ///< to complete command lines in
  bool yes = false;          ///< replace without asking

  std::vector<UINT> snapshots;
  std::string file;          ///< that is to be restored, or checked
  std::optional<UINT> keep;  ///< how many snapshots

  std::optional<check::Severity> level;
  std::set<std::string, std::less<>> codes;  ///< to be repaired; empty: all
  std::set<check::Option> repairs;           ///< beyond the default

  ExchangeOptions exchange;
  MergingOptions merging;

  std::string batchFile;       ///< empty or "-": standard input
  std::vector<Options> batch;  ///< its commands
  std::size_t line = 0;        ///< of a batch, in which this command stands; counted from 1
};

/// Parses commands without the program's name and the global options, which are taken over.
class CommandParser {
 public:
  explicit CommandParser(const Options& globals);
  CommandParser(const CommandParser&) = delete;
  CommandParser& operator=(const CommandParser&) = delete;
  ~CommandParser();

  /// InvalidArgument for what is no command.
  Options Parse(std::vector<std::string> words);

 private:
  struct Parts;
  std::unique_ptr<Parts> m_parts;
};

/// Nothing when help or the version was asked for and printed. Raises UsageError.
std::optional<Options> ParseOptions(std::vector<std::string> arguments);

/// Looks at what is told apart by the signal type, once it is known: the fields that are named, and
/// the lines of a batch. Raises UsageError.
void CompleteForSignal(Options& options);

}  // namespace zortunedex::kit::tool

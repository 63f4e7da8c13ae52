// The command line.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/interfaces.h"
#include "kit/check/codes.h"
#include "kit/model/field_setter.h"

/// Which of the two names `channels rename` changes.
enum class RenameTarget { Both, NameOnly, DisplayOnly };

struct Options {
  std::string command;  ///< "channels show"

  std::string directory;
  std::optional<DWORD> country;
  std::optional<InputSignalType> signal;
  std::optional<UINT> codePage;
  std::optional<EStorageType> format;
  bool json = false;
  bool dryRun = false;     ///< tell what would change, and write nothing
  bool noHistory = false;  ///< leave the history as it is
  UINT wait = 10;          ///< seconds for others that change the directory
  std::string typed;       ///< the command as it was typed, without what stands for all commands

  std::vector<UINT> indexes;  ///< channels, in the order they were given
  std::vector<Assignment> assignments;
  std::string name;
  RenameTarget renameTarget = RenameTarget::Both;
  std::optional<UINT> mark;  ///< favourite or lock value
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
  bool yes = false;          ///< replace without asking

  std::vector<UINT> snapshots;
  std::string file;          ///< that is to be restored, or checked
  std::optional<UINT> keep;  ///< how many snapshots

  std::optional<check::Severity> level;
  std::set<std::string, std::less<>> codes;  ///< to be repaired; empty: all
  std::set<check::Option> repairs;           ///< beyond the default
};

/// Nothing when help or the version was asked for and printed. Raises UsageError.
std::optional<Options> ParseOptions(std::vector<std::string> arguments);

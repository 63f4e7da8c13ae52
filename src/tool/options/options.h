// The command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/interfaces.h"
#include "kit/model/field_setter.h"
#include "kit/reading/readable.h"

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
  std::string shell;         ///< to complete command lines in
  bool yes = false;          ///< replace without asking
};

/// Nothing when help or the version was asked for and printed. Raises UsageError.
std::optional<Options> ParseOptions(std::vector<std::string> arguments);

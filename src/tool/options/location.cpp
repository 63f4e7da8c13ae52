#include "tool/options/location.h"

#include <algorithm>
#include <filesystem>

#include "kit/files/file_scan.h"
#include "kit/files/whole_file.h"
#include "kit/text/ascii.h"
#include "kit/text/signal_types.h"
#include "platform/host.h"
#include "tool/options/needs.h"
#include "tool/options/typing/country_names.h"
#include "tool/options/typing/words.h"
#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

namespace fs = std::filesystem;

namespace {

/// Channel sets that a message lists before it says how many more there are.
constexpr std::size_t kMostSets = 20;

void RequireFolder(const Options& options) {
  std::error_code error;
  const fs::file_status status = fs::status(whole_file::PathOf(options.directory), error);
  if (fs::is_directory(status)) return;
  const std::string what = fs::exists(status) ? "is no folder"
                           : status.type() == fs::file_type::not_found
                               ? "is not there"
                               : "cannot be looked at: " + error.message();
  throw UsageError{options.directorySource + ": " + options.directory + " " + what,
                   options.command};
}

/// What the file holds; nothing where its encoding keeps that from being looked up.
std::optional<file_scan::Contents> ContentsOf(const Options& options) {
  if (options.unreadable == Unreadable::Refuse) {
    RequireReadable(options.directory, "ChanInfo.xml");
  }
  try {
    return file_scan::Scan(options.directory);
  } catch (const Failure&) {
    return std::nullopt;
  }
}

void RequireCountry(const Options& options) {
  if (!options.country || IsInCountryTable(*options.country)) return;
  const std::optional<file_scan::Contents> contents = ContentsOf(options);
  if (!contents) return;
  for (const file_scan::Country& country : contents->countries) {
    if (country.code == *options.country) return;
  }
  throw UsageError{"no country has the code " + std::to_string(*options.country) +
                       ", neither in the table ('tunedex countries') nor in ChanInfo.xml",
                   options.command};
}

/// The sets that the options given so far allow, each once.
std::vector<file_scan::ChannelSet> FittingSets(const file_scan::Contents& contents,
                                               const Options& options) {
  std::vector<file_scan::ChannelSet> fitting;
  for (const file_scan::ChannelSet& set : contents.sets) {
    if (options.country && *options.country != set.country) continue;
    if (options.signal && *options.signal != set.signal) continue;
    const bool isNew = std::none_of(fitting.begin(), fitting.end(), [&](const auto& other) {
      return other.country == set.country && other.signal == set.signal;
    });
    if (isNew) fitting.push_back(set);
  }
  return fitting;
}

std::string SetsText(const std::vector<file_scan::ChannelSet>& sets) {
  if (sets.empty()) return "ChanInfo.xml has no set of channels that fits";
  std::string text = "ChanInfo.xml has ";
  for (std::size_t i = 0; i < sets.size() && i < kMostSets; ++i) {
    text += (i == 0 ? "" : ", ") + std::to_string(sets[i].country) + " " +
            SignalTypeName(sets[i].signal);
  }
  if (sets.size() > kMostSets) text += " and " + std::to_string(sets.size() - kMostSets) + " more";
  return text;
}

void TakeOnlySet(Options& options, bool isRequired) {
  if (options.country && options.signal) return;
  const std::optional<file_scan::Contents> contents = ContentsOf(options);
  const std::vector<file_scan::ChannelSet> sets =
      contents ? FittingSets(*contents, options) : std::vector<file_scan::ChannelSet>();
  if (sets.size() == 1) {
    options.country = sets.front().country;
    options.signal = sets.front().signal;
    return;
  }
  if (!isRequired) return;
  const std::string missing = options.country  ? "--signal is required"
                              : options.signal ? "--country is required"
                                               : "--country and --signal are required";
  throw UsageError{
      missing + ": " +
          (contents ? SetsText(sets) : "ChanInfo.xml is in an encoding that is not looked through"),
      options.command};
}

std::optional<std::string> Variable(const char* name) {
  const std::optional<std::string> value = host::Environment(name);
  return value && value->empty() ? std::nullopt : value;
}

}  // namespace

void TakeEnvironment(Options& options) {
  const Needs needs = NeedsOf(options.command);
  if (options.directory.empty() && needs.directory != Need::No) {
    options.directory = Variable("TUNEDEX_DIR").value_or("");
    options.directorySource = "TUNEDEX_DIR";
  }
  if (!options.country && needs.country != Need::No) {
    if (const auto text = Variable("TUNEDEX_COUNTRY")) {
      options.country = ParseCountry(*text);
      if (!options.country) {
        throw UsageError{"TUNEDEX_COUNTRY: " + UnknownCountry(*text), options.command};
      }
    }
  }
  if (!options.signal && needs.signal != Need::No) {
    if (const auto text = Variable("TUNEDEX_SIGNAL")) {
      options.signal = ParseSignalType(*text);
      if (!options.signal) {
        throw UsageError{"TUNEDEX_SIGNAL: " + UnknownWord(*text, WordsOf("--signal")),
                         options.command};
      }
    }
  }
}

void CompleteLocation(Options& options) {
  const Needs needs = NeedsOf(options.command);
  if (needs.directory == Need::No) return;
  RequireFolder(options);
  if (needs.country != Need::No) RequireCountry(options);
  if (needs.signal != Need::No) TakeOnlySet(options, needs.signal == Need::Required);
}

Location LocationOf(const Options& options) {
  return {options.directory, *options.country, *options.signal};
}

Location SatelliteLocation(const Options& options) {
  return {options.directory, options.country.value_or(1), InputSignalDVBSatellite};
}

}  // namespace zortunedex::kit::tool

// What a format of other programs is for who exports and imports.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "kit/interchange/loss.h"
#include "kit/interchange/service.h"
#include "kit/model/channel_table.h"
#include "kit/model/database.h"
#include "kit/model/narrow_text.h"

namespace zortunedex::kit::interchange {

/// Which of a channel's two names goes out.
enum class Names {
  Shown,      ///< the name that the user gave, where there is one
  Broadcast,  ///< always that of the broadcaster
};

/// A satellite that a dish receives. Tenths of a degree, negative in the west.
struct DishPosition {
  std::uint32_t dish = 0;  ///< 1 to 4
  std::int32_t position = 0;
};

/// What both directions know of the list.
struct ListContext {
  DWORD country = 0;
  InputSignalType signal = InputSignalUnknown;
  const Database& database;  ///< makes records to try things on; its lists are left alone
  const NarrowText& narrow;
  std::optional<UINT> codePage = {};      ///< of the list's texts; nothing: the system's
  std::vector<DishPosition> dishes = {};  ///< as the settings and the catalogue have them
};

/// What is to be written. What the references name has to stay.
struct ExportRequest {
  const ListContext& context;
  const std::vector<Channel>& channels;  ///< that go out, in the order of the list
  Names names = Names::Shown;
  std::vector<Tuning> tuning = {};  ///< transponders whose values fill what the list lacks
  std::uint32_t bandwidth = 0;      ///< MHz; 0: by country and frequency
  bool mark = true;                 ///< a byte order mark, where the format has one
  std::string urlTemplate = {};     ///< of players
  std::string satipHost = {};       ///< of players; empty: the template
};

/// What a writer makes: one file, or those of a folder.
struct OutputFile {
  std::string name;  ///< in the folder; empty for a single file
  std::string bytes;
};
/// Everything that was written.
struct Output {
  std::vector<OutputFile> files;
  std::vector<std::size_t> written;  ///< places in ExportRequest::channels, in the file's order

  /// Of a single file.
  std::string& Bytes() {
    if (files.empty()) files.emplace_back();
    return files.front().bytes;
  }
};

/// What a reader is given: the bytes of a file or, for a folder, a way to its files.
struct Input {
  std::string bytes;  ///< of a single file
  bool isFolder = false;
  std::vector<std::string> names = {};  ///< of the files in the folder, in order
  /// Bytes of such a file; nothing when there is none.
  std::function<std::optional<std::string>(const std::string& name)> read = {};
};

/// How a file is to be read. What the references name has to stay.
struct ImportRequest {
  const ListContext& context;
  const std::vector<Channel>& current;        ///< the list as it is
  std::optional<std::int32_t> position = {};  ///< tenths of a degree, negative in the west
  /// More channels than any receiver knows; what they take of memory may be a thousand times their
  /// file.
  std::size_t mostChannels = 200'000;
};

/// A channel that was read, and where.
struct ImportedChannel {
  Channel channel;       ///< index 0: the place in the file says it all
  std::size_t line = 0;  ///< counted from 1; 0: the format has no lines
};
/// The channels of a file.
struct ImportResult {
  std::vector<ImportedChannel> channels;  ///< in the order of the list that they make
  std::size_t read = 0;                   ///< channels that stand in the file, also those left out
  bool isWhole = false;  ///< the channels are those of the list, marked and ordered by the file
  std::optional<DWORD> country = {};  ///< where the file names one

  /// Adds one that was read. Raises a Failure where there are too many.
  void Add(ImportedChannel channel, const ImportRequest& request);
};

/// Code of a field that reads back as something else than what was written.
struct FieldCode {
  const char* field;
  Code code;
};

/// A format of another program: a row of Formats(), which lives as long as the program.
struct Format {
  const char* name;
  /// Signal types whose channels it holds; those that come in.
  std::span<const InputSignalType> out;
  std::span<const InputSignalType> in;
  bool isFolder;  ///< an output is a folder of files
  /// Writes the channels that the format has a form for, lists them in `written`, and adds a loss
  /// for every one that it leaves out and for everything that it assumes. What reads back as
  /// something else is not its to report.
  void (*write)(const ExportRequest& request, Output& output, Losses& losses);
  /// Raises a Failure for what is nothing of the kind.
  ImportResult (*read)(const Input& input, const ImportRequest& request, Losses& losses);
  /// The channels that a written output holds, in the order of `written`, everything that it does
  /// not hold being empty; null: what `read` answers.
  std::vector<Channel> (*readBack)(const Output& output, const ExportRequest& request) = nullptr;
  /// Fields whose difference has another code than the usual one.
  std::span<const FieldCode> codes = {};
  /// What it takes of the command line beyond what all take: "--names".
  std::span<const char* const> options = {};
  bool usesDishes = false;  ///< it names dishes where the list has positions
  /// Takes out of an output what another file of the format leaves open; null: files of it hold the
  /// same of every channel.
  void (*limit)(const Input& other, Output& output) = nullptr;
};

/// What was written, as a reader is given it; `output` outlives it.
Input InputOf(const Format& format, const Output& output);

/// Gives channels without an index the one behind the channel before them.
void FillIndexes(std::vector<ImportedChannel>& channels);

/// True when channels of the type are among them.
bool Holds(std::span<const InputSignalType> signals, InputSignalType signal);

}  // namespace zortunedex::kit::interchange

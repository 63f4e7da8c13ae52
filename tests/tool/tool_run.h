// Runs the built tunedex, and looks at what it printed, answered and wrote.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <source_location>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace zortunedex::kit::tool {

using Arguments = std::vector<std::string>;

inline constexpr char kGermany[] = "49";

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;

  /// The output as JSON; a failure of the test and null where it is none.
  nlohmann::ordered_json Json(std::source_location where = std::source_location::current()) const;
};

/// Runs the program with these arguments alone; nobody answers a question.
Outcome RunTool(const Arguments& arguments);
/// The same with a text on standard input.
Outcome RunTool(const Arguments& arguments, const std::string& input);

/// A file of tests/data/tool.
std::string ToolData(const std::string& name);

void ExpectStatus(int expected, const Outcome& outcome,
                  std::source_location where = std::source_location::current());
/// Status 0, nothing on standard error, and the text of a file of tests/data/tool.
void ExpectPrints(const std::string& golden, const Outcome& outcome,
                  std::source_location where = std::source_location::current());
/// The status and exactly this on standard error, with what to do about it: the help of a command
/// (status 2), or the repair of a file that cannot be read; nothing on standard output.
void ExpectRefused(int status, const std::string& message, const Outcome& outcome,
                   std::source_location where = std::source_location::current());

/// A data directory that begins with tests/data/tool/ChanInfo.xml, or empty.
class DataDirectory {
 public:
  enum class Start { Empty, Filled };
  explicit DataDirectory(Start start = Start::Filled);

  const TempDir& Files() const { return m_directory; }
  std::string File() const { return m_directory.Read("ChanInfo.xml"); }

  /// --dir and the arguments.
  Outcome Run(Arguments arguments) const;
  /// The same with --country and --signal.
  Outcome Run(const std::string& country, const std::string& signal, Arguments arguments) const;
  /// `batch` with these lines on standard input, and more arguments.
  Outcome RunBatch(const std::string& country, const std::string& signal, const std::string& lines,
                   const Arguments& more = {}) const;
  /// The channels of a list, from the program's JSON.
  nlohmann::ordered_json Channels(
      const std::string& country, const std::string& signal,
      std::source_location where = std::source_location::current()) const;
  /// What `channels show` tells about one channel.
  nlohmann::ordered_json Channel(
      const std::string& country, const std::string& signal, const std::string& index,
      std::source_location where = std::source_location::current()) const;

 private:
  TempDir m_directory;
};

/// Says at its end when the directory's content is not what it was at the beginning.
class NothingWritten {
 public:
  explicit NothingWritten(const DataDirectory& directory,
                          std::source_location where = std::source_location::current());
  ~NothingWritten();

 private:
  const DataDirectory& m_directory;
  std::source_location m_where;
  std::string m_file;
  std::size_t m_count;
};

}  // namespace zortunedex::kit::tool

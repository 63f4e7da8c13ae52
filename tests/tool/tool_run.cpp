#include "tool/tool_run.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

#include "support/program.h"

namespace zortunedex::kit::tool {

namespace {

/// Text files of either platform look alike.
std::string WithoutReturns(std::string text) {
  std::erase(text, '\r');
  return text;
}

std::string ToolPath() {
  return std::filesystem::absolute(ZORTUNEDEX_TOOL).make_preferred().string();
}

void AddFailureAt(const std::source_location& where, const std::string& message) {
  ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line())) << message;
}

/// What follows the message: the help where the command line is wrong, the repair where a file is
/// damaged, else nothing.
bool IsHint(int status, const std::string& message, const std::string& text) {
  if (status == 2) {
    return std::regex_match(text, std::regex("Try 'tunedex ([a-z]+ ){0,2}--help'\\.\n"));
  }
  if (message.find(".xml cannot be read: ") == std::string::npos) return text.empty();
  return text.starts_with("Try 'tunedex --dir ") && text.ends_with(" repair'.\n");
}

std::string Described(const Outcome& outcome) {
  return "status " + std::to_string(outcome.status) + "\n--- out\n" + outcome.out + "--- err\n" +
         outcome.err;
}

}  // namespace

Outcome RunTool(const Arguments& arguments) { return RunTool(arguments, ""); }

Outcome RunTool(const Arguments& arguments, const std::string& input) {
  const TempDir files;
  files.Write("in", input);
  const int status = StatusOfProgram(ToolPath(), arguments,
                                     {files.File("in"), files.File("out"), files.File("err")});
  return {status, WithoutReturns(files.Read("out")), WithoutReturns(files.Read("err"))};
}

std::string ToolData(const std::string& name) {
  std::ifstream file(std::filesystem::path(ZORTUNEDEX_TEST_DATA) / "tool" / name, std::ios::binary);
  if (!file) ADD_FAILURE() << "no test data " << name;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

nlohmann::ordered_json Outcome::Json(std::source_location where) const {
  nlohmann::ordered_json json = nlohmann::ordered_json::parse(out, nullptr, false);
  if (status == 0 && !json.is_discarded()) return json;
  AddFailureAt(where, "no JSON: " + Described(*this));
  return nullptr;
}

void ExpectStatus(int expected, const Outcome& outcome, std::source_location where) {
  if (outcome.status == expected) return;
  AddFailureAt(where,
               "expected status " + std::to_string(expected) + ", got " + Described(outcome));
}

void ExpectPrints(const std::string& golden, const Outcome& outcome, std::source_location where) {
  const std::string expected = WithoutReturns(ToolData(golden));
  if (outcome.status == 0 && outcome.err.empty() && outcome.out == expected) return;
  AddFailureAt(where, "not " + golden + ": " + Described(outcome));
}

void ExpectRefused(int status, const std::string& message, const Outcome& outcome,
                   std::source_location where) {
  const std::string expected = "tunedex: " + message + "\n";
  const bool isSaid = outcome.err.starts_with(expected) &&
                      IsHint(status, message, outcome.err.substr(expected.size()));
  if (outcome.status == status && isSaid && outcome.out.empty()) return;
  AddFailureAt(where, "expected status " + std::to_string(status) + " and\n" + expected + "got " +
                          Described(outcome));
}

DataDirectory::DataDirectory(Start start) {
  if (start == Start::Filled) m_directory.Write("ChanInfo.xml", ToolData("ChanInfo.xml"));
}

Outcome DataDirectory::Run(Arguments arguments) const {
  arguments.insert(arguments.begin(), {"--dir", m_directory.Path()});
  return RunTool(arguments);
}

Outcome DataDirectory::Run(const std::string& country, const std::string& signal,
                           Arguments arguments) const {
  arguments.insert(arguments.begin(), {"--country", country, "--signal", signal});
  return Run(std::move(arguments));
}

Outcome DataDirectory::RunBatch(const std::string& country, const std::string& signal,
                                const std::string& lines, const Arguments& more) const {
  Arguments arguments = {"--dir", m_directory.Path(), "--country", country, "--signal", signal,
                         "batch"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return RunTool(arguments, lines);
}

nlohmann::ordered_json DataDirectory::Channels(const std::string& country,
                                               const std::string& signal,
                                               std::source_location where) const {
  return Run(country, signal, {"channels", "list", "--json"}).Json(where);
}

nlohmann::ordered_json DataDirectory::Channel(const std::string& country, const std::string& signal,
                                              const std::string& index,
                                              std::source_location where) const {
  nlohmann::ordered_json array =
      Run(country, signal, {"channels", "show", index, "--json"}).Json(where);
  return array.is_array() && array.size() == 1 ? array[0] : nlohmann::ordered_json();
}

namespace {

/// Whatever stands in the directory and its history but the lock, which commands make that change
/// nothing, too.
std::size_t CountWithoutLock(const TempDir& directory) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory.Path())) {
    const std::string name = entry.path().filename().string();
    if (name != "tunedex-history" && name != "lock") ++count;
  }
  return count;
}

}  // namespace

NothingWritten::NothingWritten(const DataDirectory& directory, std::source_location where)
    : m_directory(directory),
      m_where(where),
      m_file(directory.File()),
      m_count(CountWithoutLock(directory.Files())) {}

NothingWritten::~NothingWritten() {
  if (m_directory.File() == m_file && CountWithoutLock(m_directory.Files()) == m_count) return;
  AddFailureAt(m_where, "the directory was written to");
}

}  // namespace zortunedex::kit::tool

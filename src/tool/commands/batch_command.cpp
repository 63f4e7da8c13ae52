// Several commands with one load and one save of the channel list.
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

#include "kit/reading/readable.h"
#include "tool/commands/channel_edits.h"
#include "tool/commands/commands.h"
#include "tool/options/location.h"
#include "tool/printing/held_output.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using nlohmann::ordered_json;

namespace commands {
namespace {

struct Other {
  std::string_view name;
  void (*run)(const Options& options);
  bool readsChannels;
};

constexpr Other kOthers[] = {
    {"channels import", ImportChannels, true},    {"dishes assign", AssignSatellite, false},
    {"dishes remove", RemoveAssignment, false},   {"dishes clear", ClearDishes, false},
    {"presets select", SelectPreset, true},       {"presets save", SaveCustomerList, true},
    {"presets delete", DeleteCustomerList, true},
};

const Other* FindOther(std::string_view command) {
  for (const Other& other : kOthers) {
    if (other.name == command) return &other;
  }
  return nullptr;
}

class Batch {
 public:
  explicit Batch(const Options& options) : m_options(options) {}

  void Run(Options line) {
    line.directory = m_options.directory;
    ordered_json result;
    if (const channel_edits::Edit edit = channel_edits::Find(line.command)) {
      if (!m_editor)
        m_editor.emplace(LocationOf(line), SaveOptions{line.format, PrintNote, line.unreadable});
      result = Take(edit(*m_editor, line));
    } else if (const Other* other = FindOther(line.command)) {
      result = RunOther(*other, line);
    }
    m_results.push_back(
        {{"line", line.line}, {"command", line.command}, {"result", std::move(result)}});
  }

  void Save() {
    if (m_editor) m_editor->Save();
    m_editor.reset();
  }

  void Print() const {
    if (!m_options.json) {
      std::cout << m_text;
      return;
    }
    PrintJson({{"tunedex", "batch"}, {"version", 1}, {"commands", m_results}});
  }

 private:
  ordered_json Take(const channel_edits::Done& done) {
    if (!done.text.empty()) m_text += done.text + "\n";
    // What cannot be saved is the fault of this line and not of the batch.
    m_editor->RequireStorable(done.indexes);
    if (!m_options.json) return nullptr;
    if (done.renumbered) return {{"channels", m_editor->Now().size()}};
    return {{"changed", done.changed}, {"indexes", done.indexes}};
  }

  ordered_json RunOther(const Other& other, const Options& line) {
    // It opens the channel file for itself.
    if (other.readsChannels) Save();
    const HeldOutput printed;
    other.run(line);
    const std::string text = printed.Text();
    if (m_options.json) return ordered_json::parse(text);
    m_text += text;
    return nullptr;
  }

  const Options& m_options;
  std::optional<ListEditor> m_editor;
  std::string m_text;
  ordered_json m_results = ordered_json::array();
};

}  // namespace

bool IsOfBatch(std::string_view command) {
  return channel_edits::Find(command) != nullptr || FindOther(command) != nullptr;
}

void RunBatch(const Options& options) {
  Batch batch(options);
  for (const Options& line : options.batch) {
    const std::string place = "line " + std::to_string(line.line) + ": " + line.command + ": ";
    try {
      batch.Run(line);
    } catch (const UnreadableFile& failure) {
      throw UnreadableFile{failure.Result(), place + failure.what()};
    } catch (const Failure& failure) {
      throw Failure{failure.Result(), place + failure.what()};
    } catch (const InvalidArgument& error) {
      throw InvalidArgument{place + error.what()};
    }
  }
  batch.Save();
  batch.Print();
}

}  // namespace commands

}  // namespace zortunedex::kit::tool

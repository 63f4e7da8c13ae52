#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/history/comparison/changes.h"
#include "kit/history/replacement.h"
#include "tool/commands/commands.h"
#include "tool/commands/running/change.h"
#include "tool/printing/change_report.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using history::FileSet;
using history::Number;
using history::Snapshot;
using history::Step;
using history::Store;
using nlohmann::ordered_json;

namespace commands {
namespace {

ordered_json Document(const char* kind) { return {{"tunedex", kind}, {"version", 1}}; }

ordered_json NumberJson(const std::optional<Number>& number) {
  return number ? ordered_json(*number) : ordered_json();
}

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text.empty() ? "-" : text;
}

std::string Joined(const std::vector<Number>& numbers) {
  std::vector<std::string> texts;
  texts.reserve(numbers.size());
  for (const Number number : numbers) texts.push_back(std::to_string(number));
  return Joined(texts);
}

std::string Described(const Snapshot& snapshot) {
  return std::to_string(snapshot.number) + ": " + Printable(snapshot.by) + ", " + snapshot.time;
}

/// `change` is the one that is taken back or made again.
void PrintStep(const Options& options, const char* kind, const std::string& words,
               const Snapshot& change, const Step& step) {
  if (options.dryRun) return PrintDryRun(step.difference, options.json);
  if (!options.json) {
    std::cout << words << " " << Described(change) << '\n';
    return;
  }
  ordered_json json = Document(kind);
  json["from"] = step.left.number;
  json["to"] = step.reached.number;
  json["time"] = change.time;
  json["by"] = change.by;
  json["files"] = history::Differing(step.difference.before, step.difference.after);
  PrintJson(json);
}

/// What is there is shown first: it is what can still be had.
void FinishWithDamages(const Store& store) {
  FinishOutput();
  store.RequireWhole();
}

void PrintList(const Store& store) {
  std::vector<std::vector<std::string>> rows = {{"", "NUMBER", "PARENT", "TIME", "FILES", "BY"}};
  const auto& snapshots = store.Snapshots();
  for (auto entry = snapshots.rbegin(); entry != snapshots.rend(); ++entry) {
    const Snapshot& snapshot = entry->second;
    rows.push_back({&snapshot == store.Head() ? "*" : "", std::to_string(snapshot.number),
                    snapshot.parent ? std::to_string(*snapshot.parent) : "-",
                    Printable(snapshot.time), Joined(store.Differing(snapshot)),
                    Printable(snapshot.by)});
  }
  PrintTable(rows);
}

void PrintListJson(const Store& store) {
  ordered_json json = Document("history");
  json["head"] = store.Head() == nullptr ? ordered_json() : ordered_json(store.Head()->number);
  json["snapshots"] = ordered_json::array();
  const auto& snapshots = store.Snapshots();
  for (auto entry = snapshots.rbegin(); entry != snapshots.rend(); ++entry) {
    const Snapshot& snapshot = entry->second;
    json["snapshots"].push_back({{"number", snapshot.number},
                                 {"parent", NumberJson(snapshot.parent)},
                                 {"time", snapshot.time},
                                 {"by", snapshot.by},
                                 {"files", store.Differing(snapshot)}});
  }
  PrintJson(json);
}

std::string SizeText(const std::optional<history::StoredFile>& stored) {
  return stored ? std::to_string(stored->size) : "-";
}

/// The files of a snapshot, or as they are where there is none of that place on the command line.
FileSet FilesOf(const Store& store, const Options& options, std::size_t place) {
  if (place >= options.snapshots.size()) return history::ReadFiles(options.directory);
  return store.Read(store.Find(options.snapshots[place]));
}

}  // namespace

void UndoChange(const Options& options) {
  const Step step = history::Undo(SettingsOf(options));
  PrintStep(options, "undo", "took back", step.left, step);
}

void RedoChange(const Options& options) {
  const Step step = history::Redo(SettingsOf(options));
  PrintStep(options, "redo", "made again", step.reached, step);
}

void ListHistory(const Options& options) {
  const Store store(options.directory);
  options.json ? PrintListJson(store) : PrintList(store);
  FinishWithDamages(store);
}

void ShowSnapshot(const Options& options) {
  const Store store(options.directory);
  const Snapshot& snapshot = store.Find(options.snapshots.front());
  if (options.json) {
    ordered_json json = Document("snapshot");
    json["number"] = snapshot.number;
    json.update(ordered_json::parse(history::ToJson(snapshot)));
    return PrintJson(json);
  }
  std::cout << "snapshot " << Described(snapshot) << '\n';
  std::vector<std::vector<std::string>> rows = {{"FILE", "BYTES", "IN"}};
  for (const auto& [name, stored] : snapshot.files) {
    rows.push_back({name, SizeText(stored), stored ? stored->in : "-"});
  }
  PrintTable(rows);
}

void CompareSnapshots(const Options& options) {
  const Store store(options.directory);
  const FileSet from = FilesOf(store, options, 0);
  const auto changes = history::ChangesBetween(from, FilesOf(store, options, 1));
  if (!options.json) return PrintChanges(changes);
  ordered_json json = Document("history-diff");
  json["from"] = options.snapshots[0];
  json["to"] = options.snapshots.size() == 1 ? ordered_json() : ordered_json(options.snapshots[1]);
  json["changes"] = ChangesJson(changes);
  PrintJson(json);
}

void RestoreSnapshot(const Options& options) {
  const Number number = options.snapshots.front();
  const history::Difference difference =
      history::Restore(SettingsOf(options), number, options.file);
  if (options.dryRun) return PrintDryRun(difference, options.json);
  const std::vector<std::string> names = history::Differing(difference.before, difference.after);
  if (!options.json) {
    std::cout << (names.empty() ? "nothing differs from snapshot " : "restored snapshot ") << number
              << (names.empty() ? "" : ": " + Joined(names)) << '\n';
    return;
  }
  ordered_json json = Document("restore");
  json["number"] = number;
  json["files"] = names;
  PrintJson(json);
}

void PruneHistory(const Options& options) {
  const history::Pruned pruned = history::Prune(SettingsOf(options), options.keep);
  if (options.json) {
    ordered_json json = Document("prune");
    json["removed"] = pruned.removed;
    json["damages"] = pruned.damages;
    return PrintJson(json);
  }
  for (const std::string& damage : pruned.damages) std::cout << Printable(damage) << '\n';
  std::cout << (options.dryRun ? "would remove snapshots: " : "removed snapshots: ")
            << Joined(pruned.removed) << '\n';
}

}  // namespace commands

}  // namespace zortunedex::kit::tool

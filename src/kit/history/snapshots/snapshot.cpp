#include "kit/history/snapshots/snapshot.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "kit/history/snapshots/file_set.h"

namespace zortunedex::kit {

using nlohmann::ordered_json;

namespace history {
namespace {

constexpr int kVersion = 1;
constexpr std::size_t kDigits = 6;

bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }

/// The object of a document of that kind.
ordered_json Parsed(std::string_view text, const char* kind) {
  ordered_json json = ordered_json::parse(text, nullptr, false);
  if (!json.is_object()) throw Damage{"is no JSON object"};
  const auto version = json.find("version");
  if (version != json.end() && *version != kVersion) {
    throw ForeignVersion{"is of version " + version->dump()};
  }
  const auto name = json.find("tunedex");
  if (name != json.end() && *name != kind) throw Damage{"is no " + std::string(kind)};
  return json;
}

const ordered_json& Member(const ordered_json& json, const char* name) {
  const auto found = json.find(name);
  if (found == json.end()) throw Damage{"has no " + std::string(name)};
  return *found;
}

template <typename Value>
Value NumberIn(const ordered_json& json, const char* name) {
  const ordered_json& value = Member(json, name);
  if (!value.is_number_unsigned() || value.get<std::uint64_t>() > std::uint64_t{Value(-1)}) {
    throw Damage{"has a " + std::string(name) + " that is no number"};
  }
  return value.get<Value>();
}

std::string TextIn(const ordered_json& json, const char* name) {
  const ordered_json& value = Member(json, name);
  if (!value.is_string()) throw Damage{"has a " + std::string(name) + " that is no text"};
  return value.get<std::string>();
}

std::optional<Number> NumberOrNull(const ordered_json& json, const char* name) {
  if (Member(json, name).is_null()) return std::nullopt;
  return NumberIn<Number>(json, name);
}

/// A copy stands under its snapshot's number and its own name, in the history's folder.
bool IsCopyOf(const std::string& in, const std::string& name) {
  if (!in.ends_with("-" + name)) return false;
  return NumberOf(in, "-" + name).has_value();
}

std::optional<StoredFile> StoredIn(const ordered_json& json, const std::string& name) {
  if (json.is_null()) return std::nullopt;
  if (!json.is_object()) throw Damage{"does not tell where " + name + " is"};
  StoredFile file{TextIn(json, "in"), NumberIn<std::uint64_t>(json, "size"),
                  NumberIn<std::uint32_t>(json, "crc32")};
  if (!IsCopyOf(file.in, name)) throw Damage{"names " + file.in + " for " + name};
  return file;
}

}  // namespace

const StoredFile* Snapshot::Find(const std::string& name) const {
  const auto found = files.find(name);
  return found == files.end() || !found->second ? nullptr : &*found->second;
}

std::string DigitsOf(Number number) {
  char digits[16];
  std::snprintf(digits, sizeof(digits), "%06u", static_cast<unsigned>(number));
  return digits;
}

std::string FileNameOf(Number number) { return DigitsOf(number) + ".json"; }

std::optional<Number> NumberOf(std::string_view name, std::string_view end) {
  if (!name.ends_with(end)) return std::nullopt;
  name.remove_suffix(end.size());
  if (name.size() < kDigits || !std::all_of(name.begin(), name.end(), IsDigit)) return std::nullopt;
  Number number = 0;
  const auto result = std::from_chars(name.data(), name.data() + name.size(), number);
  if (result.ec != std::errc() || name != DigitsOf(number) || number == 0) return std::nullopt;
  return number;
}

std::string ToJson(const Snapshot& snapshot) {
  ordered_json files = ordered_json::object();
  for (const auto& [name, stored] : snapshot.files) {
    files[name] = nullptr;
    if (stored) {
      files[name] = {{"in", stored->in}, {"size", stored->size}, {"crc32", stored->crc32}};
    }
  }
  ordered_json json = {{"tunedex", "snapshot"}, {"version", kVersion}, {"parent", nullptr},
                       {"time", snapshot.time}, {"by", snapshot.by},   {"files", files}};
  if (snapshot.parent) json["parent"] = *snapshot.parent;
  // What somebody typed need not be UTF-8.
  return json.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

Snapshot SnapshotOf(Number number, std::string_view text) {
  const ordered_json json = Parsed(text, "snapshot");
  Snapshot snapshot{
      number, NumberOrNull(json, "parent"), TextIn(json, "time"), TextIn(json, "by"), {}};
  if (snapshot.parent && *snapshot.parent >= number) throw Damage{"follows a later snapshot"};
  const ordered_json& files = Member(json, "files");
  if (!files.is_object()) throw Damage{"has no files"};
  for (const auto& [name, stored] : files.items()) {
    if (!IsDataFile(name) && !IsBase(name)) throw Damage{"names a file that is not kept: " + name};
    snapshot.files[name] = StoredIn(stored, name);
  }
  return snapshot;
}

std::string ToJson(const Pending& pending) {
  ordered_json json = {
      {"tunedex", "pending"}, {"version", kVersion}, {"from", nullptr}, {"target", pending.target}};
  if (pending.from) json["from"] = *pending.from;
  return json.dump(2) + "\n";
}

Pending PendingOf(std::string_view text) {
  const ordered_json json = Parsed(text, "pending");
  return {NumberOrNull(json, "from"), NumberIn<Number>(json, "target")};
}

std::string TimeNow() {
  using namespace std::chrono;
  const auto now = floor<seconds>(system_clock::now());
  const auto day = floor<days>(now);
  const year_month_day date(day);
  const hh_mm_ss time(now - day);
  char text[32];
  std::snprintf(text, sizeof(text), "%04d-%02u-%02uT%02d:%02d:%02dZ", int{date.year()},
                unsigned{date.month()}, unsigned{date.day()},
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()));
  return text;
}

}  // namespace history

}  // namespace zortunedex::kit

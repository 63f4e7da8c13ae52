// Presets of one-segment reception, and the customer's own lists.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "api/zortunedex/proof.hpp"

namespace zortunedex {

/// The channels of one sub-area; in the customer's area one of its lists.
struct preset_list {
  std::int32_t number = 0;        ///< of the sub-area, from 0
  std::string name;               ///< UTF-8
  std::vector<channel> channels;  ///< in list order
};

/// One area with its sub-areas.
struct preset_area {
  std::int32_t number = 0;         ///< from 0
  std::string name;                ///< UTF-8
  std::vector<preset_list> lists;  ///< those with the numbers 0, 1, 2, … of custom
};

/// The presets as the file has them.
struct preset_table {
  std::vector<preset_area> areas;  ///< by their numbers
  std::int32_t customer_area = 0;  ///< number of the area with the customer's lists: the last one

  /// The area with a number. Raises an error where there is none.
  const preset_area& area(std::int32_t number) const& {
    for (const preset_area& candidate : areas) {
      if (candidate.number == number) return candidate;
    }
    throw error(E_INVALIDARG, "find area", std::to_string(number), "there is none");
  }
  /// The list of a sub-area. Raises an error where there is none.
  const preset_list& list(std::int32_t in, std::int32_t number) const& {
    for (const preset_list& candidate : area(in).lists) {
      if (candidate.number == number) return candidate;
    }
    throw error(E_INVALIDARG, "find sub-area", std::to_string(number),
                "there is none in area " + std::to_string(in));
  }
  /// The customer's lists.
  const std::vector<preset_list>& customer_lists() const& { return area(customer_area).lists; }

  // The same of a table that goes at once: copies.

  /// The area with a number.
  preset_area area(std::int32_t number) const&& { return area(number); }
  /// The list of a sub-area.
  preset_list list(std::int32_t in, std::int32_t number) const&& { return list(in, number); }
  /// The customer's lists.
  std::vector<preset_list> customer_lists() const&& { return customer_lists(); }
};

namespace detail {

/// Reads the presets of an opened database, which must not be saved afterwards.
class PresetReader {
 public:
  PresetReader(const Opened& database, const Location& location)
      : m_database(database),
        m_file(location.File(kPresetFile)),
        m_context(MakeContext(database, location)) {}

  preset_table Read() const {
    LONG count = 0;
    Require(m_database->GetAreaCount(&count), "read", m_file, "it holds no presets");
    preset_table table;
    table.customer_area = count - 1;
    for (LONG number = 0; number < count; ++number) {
      CHAR name[kNameRoom] = {};
      if (FAILED(m_database->GetAreaNameByIndex(number, name))) continue;
      table.areas.push_back({number, m_context->FromNarrow(name), Lists(number)});
    }
    return table;
  }

 private:
  static constexpr std::size_t kNameRoom = 260;

  std::vector<preset_list> Lists(LONG area) const {
    LONG count = 0;
    Require(m_database->GetSubAreaCount(area, &count), "read", m_file, "an area cannot be counted");
    std::vector<preset_list> lists;
    for (LONG number = 0; number < count; ++number) {
      CHAR name[kNameRoom] = {};
      if (FAILED(m_database->GetSubAreaNameByIndex(area, number, name))) continue;
      ComPtr<IChannelInfoMgr> list;
      Require(m_database->GetPresetChannelMgr(area, number, list.Receive()), "read", m_file,
              "a list cannot be made");
      if (!list) throw error(E_OUTOFMEMORY, "read", m_file, "a list cannot be made");
      lists.push_back({number, m_context->FromNarrow(name), TakeChannels(list.Get(), m_context)});
    }
    return lists;
  }

  const Opened& m_database;
  std::string m_file;
  SharedContext m_context;
};

/// Raises an error for a database of another kind of signal: it has no presets.
inline void RequirePresets(const Location& location) {
  if (location.kind == signal::isdb_one_seg) return;
  throw error(E_INVALIDARG, "use presets of", location.Place(),
              "they are for one-segment reception, not for " + std::string(name_of(location.kind)));
}

inline preset_table ReadPresets(const Location& location) {
  RequirePresets(location);
  const std::string file = location.File(kPresetFile);
  return Guarded("read", file, [&] {
    const Opened database(location);
    const HRESULT result = database->LoadPresetOneSegChannelInfo();
    if (result != S_OK) {
      const bool isThere = ReadBytes(location.directory / kPresetFile).has_value();
      throw error(FAILED(result) ? result : E_FAIL, "read", file,
                  isThere ? "it is not well-formed XML" : "there is no such file");
    }
    return PresetReader(database, location).Read();
  });
}

/// Raises an error where two tables are not the same.
inline void RequireSamePresets(const preset_table& meant, const preset_table& found,
                               const std::string& file) {
  const auto refuse = [&](const std::string& what) {
    throw error(E_FAIL, "save", file, "it would not hold " + what);
  };
  if (meant.areas.size() != found.areas.size()) refuse("all areas");
  for (std::size_t i = 0; i < meant.areas.size(); ++i) {
    const preset_area& a = meant.areas[i];
    const preset_area& b = found.areas[i];
    if (a.number != b.number || a.name != b.name || a.lists.size() != b.lists.size()) {
      refuse("area " + std::to_string(a.number));
    }
    for (std::size_t k = 0; k < a.lists.size(); ++k) {
      if (a.lists[k].number != b.lists[k].number || a.lists[k].name != b.lists[k].name) {
        refuse("list " + std::to_string(k) + " of area " + std::to_string(a.number));
      }
      RequireSame(a.lists[k].channels, b.lists[k].channels, file);
    }
  }
}

/// Makes the channels of a sub-area those of the channel file. Answers what the file has then.
inline channel_list SelectPreset(const Location& location, std::int32_t area,
                                 std::int32_t subArea) {
  const std::string file = location.File(kChannelFile);
  return Guarded("save", file, [&] {
    const preset_list meant = ReadPresets(location).list(area, subArea);
    RequireReadable(location, kChannelFile);
    const ProvenSave save(location, kChannelFile, kPresetFile);
    save.Run(
        [&](const Location& place) {
          // One selection for an object: the list is bound to the sub-area after it.
          const Opened database(place);
          Require(database->SetArea(area, subArea), "save", file, "it cannot be selected");
        },
        [&](const Location& place) { RequireSame(meant.channels, LoadChannels(place), file); });
    return LoadChannels(location);
  });
}

/// The name of a list as the library takes it. Raises an error for one that would not come back.
inline std::string NarrowListName(const Location& location, const std::string& name) {
  const auto refuse = [&](const char* reason) {
    throw error(E_INVALIDARG, "name a list of", location.File(kPresetFile), reason);
  };
  if (name.empty()) refuse("the name is empty");
  if (const char* reason = WhyRefused(name)) refuse(reason);
  const Opened database(location);
  const std::optional<std::string> narrow = MakeContext(database, location)->ToNarrow(name);
  if (!narrow) refuse("the name holds characters outside the code page");
  if (narrow->size() > TextLimit(0)) refuse("the name has more than 259 bytes in the code page");
  return *narrow;
}

/// The number that a new list of the customer gets.
inline std::int32_t SaveCustomerList(const Location& location, const std::string& name) {
  const std::string file = location.File(kPresetFile);
  return Guarded("save", file, [&] {
    const channel_list channels = LoadChannels(location);
    preset_table meant = ReadPresets(location);
    const std::string narrow = NarrowListName(location, name);
    const auto number = static_cast<std::int32_t>(meant.customer_lists().size());
    if (channels.empty()) throw error(E_INVALIDARG, "save", file, "there are no channels to store");
    for (preset_area& area : meant.areas) {
      if (area.number != meant.customer_area) continue;
      area.lists.push_back({number, name, {channels.begin(), channels.end()}});
    }
    const ProvenSave save(location, kPresetFile, kChannelFile);
    save.Run(
        [&](const Location& place) {
          const Opened database(place);
          // Answers a reference count, which tells nothing.
          database->SaveCustomerChannelList(number, narrow.c_str());
        },
        [&](const Location& place) { RequireSamePresets(meant, ReadPresets(place), file); });
    return number;
  });
}

/// Deletes a list in a directory.
inline void DeleteList(const Location& location, std::int32_t customerArea, std::int32_t number) {
  const std::string file = location.File(kPresetFile);
  const Opened database(location);
  LONG area = 0;
  LONG subArea = 0;
  Require(database->GetArea(&area, &subArea), "read", file, "the selection cannot be had");
  if (area == customerArea && area != 0 && subArea > number) {
    // The note is another one's after the lists moved up. Opened for another kind of signal as
    // well, the object keeps the presets and takes a selection without touching a list.
    const Bstr directory(location.directory.string<OLECHAR>());
    Require(database->Open(directory.Get(), location.country, InputSignalFMRadio), "save", file,
            "the selection cannot be changed");
    Require(database->SetArea(area, subArea - 1), "save", file, "the selection cannot be changed");
  }
  if (database->DeleteCustomerChannelList(number) == S_OK) return;
  throw error(E_FAIL, "save", file, "it cannot be written; it is as it was");
}

/// Deletes a list of the customer; the others move up, and so does the note of a selected one.
inline void DeleteCustomerList(const Location& location, std::int32_t number) {
  const std::string file = location.File(kPresetFile);
  Guarded("save", file, [&] {
    preset_table meant = ReadPresets(location);
    meant.list(meant.customer_area, number);  // raises an error where there is none
    for (preset_area& area : meant.areas) {
      if (area.number != meant.customer_area) continue;
      std::erase_if(area.lists, [&](const preset_list& list) { return list.number == number; });
      for (preset_list& list : area.lists) list.number -= list.number > number ? 1 : 0;
    }
    const ProvenSave save(location, kPresetFile, kChannelFile);
    save.Run([&](const Location& place) { DeleteList(place, meant.customer_area, number); },
             [&](const Location& place) { RequireSamePresets(meant, ReadPresets(place), file); });
  });
}

}  // namespace detail
}  // namespace zortunedex

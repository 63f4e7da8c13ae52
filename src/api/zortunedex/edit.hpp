// Changing the channels of a file.
#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "api/zortunedex/proof.hpp"

namespace zortunedex {

/// The two forms of a channel file. Both hold the same.
enum class file_form : std::int32_t {
  xml = StorageXML,                 ///< what the library writes of itself, all on one line
  preformatted = StoragePreFmtXML,  ///< one element a line; cannot hold & < " tabs and line ends
};

namespace detail {

/// True where the bytes name a tab or a line end by its number, whatever their encoding.
inline bool HoldsBlankByNumber(std::string_view bytes) {
  std::string text;
  std::copy_if(bytes.begin(), bytes.end(), std::back_inserter(text), [](char c) { return c != 0; });
  for (std::size_t at = text.find("&#"); at != std::string::npos; at = text.find("&#", at + 2)) {
    std::size_t first = at + 2;
    const bool isHex = first < text.size() && (text[first] == 'x' || text[first] == 'X');
    first = std::min(text.find_first_not_of('0', first + (isHex ? 1 : 0)), text.size());
    const std::string number = text.substr(first, text.find(';', first) - first);
    for (const char* blank :
         {"9", isHex ? "a" : "10", isHex ? "A" : "10", isHex ? "d" : "13", isHex ? "D" : "13"}) {
      if (number == blank) return true;
    }
  }
  return false;
}

/// One change of a list, from what a file had to what it shall have.
class ListChange {
 public:
  ListChange(const channel_list& before, const channel_list& meant)
      : m_before(before), m_meant(meant) {}

  /// Raises an error for a list that no file can hold.
  void RequireStorable(const Location& location) const {
    const channel* previous = nullptr;
    for (const channel& next : m_meant) {
      const char* reason = next.signal() != location.kind ? "it is of another signal type"
                           : next.index() >= 0xFFFFFFFE   ? "its index is out of range"
                           : previous != nullptr && previous->index() >= next.index()
                               ? "its index does not follow the one before it; renumber the list"
                               : nullptr;
      if (reason != nullptr) {
        throw error(E_INVALIDARG, "save",
                    "channel " + std::to_string(next.index()) + " of " + location.Place(), reason);
      }
      previous = &next;
    }
  }

  bool IsNone() const {
    return m_before.size() == m_meant.size() &&
           std::equal(m_before.begin(), m_before.end(), m_meant.begin(), IsSame);
  }

  /// Does it in a directory that has what was before.
  void Write(const Location& location, file_form form) const {
    const Opened database(location);
    const std::string file = location.File(kChannelFile);
    const ComPtr<IChannelInfoMgr> list = database.List(location.kind, location.Place());
    if (StaysInPlace()) {
      PutChanged(list.Get(), file);
    } else {
      Require(list->Clear(), "save", file, "the list cannot be emptied");
      list->SetDirty(1);  // or an empty list is not written
      for (const channel& next : m_meant) Add(list.Get(), next, file);
    }
    Require(database->SetStorageType(static_cast<EStorageType>(form)), "save", file,
            "the form is not known");
    // The plain form answers S_OK whatever happened to the file; who calls looks at that.
    Require(database->SaveChannelToFile(), "save", file, "it cannot be written; it is as it was");
  }

 private:
  static bool IsSame(const channel& a, const channel& b) {
    const Values& x = Inside::Of(a);
    const Values& y = Inside::Of(b);
    return x.index == y.index && x.number == y.number && x.frequency == y.frequency &&
           x.offset == y.offset && x.tsid == y.tsid && x.favorite == y.favorite &&
           x.lock == y.lock && x.displayName == y.displayName && x.block == y.block;
  }

  /// True where the channels of before are all there under their indexes, and others behind them at
  /// most: what the library does not know of them stays in the file then. It stays with the index,
  /// so that a channel which came to another one's index must not be put there.
  bool StaysInPlace() const {
    UINT last = 0;
    auto next = m_meant.begin();
    for (const channel& old : m_before) {
      if (next == m_meant.end() || next->index() != old.index()) return false;
      if (Inside::Of(*next).origin != Inside::Of(old).origin) return false;
      if (next != m_meant.begin() && old.index() <= last) return false;
      last = old.index();
      ++next;
    }
    return true;
  }

  void PutChanged(IChannelInfoMgr* list, const std::string& file) const {
    auto next = m_meant.begin();
    for (const channel& old : m_before) {
      const channel& now = *next++;
      if (IsSame(old, now)) continue;
      ComPtr<IChannelInfo> record;
      Require(list->GetChannelInfoByIndex(now.index(), record.Receive()), "save", file,
              "a channel is not to be found");
      WriteRecord(Inside::Of(now), record.Get(), file);
    }
    for (; next != m_meant.end(); ++next) Add(list, *next, file);
  }

  static void Add(IChannelInfoMgr* list, const channel& added, const std::string& file) {
    ComPtr<IChannelInfo> record;
    Require(list->CreateChannelInfo(record.Receive()), "save", file, "no record can be made");
    record->SetChannelIndex(added.index());  // answers E_NOTIMPL and stores it
    WriteRecord(Inside::Of(added), record.Get(), file);
    Require(list->AddChannelInfo(record.Get()), "save", file, "a channel cannot be added");
  }

  const channel_list& m_before;
  const channel_list& m_meant;
};

/// Raises an error where the preformatted form would not hold what the list or the file has.
inline void RequirePreformattable(const channel_list& list, const std::optional<std::string>& bytes,
                                  const Location& location) {
  const auto refuse = [](const std::string& where, const char* reason) {
    throw error(E_INVALIDARG, "save in the preformatted form", where, reason);
  };
  if (bytes && HoldsBlankByNumber(*bytes)) {
    refuse(location.File(kChannelFile), "a value holds a tab or a line end");
  }
  for (const channel& next : list) {
    ForEachRow(Inside::ContextOf(next)->BlockLayout(), [&](const Field& row) {
      if (row.form != Form::Text) return;
      if (std::get<std::string>(next.get(row.attribute)).find_first_of("&<\"\t\r\n") ==
          std::string::npos) {
        return;
      }
      refuse(std::string(row.attribute) + " of channel " + std::to_string(next.index()) + " in " +
                 location.Place(),
             "it holds a character that the form cannot keep");
    });
  }
}

/// What was just written. Raises an error of saving where that cannot be read.
inline channel_list ReadBack(const Location& location) {
  try {
    return LoadChannels(location);
  } catch (const error& raised) {
    throw error(raised.result(), "save", location.File(kChannelFile),
                "what was written cannot be read back: " + raised.reason());
  }
}

/// Reads the channels of a file, changes them, and saves them. Answers what the file has then.
template <typename Change>
channel_list EditChannels(const Location& location, std::optional<file_form> form,
                          Change&& change) {
  return Guarded("save", location.File(kChannelFile), [&] {
    const ProvenSave save(location, kChannelFile);
    const channel_list before = LoadChannels(save.Copies());
    channel_list meant = before;
    std::invoke(change, meant);
    const ListChange difference(before, meant);
    difference.RequireStorable(location);
    if (difference.IsNone() && !form) return before;
    const file_form chosen = form.value_or(file_form::xml);
    if (chosen == file_form::preformatted) {
      RequirePreformattable(meant, ReadBytes(save.Copies().directory / kChannelFile), location);
    }
    save.Run([&](const Location& place) { difference.Write(place, chosen); },
             [&](const Location& place) {
               RequireSame(meant, ReadBack(place), location.File(kChannelFile));
             });
    return LoadChannels(location);
  });
}

}  // namespace detail
}  // namespace zortunedex

// What the four dishes receive.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "api/zortunedex/proof.hpp"
#include "api/zortunedex/satellites.hpp"

namespace zortunedex {

/// The bands that an assignment may be for.
enum class band {
  c,   ///< 3.4 to 4.8 GHz; "C-Band" in the file
  ku,  ///< 10.7 to 12.75 GHz; "Ku-Band" in the file
};

/// One satellite as received on one dish. Frequencies are in kHz.
struct dish_satellite {
  std::string id;                      ///< UTF-8; of the satellite, as satellite::id has it
  std::string band;                    ///< UTF-8; as the file names it
  std::uint32_t low = 0;               ///< local oscillator of the low band
  std::uint32_t high = 0;              ///< local oscillator of the high band
  std::uint32_t switch_frequency = 0;  ///< where the high band begins

  bool operator==(const dish_satellite&) const = default;
};

namespace detail {
struct DishAccess;
}

/// The satellites of the four dishes. Dishes are 1 to 4, places on a dish count from 1.
class dish_list {
 public:
  /// How many dishes there are.
  static constexpr unsigned count = 4;

  /// What a dish receives, in the order of the file. Raises an error for another dish.
  const std::vector<dish_satellite>& on(unsigned dish) const& { return m_dishes[PlaceOf(dish)]; }
  /// The same of a list that goes at once.
  std::vector<dish_satellite> on(unsigned dish) && { return std::move(m_dishes[PlaceOf(dish)]); }

  /// Puts a satellite on a dish, and answers its place. One that is there in that band already gets
  /// the new LNB. Raises an error for a dish that there is not.
  unsigned assign(unsigned dish, const satellite& received, zortunedex::band in,
                  const lnb_type& lnb) {
    const char* name = in == zortunedex::band::c ? "C-Band" : "Ku-Band";
    return assign(dish, {received.id, name, lnb.low, lnb.high, lnb.switch_frequency});
  }
  /// The same with its values. Raises an error for a text that is empty, no UTF-8, or one that no
  /// file can hold.
  unsigned assign(unsigned dish, const dish_satellite& entry) {
    std::vector<dish_satellite>& entries = m_dishes[PlaceOf(dish)];
    for (const std::string& text : {entry.id, entry.band}) {
      const char* reason = text.empty() ? "a text is empty" : detail::WhyRefused(text);
      if (reason != nullptr) throw error(E_INVALIDARG, "assign a satellite to", Name(dish), reason);
    }
    return Put(entries, entry);
  }
  /// Takes away what stands at a place of a dish. Raises an error where nothing does.
  void remove(unsigned dish, unsigned place) {
    std::vector<dish_satellite>& entries = m_dishes[PlaceOf(dish)];
    if (place == 0 || place > entries.size()) {
      throw error(E_INVALIDARG, "take satellite " + std::to_string(place) + " from", Name(dish),
                  "there is none at that place");
    }
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(place) - 1);
  }
  /// Takes everything from a dish.
  void clear(unsigned dish) { m_dishes[PlaceOf(dish)].clear(); }

  /// True where all dishes receive the same.
  bool operator==(const dish_list&) const = default;

 private:
  friend struct detail::DishAccess;

  static unsigned Put(std::vector<dish_satellite>& entries, const dish_satellite& entry) {
    const auto isOlder = [&](const dish_satellite& other) {
      return other.id == entry.id && other.band == entry.band;
    };
    const auto first = std::find_if(entries.begin(), entries.end(), isOlder);
    const auto place = static_cast<unsigned>(first - entries.begin()) + 1;
    if (first == entries.end()) {
      entries.push_back(entry);
    } else {
      *first = entry;
      entries.erase(std::remove_if(first + 1, entries.end(), isOlder), entries.end());
    }
    return place;
  }
  static std::string Name(unsigned dish) { return "dish " + std::to_string(dish); }
  static std::size_t PlaceOf(unsigned dish) {
    if (dish >= 1 && dish <= count) return dish - 1;
    throw error(E_INVALIDARG, "use", Name(dish), "dishes are 1 to 4");
  }

  std::array<std::vector<dish_satellite>, count> m_dishes;
};

namespace detail {

inline dish_satellite ReadAssignment(IDishSatInfo* record, const std::string& file) {
  DWORD low = 0;
  DWORD high = 0;
  DWORD switchover = 0;
  RequireAll(
      {record->GetLowFreq(&low), record->GetHighFreq(&high), record->GetSwitchFreq(&switchover)},
      file);
  return {TextOf(record, &IDishSatInfo::GetID, file), TextOf(record, &IDishSatInfo::GetBand, file),
          low, high, switchover};
}

/// Dishes and their entries counted from 0, as the library has them.
using DishTable = std::array<std::vector<dish_satellite>, dish_list::count>;

struct DishAccess {
  static DishTable& Of(dish_list& list) { return list.m_dishes; }
  static const DishTable& Of(const dish_list& list) { return list.m_dishes; }
  /// dish_list::assign for a dish from 1 to 4 and texts that somebody else judges.
  static unsigned Put(dish_list& list, unsigned dish, const dish_satellite& entry) {
    return dish_list::Put(list.m_dishes[dish - 1], entry);
  }
};

inline ComPtr<IDishSatInfoMgr> DishesOf(const Opened& database, const std::string& file) {
  ComPtr<IDishSatInfoMgr> list;
  // Answers a reference count.
  Require(database->GetDishSatInfoMgr(list.Receive()), "read", file, "there is no list");
  return list;
}

/// What the library reads: nothing of a file that it cannot read.
inline dish_list TakeDishes(const Location& location) {
  const std::string file = location.File(kSettingsFile);
  const Opened database(location.For(signal::dvb_satellite));
  const ComPtr<IDishSatInfoMgr> list = DishesOf(database, file);
  dish_list dishes;
  for (UINT dish = 0; dish < dish_list::count; ++dish) {
    UINT count = 0;
    Require(list->GetDishSatCount(&count, dish), "read", file, "assignments cannot be counted");
    for (UINT i = 0; i < count; ++i) {
      ComPtr<IDishSatInfo> record;
      Require(list->GetDishSatInfoByIndex(record.Receive(), dish, i), "read", file,
              "an assignment is missing");
      DishAccess::Of(dishes)[dish].push_back(ReadAssignment(record.Get(), file));
    }
  }
  return dishes;
}

inline dish_list ReadDishes(const Location& location) {
  return Guarded("read", location.File(kSettingsFile), [&] {
    dish_list dishes = TakeDishes(location);
    if (dishes == dish_list()) RequireReadable(location, kSettingsFile);
    return dishes;
  });
}

inline dish_list WithoutRepeated(dish_list dishes) {
  for (std::vector<dish_satellite>& dish : DishAccess::Of(dishes)) {
    std::vector<dish_satellite> kept;
    for (dish_satellite& entry : dish) {
      if (std::find(kept.begin(), kept.end(), entry) == kept.end())
        kept.push_back(std::move(entry));
    }
    dish = std::move(kept);
  }
  return dishes;
}

inline void AddAssignment(IDishSatInfoMgr* list, UINT dish, UINT place, const dish_satellite& entry,
                          const std::string& file) {
  const Bstr id(*ToWide(entry.id));
  const Bstr band(*ToWide(entry.band));
  ComPtr<IDishSatInfo> record;
  Require(list->CreateDishSatInfo(record.Receive()), "save", file, "no record can be made");
  for (const HRESULT result :
       {record->SetIndex(place), record->SetID(id.Get()), record->SetBand(band.Get()),
        record->SetLowFreq(entry.low), record->SetHighFreq(entry.high),
        record->SetSwitchFreq(entry.switch_frequency)}) {
    Require(result, "save", file, "an assignment is not taken");
  }
  Require(list->AddDishSatInfo(record.Get(), dish), "save", file, "an assignment is not added");
}

/// Makes a directory's file hold these assignments. The elements of those that stay in front, if
/// told, are kept; else all are written afresh, since saving never takes one away.
inline void WriteDishes(const Location& location, const dish_list& meant,
                        const DishTable* staying) {
  const std::string file = location.File(kSettingsFile);
  const Opened database(location.For(signal::dvb_satellite));
  const ComPtr<IDishSatInfoMgr> list = DishesOf(database, file);
  if (staying == nullptr) Require(list->Clear(), "save", file, "the dishes cannot be cleared");
  const DishTable& dishes = DishAccess::Of(meant);
  for (UINT dish = 0; dish < dishes.size(); ++dish) {
    const std::size_t first = staying != nullptr ? (*staying)[dish].size() : 0;
    for (std::size_t i = first; i < dishes[dish].size(); ++i) {
      AddAssignment(list.Get(), dish, static_cast<UINT>(i), dishes[dish][i], file);
    }
  }
  Require(database->SaveUserSettingsToFile(), "save", file,
          "it has no element for a dish that receives something");
}

/// One change of the dishes, from what a file had to what it shall have.
class DishChange {
 public:
  DishChange(const dish_list& before, dish_list meant)
      : m_before(DishAccess::Of(before)), m_meant(WithoutRepeated(std::move(meant))) {}

  /// What the file shall have: what stands twice on a dish is one assignment.
  const dish_list& Meant() const { return m_meant; }

  /// Does it in a directory that has what was before. Where assignments are only added the others
  /// keep their elements.
  void Write(const Location& location) const {
    WriteDishes(location, m_meant, OnlyAdds() ? &m_before : nullptr);
  }

  /// Raises an error where an assignment that stays may be more in the file than what was read of
  /// it, and would be written as that: a text that was cut, or that the code page lacks.
  void RequireWhole(const std::string& file) const {
    const DishTable& meant = DishAccess::Of(m_meant);
    for (std::size_t dish = 0; dish < meant.size(); ++dish) {
      for (const dish_satellite& entry : m_before[dish]) {
        const bool stays =
            std::find(meant[dish].begin(), meant[dish].end(), entry) != meant[dish].end();
        if (!stays || (IsWhole(entry.id) && IsWhole(entry.band))) continue;
        throw error(E_FAIL, "save", file,
                    "a text of an assignment is too long, or outside the code page, to be kept");
      }
    }
  }

 private:
  static bool IsWhole(std::string_view text) {
    constexpr std::size_t kMayBeCut = 256;
    return text.size() < kMayBeCut && text.find('?') == text.npos &&
           text.find("\xEF\xBF\xBD") == text.npos;
  }

  bool OnlyAdds() const {
    const DishTable& meant = DishAccess::Of(m_meant);
    for (std::size_t dish = 0; dish < meant.size(); ++dish) {
      if (m_before[dish].size() > meant[dish].size() ||
          !std::equal(m_before[dish].begin(), m_before[dish].end(), meant[dish].begin())) {
        return false;
      }
    }
    return true;
  }

  DishTable m_before;
  dish_list m_meant;
};

/// Reads what the dishes receive, changes it, and saves it.
template <typename Change>
void EditDishes(const Location& location, Change&& change) {
  const std::string file = location.File(kSettingsFile);
  Guarded("save", file, [&] {
    const ProvenSave save(location, kSettingsFile);
    const dish_list before = ReadDishes(save.Copies());
    dish_list meant = before;
    std::invoke(change, meant);
    if (meant == before) return;
    const DishChange difference(before, std::move(meant));
    difference.RequireWhole(file);
    save.Run([&](const Location& place) { difference.Write(place); },
             [&](const Location& place) {
               if (ReadDishes(place) == difference.Meant()) return;
               throw error(E_FAIL, "save", file, "it would not hold what the dishes shall receive");
             });
  });
}

}  // namespace detail
}  // namespace zortunedex

#include "kit/satellites/dish_settings.h"

#include <algorithm>
#include <filesystem>

#include "kit/failure.h"
#include "kit/files/file_scan.h"
#include "kit/files/scratch_directory.h"
#include "kit/files/unreadable_watch.h"
#include "kit/model/narrow_text.h"
#include "kit/saving/save_watch.h"
#include "kit/saving/stored_form.h"
#include "kit/text/ascii.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace {

const char* const kFile = "UserSettings.xml";

ComPtr<IDishSatInfoMgr> ListOf(const Database& database) {
  ComPtr<IDishSatInfoMgr> list;
  // Answers a reference count.
  Require(database->GetDishSatInfoMgr(list.Receive()), "there is no list of dishes");
  return list;
}

DishSatellite Read(IDishSatInfo* record) {
  Bstr id;
  Bstr band;
  DishSatellite satellite;
  const HRESULT results[] = {record->GetID(id.Receive()), record->GetBand(band.Receive()),
                             record->GetLowFreq(&satellite.low),
                             record->GetHighFreq(&satellite.high),
                             record->GetSwitchFreq(&satellite.switchover)};
  for (const HRESULT hr : results) Require(hr, "an assignment cannot be read");
  satellite.id = id.View();
  satellite.band = band.View();
  return satellite;
}

void Add(IDishSatInfoMgr* list, UINT dish, UINT index, const DishSatellite& satellite) {
  ComPtr<IDishSatInfo> record;
  Require(list->CreateDishSatInfo(record.Receive()), "a record cannot be made");
  const HRESULT results[] = {record->SetIndex(index),
                             record->SetID(Bstr(satellite.id).Get()),
                             record->SetBand(Bstr(satellite.band).Get()),
                             record->SetLowFreq(satellite.low),
                             record->SetHighFreq(satellite.high),
                             record->SetSwitchFreq(satellite.switchover)};
  for (const HRESULT hr : results) Require(hr, "an assignment cannot be stored");
  Require(list->AddDishSatInfo(record.Get(), dish), "an assignment cannot be added");
}

/// Saving never takes an element away: clearing the list does, and all are written afresh.
HRESULT Write(const Location& location, const Dishes& dishes) {
  const Database database(location);
  const ComPtr<IDishSatInfoMgr> list = ListOf(database);
  Require(list->Clear(), "the dishes cannot be cleared");
  for (UINT dish = 0; dish < dishes.size(); ++dish) {
    for (std::size_t i = 0; i < dishes[dish].size(); ++i) {
      Add(list.Get(), dish, static_cast<UINT>(i), dishes[dish][i]);
    }
  }
  return database->SaveUserSettingsToFile();
}

void DropRepeated(Dishes& dishes, const TakeNote& note) {
  for (std::size_t dish = 0; dish < dishes.size(); ++dish) {
    std::vector<DishSatellite> kept;
    for (const DishSatellite& satellite : dishes[dish]) {
      if (std::find(kept.begin(), kept.end(), satellite) == kept.end()) kept.push_back(satellite);
    }
    if (kept.size() == dishes[dish].size()) continue;
    Tell(note,
         "dish " + std::to_string(dish + 1) + " had an assignment more than once; it is kept once");
    dishes[dish] = std::move(kept);
  }
}

void RequireText(const NarrowText& narrow, const char* attribute, WideView text) {
  const std::string name = std::string(attribute) + " of an assignment";
  narrow.Require(text, NarrowText::kAttributeLimit, name);
  RequireWritable(text, false, name);
}

/// Reading stops at what is no digit, and wraps.
void RequireNumber(const char* attribute, std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
  const std::string_view number = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
  if (number.empty()) return;
  const bool isPositive = number.starts_with('+');
  const std::string_view digits = number.substr(isPositive || number.starts_with('-') ? 1 : 0);
  const bool isDecimal = digits.find_first_not_of("0123456789") == std::string_view::npos;
  if (isDecimal && ParseNumber(isPositive ? digits : number, INT32_MIN, UINT32_MAX)) return;
  throw Failure{E_INVALIDARG, std::string(attribute) + " of an assignment is '" +
                                  std::string(text) + "', which is no number of 32 bits"};
}

/// What was loaded may be less than what the element holds: texts come cut and through the code
/// page, numbers up to the first other character, and what is inside does not come at all.
void RequireWhole(const NarrowText& narrow, const file_scan::Tag& assignment) {
  for (const char* attribute : {"id", "band"}) {
    const std::string* value = assignment.Find(attribute);
    const std::optional<WideText> wide = utf::ToWide(value == nullptr ? "" : *value);
    if (wide) RequireText(narrow, attribute, *wide);
  }
  for (const char* attribute : {"LNB_Low", "LNB_High", "LNB_Switch"}) {
    const std::string* value = assignment.Find(attribute);
    if (value != nullptr) RequireNumber(attribute, *value);
  }
  if (assignment.hasContent) {
    throw Failure{E_INVALIDARG, "an assignment holds elements, text or comments of its own"};
  }
}

/// Raises a Failure when an assignment would not be what it was after all are written afresh.
void RequireKept(const Location& location, const Dishes& dishes) {
  const Database database(location);
  const NarrowText narrow(database);
  for (const std::vector<DishSatellite>& dish : dishes) {
    for (const DishSatellite& satellite : dish) {
      RequireText(narrow, "id", satellite.id);
      RequireText(narrow, "band", satellite.band);
    }
  }
  const std::string xml = file_scan::ReadWhole(file_scan::FileIn(location.directory, kFile));
  // Where nothing is left nothing has to come back.
  if (dishes == Dishes()) return;
  file_scan::ForEachTag(xml, [&narrow](const file_scan::Tag& tag) {
    if (tag.name == "SAT") RequireWhole(narrow, tag);
  });
}

/// Copies the file, if there is one, to where things are tried.
Location CopyTo(const ScratchDirectory& scratch, const Location& location) {
  const fs::path file = file_scan::FileIn(location.directory, kFile);
  std::error_code error;
  if (fs::exists(file)) fs::copy_file(file, file_scan::FileIn(scratch.Path(), kFile), error);
  if (error) throw Failure{E_FAIL, std::string(kFile) + " cannot be read"};
  return {scratch.Path(), location.country, location.signal};
}

/// Does everything in another directory. Raises a Failure when it does not come out there.
void Rehearse(const Location& location, const Dishes& meant) {
  const ScratchDirectory scratch;
  const Location rehearsal = CopyTo(scratch, location);
  const HRESULT hr = Write(rehearsal, meant);
  const Dishes found = ReadDishes(rehearsal, Unreadable::TakeAsEmpty);
  for (std::size_t dish = 0; dish < meant.size(); ++dish) {
    if (meant[dish].empty() || !found[dish].empty()) continue;
    const std::string number = std::to_string(dish + 1);
    std::string message = kFile;
    message += " has no DISH_" + number;
    message += " element: it cannot hold satellites of dish " + number;
    throw Failure{E_FAIL, message += ". It was left as it was"};
  }
  Require(hr, std::string(kFile) + " cannot be written");
  if (found != meant) {
    throw Failure{E_FAIL, std::string(kFile) + " would not hold these assignments"};
  }
}

}  // namespace

Dishes ReadDishes(const Location& location, Unreadable unreadable) {
  const Database database(location);
  const ComPtr<IDishSatInfoMgr> list = ListOf(database);
  Dishes dishes;
  for (UINT dish = 0; dish < dishes.size(); ++dish) {
    UINT count = 0;
    Require(list->GetDishSatCount(&count, dish), "assignments cannot be counted");
    for (UINT i = 0; i < count; ++i) {
      ComPtr<IDishSatInfo> record;
      Require(list->GetDishSatInfoByIndex(record.Receive(), dish, i), "an assignment is missing");
      dishes[dish].push_back(Read(record.Get()));
    }
  }
  const bool mayBeUnread = dishes == Dishes() && unreadable == Unreadable::Refuse;
  if (mayBeUnread) RequireReadable(location.directory, kFile);
  return dishes;
}

Dishes SaveDishes(const Location& location, Dishes meant, const SaveOptions& options) {
  if (options.unreadable == Unreadable::Refuse) RequireReadable(location.directory, kFile);
  RequireKept(location, meant);
  DropRepeated(meant, options.note);
  Rehearse(location, meant);
  SaveWatch(location.directory, kFile).Run([&] {
    const UnreadableWatch watch(location.directory, kFile);
    Require(Write(location, meant), std::string(kFile) + " was not written");
    watch.Report(options.note);
    if (ReadDishes(location, Unreadable::TakeAsEmpty) != meant) {
      throw Failure{E_FAIL, std::string(kFile) + " is not what was meant after saving"};
    }
  });
  return meant;
}

}  // namespace zortunedex::kit

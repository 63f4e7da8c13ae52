#include "kit/satellites/dish_settings.h"

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

HRESULT Write(const Location& location, const Dishes& dishes) {
  try {
    detail::WriteDishes(InLibrary(location), dishes, nullptr);
    return S_OK;
  } catch (const error& raised) {
    return raised.result();
  }
}

Dishes DropRepeated(const Dishes& dishes, const TakeNote& note) {
  Dishes kept = detail::WithoutRepeated(dishes);
  for (unsigned dish = 1; dish <= Dishes::count; ++dish) {
    if (kept.on(dish).size() == dishes.on(dish).size()) continue;
    Tell(note,
         "dish " + std::to_string(dish) + " had an assignment more than once; it is kept once");
  }
  return kept;
}

void RequireText(const NarrowText& narrow, const char* attribute, const std::string& utf8) {
  const std::optional<WideText> text = utf::ToWide(utf8);
  if (!text) return;
  const std::string name = std::string(attribute) + " of an assignment";
  narrow.Require(*text, NarrowText::kAttributeLimit, name);
  RequireWritable(*text, false, name);
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
    if (value != nullptr) RequireText(narrow, attribute, *value);
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
  for (unsigned dish = 1; dish <= Dishes::count; ++dish) {
    for (const DishSatellite& satellite : dishes.on(dish)) {
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
  for (unsigned dish = 1; dish <= Dishes::count; ++dish) {
    if (meant.on(dish).empty() || !found.on(dish).empty()) continue;
    const std::string number = std::to_string(dish);
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
  Dishes dishes;
  try {
    dishes = detail::TakeDishes(InLibrary(location));
  } catch (const error& raised) {
    Raise(raised, location, raised.reason());
  }
  const bool mayBeUnread = dishes == Dishes() && unreadable == Unreadable::Refuse;
  if (mayBeUnread) RequireReadable(location.directory, kFile);
  return dishes;
}

Dishes SaveDishes(const Location& location, Dishes meant, const SaveOptions& options) {
  if (options.unreadable == Unreadable::Refuse) RequireReadable(location.directory, kFile);
  RequireKept(location, meant);
  meant = DropRepeated(meant, options.note);
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

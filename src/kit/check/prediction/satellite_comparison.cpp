#include "kit/check/prediction/satellite_comparison.h"

#include <algorithm>
#include <set>

#include "kit/check/findings/report.h"
#include "kit/check/prediction/satellite_prediction.h"
#include "kit/check/subject/files.h"
#include "kit/failure.h"
#include "kit/files/scratch_directory.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Index;
using markup::kNone;
using Elements = SatellitePrediction::Elements;

/// What the library reads of one file alone.
template <typename Read>
auto ReadByTheLibrary(std::string_view name, std::string_view bytes, Read read) {
  const ScratchDirectory scratch;
  data_files::WriteCopy(data_files::PathOf(scratch.Path(), name), name, bytes);
  return read(Location{scratch.Path(), 1, InputSignalDVBSatellite});
}

/// Reports at the elements of a list in which two readings differ.
class ListComparison {
 public:
  ListComparison(const Document& document, std::string_view file)
      : m_report(document, std::string(file), m_findings) {}

  template <typename Record>
  void Compare(const Elements& elements, const std::vector<Record>& predicted,
               const std::vector<Record>& read, const char* kind, Index holder = 0) {
    if (predicted.size() != read.size()) {
      m_report.Add("ZT900", holder,
                   std::to_string(predicted.size()) + " " + kind +
                       "s stand there, the library reads " + std::to_string(read.size()));
      return;
    }
    for (std::size_t i = 0; i < read.size(); ++i) {
      if (predicted[i] == read[i]) continue;
      m_report.Add("ZT900", elements[i],
                   std::string("the library reads this ") + kind + " otherwise");
    }
  }

  void Add(const std::string& text) { m_report.Add("ZT900", 0, text); }
  std::vector<Finding> Findings() { return std::move(m_findings); }

 private:
  std::vector<Finding> m_findings;
  Report m_report;
};

/// Satellites, transponders, LNB types and assignments that findings are about.
class ConcernedElements {
 public:
  ConcernedElements(const Document& document, const std::vector<const Finding*>& findings) {
    constexpr std::string_view kRecords[] = {"Satellite", "Transponder", "LNB", "SAT"};
    const auto elements = document.Elements();
    for (const Finding* finding : findings) {
      Index element = finding->element;
      while (element != kNone && std::ranges::find(kRecords, document.NameOf(elements[element])) ==
                                     std::end(kRecords)) {
        element = elements[element].parent;
      }
      if (element != kNone) m_elements.insert(element);
    }
  }

  bool Has(Index element) const { return m_elements.contains(element); }

 private:
  std::set<Index> m_elements;
};

/// Two readings of a file, before and after a repair.
class SatellitePreservation {
 public:
  SatellitePreservation(const Document& before, const std::vector<const Finding*>& mended,
                        const Document& after, CodePageText& text)
      : m_concerned(before, mended), m_before(before, text), m_after(after, text) {}

  std::optional<std::string> OfCatalogue() {
    const Elements before = m_before.Satellites();
    const Elements after = m_after.Satellites();
    if (before.size() > after.size()) return "a satellite would be gone";
    for (std::size_t i = 0; i < before.size(); ++i) {
      const bool isSame = m_concerned.Has(before[i]) ||
                          m_before.SatelliteOf(before[i]) == m_after.SatelliteOf(after[i]);
      if (!isSame) return "satellite " + std::to_string(i + 1) + " would not be what it is";
      for (const std::string_view band : kBandNames) {
        if (AreKept(m_before.Transponders(before[i], band), m_after.Transponders(after[i], band),
                    &SatellitePrediction::TransponderOf)) {
          continue;
        }
        return "transponders of satellite " + std::to_string(i + 1) + " would not be what they are";
      }
    }
    if (AreKept(m_before.Lnbs(), m_after.Lnbs(), &SatellitePrediction::LnbOf)) return std::nullopt;
    return "LNB types would not be what they are";
  }

  std::optional<std::string> OfDishes() {
    for (std::size_t dish = 0; dish < Dishes::count; ++dish) {
      if (AreKept(m_before.Assignments(dish), m_after.Assignments(dish),
                  &SatellitePrediction::AssignmentOf)) {
        continue;
      }
      return "assignments of dish " + std::to_string(dish + 1) + " would not be what they are";
    }
    return std::nullopt;
  }

 private:
  /// Those that nothing is about are there afterwards, in their order.
  template <typename Record>
  bool AreKept(const Elements& before, const Elements& after,
               Record (SatellitePrediction::*read)(Index)) {
    auto next = after.begin();
    return std::ranges::all_of(before, [&](Index element) {
      if (m_concerned.Has(element)) return true;
      const Record wanted = (m_before.*read)(element);
      while (next != after.end() && !((m_after.*read)(*next) == wanted)) ++next;
      if (next == after.end()) return false;
      ++next;
      return true;
    });
  }

  ConcernedElements m_concerned;
  SatellitePrediction m_before;
  SatellitePrediction m_after;
};

}  // namespace

std::vector<Finding> CompareCatalogue(const Document& document, std::string_view bytes,
                                      CodePageText& text) {
  ListComparison comparison(document, kCatalogue);
  SatellitePrediction prediction(document, text);
  const SatelliteCatalogue predicted = prediction.Catalogue();
  try {
    const SatelliteCatalogue read = ReadByTheLibrary(kCatalogue, bytes, ReadCatalogue);
    comparison.Compare(prediction.Satellites(), predicted.satellites, read.satellites, "satellite");
    comparison.Compare(prediction.Lnbs(), predicted.lnbs, read.lnbs, "LNB type");
  } catch (const Failure& failure) {
    comparison.Add(std::string("the library does not read the catalogue: ") + failure.what());
  }
  return comparison.Findings();
}

std::vector<Finding> CompareDishes(const Document& document, std::string_view bytes,
                                   CodePageText& text) {
  ListComparison comparison(document, kSettings);
  SatellitePrediction prediction(document, text);
  const detail::DishTable predicted = prediction.AllDishes();
  const Dishes read = ReadByTheLibrary(kSettings, bytes, [](const Location& location) {
    return ReadDishes(location, Unreadable::TakeAsEmpty);
  });
  for (unsigned dish = 0; dish < Dishes::count; ++dish) {
    comparison.Compare(prediction.Assignments(dish), predicted[dish], read.on(dish + 1),
                       "assignment");
  }
  return comparison.Findings();
}

std::optional<std::string> WhatIsLostOfCatalogue(const Document& before,
                                                 const std::vector<const Finding*>& mended,
                                                 const Document& after, CodePageText& text) {
  return SatellitePreservation(before, mended, after, text).OfCatalogue();
}

std::optional<std::string> WhatIsLostOfDishes(const Document& before,
                                              const std::vector<const Finding*>& mended,
                                              const Document& after, CodePageText& text) {
  return SatellitePreservation(before, mended, after, text).OfDishes();
}

}  // namespace zortunedex::kit::check

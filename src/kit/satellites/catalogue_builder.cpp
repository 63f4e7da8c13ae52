#include "kit/satellites/catalogue_builder.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/files/whole_file.h"
#include "kit/saving/stored_form.h"
#include "kit/text/satellite_words.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

using catalogue_table::FileName;
using catalogue_table::Malformed;
using catalogue_table::Position;
using catalogue_table::Table;

namespace {

constexpr std::uintmax_t kLargestFile = 16'000'000;

std::string NameOf(const fs::path& path) {
  const std::u8string name = path.filename().u8string();
  return {name.begin(), name.end()};
}

std::string ReadFile(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) throw Malformed{"it is no regular file"};
  const std::uintmax_t size = fs::file_size(path, error);
  if (!error && size > kLargestFile) throw Malformed{"it is larger than 16 MB"};
  std::optional<std::string> bytes = whole_file::Read(path);
  if (error || !bytes) throw Malformed{"it cannot be read"};
  return *std::move(bytes);
}

std::string Text(const std::string& bytes) {
  if (!utf::ToWide(bytes)) throw Malformed{"its name is not UTF-8"};
  return bytes;
}

/// All that the catalogue holds of a transponder but its name.
bool SameTuning(Transponder a, const Transponder& b) {
  a.name = b.name;
  return a == b;
}

}  // namespace

ESatRegion RegionAt(LONG longitude) {
  if (longitude >= 0) return longitude < 730 ? RegionEurope : RegionAsia;
  if (longitude > -610) return RegionAtlantic;
  return longitude >= -1600 ? RegionAmerica : RegionAsia;
}

void CatalogueBuilder::TakeFolder(const std::string& folder) {
  const fs::path path = whole_file::PathOf(folder);
  std::error_code error;
  if (!fs::is_directory(path, error)) throw Failure{E_INVALIDARG, folder + " is no folder"};
  std::vector<fs::path> files;
  for (auto entry = fs::directory_iterator(path, error);
       !error && entry != fs::directory_iterator(); entry.increment(error)) {
    files.push_back(entry->path());
  }
  if (error) throw Failure{E_FAIL, folder + " cannot be read"};
  std::sort(files.begin(), files.end(),
            [](const fs::path& a, const fs::path& b) { return NameOf(a) < NameOf(b); });
  for (const fs::path& file : files) {
    try {
      TakeFile(file);
    } catch (const Malformed& malformed) {
      m_report.LeaveOutFile(NameOf(file), malformed.reason);
    }
  }
}

std::vector<Satellite> CatalogueBuilder::Satellites() {
  std::stable_sort(m_satellites.begin(), m_satellites.end(),
                   [](const Satellite& a, const Satellite& b) {
                     return a.longitude != b.longitude ? a.longitude < b.longitude : a.id < b.id;
                   });
  return std::move(m_satellites);
}

void CatalogueBuilder::TakeFile(const fs::path& path) {
  const std::string file = NameOf(path);
  const Table table = catalogue_table::Read(ReadFile(path));
  const FileName name = catalogue_table::ParseFileName(file);
  Satellite satellite = MakeSatellite(file, name, table);
  TakeEntries(file, table, satellite);
  if (satellite.c_band.empty() && satellite.ku_band.empty()) {
    throw Malformed{"none of its transponders can be used"};
  }
  m_ids.insert(satellite.id);
  if (name.position && table.position && name.position->longitude != table.position->longitude) {
    m_report.TwoPositions(file, PositionText(name.position->longitude),
                          PositionText(table.position->longitude));
  }
  if (satellite.longitude < 0) {
    m_report.NotHeld("the side of positions in the west (written as a negative pos)");
  }
  m_report.NotHeld("divisions: the tables do not tell them (written as Unknown)");
  m_satellites.push_back(std::move(satellite));
}

Satellite CatalogueBuilder::MakeSatellite(const std::string& file, const FileName& name,
                                          const Table& table) {
  const std::optional<Position> position = name.position ? name.position : table.position;
  if (!position) throw Malformed{"neither its name nor its header tells an orbital position"};
  std::string text = table.satellite;
  if (text.empty()) {
    text = name.base;
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '-' || c == '_'; }, ' ');
  }
  Satellite satellite;
  satellite.id = Text(name.id);
  satellite.name = Text(text + " " + PositionText(position->longitude));
  for (const std::string& kept : {satellite.id, satellite.name}) {
    if (!IsKept(kept)) {
      throw Malformed{"its name is longer than 259 bytes or no text of the code page"};
    }
  }
  if (m_ids.contains(satellite.id)) throw Malformed{"another file has the same id " + name.id};
  satellite.longitude = position->longitude;
  satellite.region = RegionAt(position->longitude);
  if (position->rounded) m_report.NotHeld("parts of a tenth of a degree (" + file + ")");
  return satellite;
}

void CatalogueBuilder::TakeEntries(const std::string& file, const Table& table,
                                   Satellite& satellite) {
  for (const catalogue_table::Entry& entry : table.entries) {
    try {
      ReadEntry read = ReadTableEntry(entry);
      std::vector<Transponder>& band =
          read.band == SatFreqBand_CBand ? satellite.c_band : satellite.ku_band;
      const bool twice = std::any_of(band.begin(), band.end(), [&read](const Transponder& other) {
        return SameTuning(read.transponder, other);
      });
      if (twice) throw UnusableEntry{"the catalogue cannot tell it from one before it"};
      AddTitle(entry.title, read);
      for (const std::string& what : read.notHeld) m_report.NotHeld(what);
      band.push_back(std::move(read.transponder));
    } catch (const UnusableEntry& unusable) {
      m_report.LeaveOutEntry(file, entry.line, unusable.reason);
    }
  }
}

bool CatalogueBuilder::IsKept(const std::string& text) const {
  const WideText wide = *utf::ToWide(text);
  const std::optional<std::string> narrow = m_narrow.FromWide(wide);
  return narrow && narrow->size() <= NarrowText::kAttributeLimit && !Unwritable(wide, false);
}

void CatalogueBuilder::AddTitle(const std::string& title, ReadEntry& entry) const {
  if (title.empty()) return;
  std::string name = entry.transponder.name + " " + title;
  if (IsKept(name)) {
    entry.transponder.name = std::move(name);
  } else {
    entry.notHeld.emplace_back("titles longer than 259 bytes or outside the code page");
  }
}

}  // namespace zortunedex::kit

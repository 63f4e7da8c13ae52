#include "kit/presets/presets.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/model/channel_list.h"
#include "kit/model/narrow_text.h"
#include "kit/reading/readable.h"

namespace zortunedex::kit {

namespace {

/// Reads one database's presets. Its document is not to be saved afterwards.
class Reader {
 public:
  explicit Reader(const Database& database) : m_database(database), m_narrow(database) {}

  /// False when there is no such area.
  bool Read(PresetArea& area) const {
    CHAR name[260] = {};
    if (FAILED(m_database->GetAreaNameByIndex(area.number, name))) return false;
    area.name = m_narrow.ToWide(name);
    Require(m_database->GetSubAreaCount(area.number, &area.count), "sub-areas cannot be counted");
    for (LONG number = 0; number < area.count; ++number) {
      PresetList list;
      list.number = number;
      if (Read(area.number, list)) area.lists.push_back(std::move(list));
    }
    return true;
  }

 private:
  bool Read(LONG area, PresetList& list) const {
    CHAR name[260] = {};
    if (FAILED(m_database->GetSubAreaNameByIndex(area, list.number, name))) return false;
    list.name = m_narrow.ToWide(name);
    ComPtr<IChannelInfoMgr> channels;
    Require(m_database->GetPresetChannelMgr(area, list.number, channels.Receive()),
            "a preset list cannot be made");
    if (!channels) throw Failure{E_OUTOFMEMORY, "a preset list cannot be made"};
    list.channels = ReadChannels(channels.Get());
    return true;
  }

  const Database& m_database;
  NarrowText m_narrow;
};

std::string Place(LONG area, LONG subArea) {
  return "sub-area " + std::to_string(subArea) + " of area " + std::to_string(area);
}

[[noreturn]] void Refuse(const std::string& what) {
  throw Failure{E_FAIL, "PreSetChannelInfo.xml is not what was meant after saving: " + what};
}

void RequireSame(const PresetArea& meant, const PresetArea& found) {
  const std::string area = "area " + std::to_string(meant.number);
  if (meant.number != found.number || meant.name != found.name) Refuse(area);
  if (meant.count != found.count || meant.lists.size() != found.lists.size()) {
    Refuse(std::to_string(found.count) + " sub-areas instead of " + std::to_string(meant.count) +
           " in " + area);
  }
  for (std::size_t i = 0; i < meant.lists.size(); ++i) {
    const PresetList& a = meant.lists[i];
    const PresetList& b = found.lists[i];
    const bool same =
        a.number == b.number && a.name == b.name && SameChannels(a.channels, b.channels);
    if (!same) Refuse(Place(meant.number, a.number));
  }
}

}  // namespace

Presets::Presets(const Location& location) {
  const Database database(location);
  if (database->LoadPresetOneSegChannelInfo() != S_OK) {
    RequireReadable(location.directory, "PreSetChannelInfo.xml");
    throw Failure{E_FAIL, "there is no PreSetChannelInfo.xml"};
  }
  Require(database->GetAreaCount(&m_areaCount),
          "PreSetChannelInfo.xml has no set of country 81 and signal type 176");
  Require(database->GetArea(&m_selectedArea, &m_selectedSubArea), "the selection cannot be read");
  const Reader reader(database);
  for (LONG number = 0; number < m_areaCount; ++number) {
    PresetArea area;
    area.number = number;
    if (reader.Read(area)) m_areas.push_back(std::move(area));
  }
}

const PresetArea& Presets::Area(LONG number) const {
  for (const PresetArea& area : m_areas) {
    if (area.number == number) return area;
  }
  throw Failure{E_FAIL, "no area " + std::to_string(number)};
}

PresetArea& Presets::ChangeCustomerArea() {
  const PresetArea& area = CustomerArea();
  return m_areas[static_cast<std::size_t>(&area - m_areas.data())];
}

const PresetList* Presets::FindList(LONG area, LONG subArea) const {
  for (const PresetArea& candidate : m_areas) {
    if (candidate.number != area) continue;
    for (const PresetList& list : candidate.lists) {
      if (list.number == subArea) return &list;
    }
  }
  return nullptr;
}

const PresetList& Presets::List(LONG area, LONG subArea) const {
  const PresetList* list = FindList(Area(area).number, subArea);
  if (list == nullptr) throw Failure{E_FAIL, "no " + Place(area, subArea)};
  return *list;
}

std::string CountText(std::size_t channels) {
  return std::to_string(channels) + (channels == 1 ? " channel" : " channels");
}

void RequireSamePresets(const Presets& meant, const Presets& found) {
  if (meant.AreaCount() != found.AreaCount() || meant.Areas().size() != found.Areas().size()) {
    Refuse(std::to_string(found.AreaCount()) + " areas instead of " +
           std::to_string(meant.AreaCount()));
  }
  for (std::size_t i = 0; i < meant.Areas().size(); ++i) {
    RequireSame(meant.Areas()[i], found.Areas()[i]);
  }
}

}  // namespace zortunedex::kit

#pragma once

#include <string>
#include <vector>

#include "kit/model/channel.h"
#include "kit/model/database.h"

namespace zortunedex::kit {

/// The channels of one sub-area; in the customer's area one of its lists.
struct PresetList {
  LONG number = 0;
  WideText name;
  std::vector<Channel> channels;
};

struct PresetArea {
  LONG number = 0;
  WideText name;
  LONG count = 0;  ///< sub-areas, those included that have a number out of line
  std::vector<PresetList> lists;
};

/// PreSetChannelInfo.xml read whole. Areas are looked for under the numbers 0 to count less one,
/// and so are sub-areas: those with other numbers are counted and not here.
class Presets {
 public:
  /// Raises a Failure when the file is missing, cannot be read or holds no presets.
  explicit Presets(const Location& location);

  const std::vector<PresetArea>& Areas() const { return m_areas; }
  /// How many areas the file has, found or not.
  LONG AreaCount() const { return m_areaCount; }
  /// Failure when there is none.
  const PresetArea& Area(LONG number) const;
  const PresetList& List(LONG area, LONG subArea) const;
  /// Null when there is none.
  const PresetList* FindList(LONG area, LONG subArea) const;
  bool IsCustomer(const PresetArea& area) const { return area.number == m_areaCount - 1; }
  /// Failure when there is none.
  const PresetArea& CustomerArea() const { return Area(m_areaCount - 1); }

  /// The selection as the library answers it: 0 and 0 also for a file that does not say.
  LONG SelectedArea() const { return m_selectedArea; }
  LONG SelectedSubArea() const { return m_selectedSubArea; }

  /// For comparisons with what is read back.
  PresetArea& ChangeCustomerArea();

 private:
  LONG m_areaCount = 0;
  LONG m_selectedArea = 0;
  LONG m_selectedSubArea = 0;
  std::vector<PresetArea> m_areas;
};

/// "1 channel", "2 channels".
std::string CountText(std::size_t channels);

/// Raises a Failure that names the first thing of the two that is not the same.
void RequireSamePresets(const Presets& meant, const Presets& found);

}  // namespace zortunedex::kit

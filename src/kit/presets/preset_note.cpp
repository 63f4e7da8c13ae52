#include "kit/presets/preset_note.h"

#include "kit/failure.h"
#include "kit/files/file_scan.h"
#include "kit/saving/save_watch.h"

namespace zortunedex::kit {

using file_scan::Tag;

namespace preset_note {
namespace {

// A selection above is read back as its low half.
constexpr LONG kHighest = 0xFFFF;

/// What the interfaces do not tell about the file.
struct Facts {
  bool sawSet = false;
  bool noted = false;
  bool inOrder = true;
  LONG lists = 0;  ///< sub-areas of the customer's area
};

/// Goes through the tags of the first set of presets.
class Scanner {
 public:
  explicit Scanner(LONG customerArea) : m_customerArea(std::to_string(customerArea)) {}

  void Take(const Tag& tag) {
    if (tag.closing) return;
    if (tag.name == "Country") m_inCountry = Is(tag, "countrycode", "81");
    if (tag.name == "ChannelSet") TakeSet(tag);
    if (!m_inSet) return;
    if (tag.name == "Area") m_inArea = Is(tag, "AreaIndex", m_customerArea);
    if (tag.name == "SubArea" && m_inArea) {
      const bool next = Is(tag, "SubAreaIndex", std::to_string(m_facts.lists++));
      m_facts.inOrder = m_facts.inOrder && next;
    }
  }

  const Facts& Found() const { return m_facts; }

 private:
  static bool Is(const Tag& tag, std::string_view attribute, std::string_view value) {
    const std::string* found = tag.Find(attribute);
    return found != nullptr && *found == value;
  }

  void TakeSet(const Tag& tag) {
    m_inSet = m_inCountry && !m_facts.sawSet && Is(tag, "inputSignalType", "176");
    m_inArea = false;
    if (!m_inSet) return;
    m_facts.sawSet = true;
    m_facts.noted = tag.Find("Area") != nullptr && tag.Find("SubArea") != nullptr;
  }

  std::string m_customerArea;
  bool m_inCountry = false;
  bool m_inSet = false;
  bool m_inArea = false;
  Facts m_facts;
};

Facts Scan(const Location& location, LONG customerArea) {
  const auto path =
      file_scan::ChannelFile(location.directory).parent_path() / "PreSetChannelInfo.xml";
  Scanner scanner(customerArea);
  try {
    const std::string xml = file_scan::ReadWhole(path);
    file_scan::ForEachTag(xml, [&scanner](const Tag& tag) { scanner.Take(tag); });
  } catch (const Failure&) {
    // An encoding that cannot be looked through: nothing is known then.
    return {};
  }
  return scanner.Found();
}

}  // namespace

bool IsThere(const Location& location) { return Scan(location, 0).noted; }

bool ListsAreInOrder(const Location& location, const Presets& presets) {
  const LONG area = presets.AreaCount() - 1;
  const Facts facts = Scan(location, area);
  return facts.sawSet && facts.inOrder && facts.lists == presets.CustomerArea().count;
}

void Put(const Database& database, const Location& location, LONG area, LONG subArea) {
  const Bstr directory(WideArgument(location.directory));
  Require(database->Open(directory.Get(), location.country, InputSignalFMRadio),
          "cannot open the directory " + location.directory);
  Require(database->SetArea(area, subArea), "the selection cannot be put into the presets");
}

void Write(const Location& location, const Presets& before, LONG area, LONG subArea) {
  if (area > kHighest || subArea > kHighest) {
    throw Failure{E_FAIL, "numbers above " + std::to_string(kHighest) + " cannot be noted"};
  }
  const PresetArea& customer = before.CustomerArea();
  if (!ListsAreInOrder(location, before)) {
    throw Failure{E_FAIL, "the customer's lists are not numbered 0, 1, 2, ..."};
  }
  const Database database(location);
  // The library writes the file only when it stores or deletes a customer list. One that is asked
  // for under a number it cannot get is made in memory alone; deleting it writes all but that one.
  database->SaveCustomerChannelList(-1, "");
  LONG count = 0;
  Require(database->GetSubAreaCount(customer.number, &count), "the lists cannot be counted");
  if (count != customer.count + 1) throw Failure{E_FAIL, "a list for it cannot be made"};
  Put(database, location, area, subArea);
  SaveWatch(location.directory, "PreSetChannelInfo.xml").Run([&] {
    Require(database->DeleteCustomerChannelList(customer.count),
            "PreSetChannelInfo.xml was not written");
    const Presets after(location);
    RequireSamePresets(before, after);
    if (after.SelectedArea() != area || after.SelectedSubArea() != subArea) {
      throw Failure{E_FAIL, "PreSetChannelInfo.xml does not hold it after saving"};
    }
  });
}

}  // namespace preset_note

}  // namespace zortunedex::kit

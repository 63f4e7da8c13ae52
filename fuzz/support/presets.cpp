#include "support/presets.h"

#include <algorithm>

#include "support/fuzz.h"

namespace {

constexpr LONG kMost = 12;  // of areas, and of sub-areas in each
constexpr std::size_t kNameSize = 260;

// Into a buffer of exactly the promised size, which stays as it is where there is no name.
template <typename Get>
std::string NameFrom(Get get) {
  std::vector<CHAR> buffer(kNameSize, 'x');
  const HRESULT hr = get(buffer.data());
  if (hr == S_OK) {
    const auto end = std::find(buffer.begin(), buffer.end(), '\0');
    Require(end != buffer.end());
    return "\"" + std::string(buffer.begin(), end) + "\" ";
  }
  Require(hr == S_FALSE || hr == E_POINTER || hr == E_FAIL);
  Require(std::all_of(buffer.begin(), buffer.end(), [](CHAR byte) { return byte == 'x'; }));
  return std::to_string(hr) + " ";
}

std::string SubAreaName(const ComPtr<IZorTunedex>& database, LONG area, LONG subArea) {
  return NameFrom([&](CHAR* name) { return database->GetSubAreaNameByIndex(area, subArea, name); });
}

LONG AreaCount(const ComPtr<IZorTunedex>& database) {
  LONG count = -1;
  const HRESULT hr = database->GetAreaCount(&count);
  Require(hr == S_OK || (hr == E_FAIL && count == 0));
  return count;
}

LONG SubAreaCount(const ComPtr<IZorTunedex>& database, LONG area) {
  LONG count = -1;
  const HRESULT hr = database->GetSubAreaCount(area, &count);
  Require(hr == S_OK || (hr == E_FAIL && count == 0));
  return count;
}

bool HasPresets(const ComPtr<IZorTunedex>& database) {
  LONG count = 0;
  return database->GetAreaCount(&count) == S_OK;
}

/// The customer lists are the last area's, if it has the last number.
bool HasCustomerArea(const ComPtr<IZorTunedex>& database) {
  const LONG last = AreaCount(database) - 1;
  const std::string name =
      NameFrom([&](CHAR* buffer) { return database->GetAreaNameByIndex(last, buffer); });
  return name != std::to_string(E_POINTER) + " " && name != std::to_string(E_FAIL) + " ";
}

std::string DescribeSubArea(const ComPtr<IZorTunedex>& database, LONG area, LONG subArea) {
  ComPtr<IChannelInfoMgr> list;
  const HRESULT hr = database->GetPresetChannelMgr(area, subArea, list.Receive());
  Require(hr == (HasPresets(database) ? S_OK : E_FAIL));
  Require((hr == S_OK) == static_cast<bool>(list));
  const std::string name = SubAreaName(database, area, subArea);
  return list ? name + "\n" + DescribeEach(list) : name;
}

std::string DescribeArea(const ComPtr<IZorTunedex>& database, LONG area) {
  const LONG count = SubAreaCount(database, area);
  std::string text =
      NameFrom([&](CHAR* name) { return database->GetAreaNameByIndex(area, name); }) +
      std::to_string(count) + "\n";
  for (LONG subArea = -1; subArea < std::min(count, kMost); ++subArea) {
    text += DescribeSubArea(database, area, subArea);
  }
  return count > kMost ? text + DescribeSubArea(database, area, count - 1) : text;
}

/// What the file says; without presets it is what was selected last.
std::string DescribeSelection(const ComPtr<IZorTunedex>& database) {
  LONG area = -1;
  LONG subArea = -1;
  Require(database->GetArea(&area, &subArea) == S_OK);
  Require(area >= 0 && area <= 0xFFFF && subArea >= 0 && subArea <= 0xFFFF);
  if (!HasPresets(database)) return {};
  return std::to_string(area) + " " + std::to_string(subArea) + "\n";
}

void Select(const ComPtr<IZorTunedex>& database, LONG area, LONG subArea) {
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kOneSegment.signalType);
  const HRESULT hr = database->SetArea(area, subArea);
  Require(hr == (HasPresets(database) ? S_OK : E_FAIL));
  if (hr != S_OK) return;
  ComPtr<IChannelInfoMgr> presets;
  Require(database->GetPresetChannelMgr(area, subArea, presets.Receive()) == S_OK);
  UINT count = 0;
  UINT expected = 0;
  Require(list->GetChannelCount(0xFFFFFFFF, &count) == S_OK);
  Require(presets->GetChannelCount(0xFFFFFFFF, &expected) == S_OK);
  Require(count == expected);
}

/// The count of references that is handed out instead of the outcome says nothing.
void Store(const ComPtr<IZorTunedex>& database, LONG index, const std::string& name) {
  Require(database->SaveCustomerChannelList(index, name.c_str()) == S_OK);
}

}  // namespace

std::string DescribePresets(const ComPtr<IZorTunedex>& database) {
  const LONG count = AreaCount(database);
  std::string text = DescribeSelection(database) + std::to_string(count) + "\n";
  for (LONG area = -1; area < std::min(count, kMost); ++area) text += DescribeArea(database, area);
  return count > kMost ? text + DescribeArea(database, count - 1) : text;
}

void SelectSubAreas(const ComPtr<IZorTunedex>& database) {
  Select(database, AreaCount(database) - 1, 0);
  Select(database, 70000, -1);
  Select(database, 0, 1);
  Select(database, 0, 0);
}

std::string ChannelsInFile(const Scratch& scratch) {
  return DescribeEach(ListOf(OpenDatabase(scratch, kOneSegment), kOneSegment.signalType));
}

bool StoreCustomerLists(const ComPtr<IZorTunedex>& database, const std::string& channels) {
  const LONG area = AreaCount(database) - 1;
  const bool hasArea = HasCustomerArea(database);
  // A number that is not there appends an empty list with the free one, in memory alone.
  Store(database, SubAreaCount(database, area) + 5, std::string(300, 'n'));
  Store(database, 0, "first");
  const LONG index = SubAreaCount(database, area);
  const bool isNew = SubAreaName(database, area, index) == std::to_string(E_POINTER) + " ";
  const std::string name = "<\"&'\t\xE2\x82\xAC>";
  Store(database, index, name);
  if (!hasArea) return false;
  Require(SubAreaName(database, area, index) == "\"" + name + "\" ");
  ComPtr<IChannelInfoMgr> list;
  Require(database->GetPresetChannelMgr(area, index, list.Receive()) == S_OK);
  if (isNew) Require(DescribeEach(list) == channels);
  return true;
}

bool DeleteCustomerList(const Scratch& scratch, const ComPtr<IZorTunedex>& database) {
  // Opened for another type, the database keeps its presets and a selection touches no channels.
  Require(SUCCEEDED(database->Open(scratch.Path().Get(), 81, InputSignalFMRadio)));
  Require(SUCCEEDED(database->SetArea(65537, 2)) == HasPresets(database));
  const LONG area = AreaCount(database) - 1;
  const LONG count = SubAreaCount(database, area);
  const HRESULT hr = database->DeleteCustomerChannelList(0);
  Require(hr == S_OK || hr == S_FALSE || hr == E_FAIL);
  Require(SubAreaCount(database, area) == (hr == S_OK ? count - 1 : count));
  return hr == S_OK;
}

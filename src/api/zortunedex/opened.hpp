// One database object of the library while it is open, and what is read through it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "api/zortunedex/channel_list.hpp"
#include "api/zortunedex/files.hpp"

namespace zortunedex::detail {

/// Where channels are.
struct Location {
  std::shared_ptr<const Component> component;
  fs::path directory;
  std::uint32_t country = 0;
  zortunedex::signal kind = signal::dvb_satellite;
  fs::path origin;  ///< the host's directory as it named it; this one may be a copy of it

  std::string Place() const { return Shown(origin); }
  std::string File(const char* name) const { return Shown(origin / name); }
  Location CopyIn(const fs::path& other) const { return {component, other, country, kind, origin}; }
  Location For(zortunedex::signal other) const {
    return {component, directory, country, other, origin};
  }
};

/// Closed at the end; nothing is saved then.
class Opened {
 public:
  explicit Opened(const Location& location) : m_component(location.component) {
    const std::string place = location.Place();
    std::error_code failure;
    if (!fs::is_directory(location.directory, failure)) {
      throw error(E_INVALIDARG, "open", place, "there is no such directory");
    }
    ComPtr<IClassFactory> factory;
    Require(
        m_component->GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, (void**)factory.Receive()),
        "use", "ZorTunedex", "the library is not there");
    Require(factory->CreateInstance(nullptr, IID_IZorTunedex, (void**)m_object.Receive()), "open",
            place, "the library makes no database");
    const Bstr directory(DirectoryText(location));
    Require(m_object->Open(directory.Get(), location.country, TypeOf(location.kind)), "open", place,
            "the library does not take the directory");
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  ~Opened() {
    if (m_object) m_object->Close();
  }

  IZorTunedex* operator->() const { return m_object.Get(); }
  ComPtr<IChannelInfoMgr> List(zortunedex::signal kind, const std::string& place) const {
    ComPtr<IChannelInfoMgr> list;
    Require(m_object->GetChannelInfoMgr(TypeOf(kind), list.Receive()), "open", place,
            "there is no list of channels");
    return list;
  }

 private:
  static Wide DirectoryText(const Location& location) {
    try {
      return location.directory.string<OLECHAR>();
    } catch (const std::exception&) {
      throw error(E_INVALIDARG, "open", location.Place(), "the path is no text");
    }
  }

  std::shared_ptr<const Component> m_component;  // goes last
  ComPtr<IZorTunedex> m_object;
};

inline SharedContext MakeContext(const Opened& database, const Location& location) {
  const std::string place = location.Place();
  return std::make_shared<const Context>(location.component, location.kind, place,
                                         database.List(location.kind, place),
                                         database.List(signal::dvb_satellite, place));
}

/// The indexes of a list in its order. It is numbered 1, 2, 3, … afterwards, so that every channel
/// can be had by its place, and must not be saved.
inline std::vector<UINT> TakeIndexes(IChannelInfoMgr* list, const std::string& place) {
  constexpr UINT kMark = 0xFFFFFFFE;
  constexpr DWORD kAll = static_cast<DWORD>(ServiceAll);
  ComPtr<IChannelInfo> mark;  // a single channel cannot be walked to
  Require(list->CreateChannelInfo(mark.Receive()), "read", place, "no record can be made");
  mark->SetChannelIndex(kMark);  // answers E_NOTIMPL and stores it
  Require(list->AddChannelInfo(mark.Get()), "read", place, "no record can be added");
  UINT count = 0;
  Require(list->GetChannelCount(kAll, &count), "read", place, "the channels cannot be counted");
  std::vector<UINT> indexes(count);
  for (UINT position = 0; position < count && count > 1; ++position) {
    Require(list->FindNextChannel(position, &indexes[position], kAll, 0, 0), "read", place,
            "an index is out of range");
  }
  if (count == 1) indexes[0] = kMark;
  indexes.erase(std::find(indexes.begin(), indexes.end(), kMark));
  Require(list->RemoveChannelInfo(mark.Get()), "read", place, "no record can be removed");
  return indexes;
}

/// The channels of a list, which must not be saved afterwards.
inline std::vector<channel> TakeChannels(IChannelInfoMgr* list, const SharedContext& context) {
  const std::vector<UINT> indexes = TakeIndexes(list, context->Place());
  std::vector<channel> channels;
  channels.reserve(indexes.size());
  for (UINT place = 1; place <= indexes.size(); ++place) {
    ComPtr<IChannelInfo> record;
    Require(list->GetChannelInfoByIndex(place, record.Receive()), "read", context->Place(),
            "a channel is not to be found");
    Values values = ReadRecord(record.Get(), context->Place());
    values.origin = place;
    values.index = indexes[place - 1];
    values.block.resize(context->BlockLayout().size);
    channels.push_back(Inside::Make(context, std::move(values)));
  }
  return channels;
}

/// Raises an error where a file stands that the library does not read, and so takes for empty. It
/// keeps such a file before it writes over it, which is tried with a copy.
inline void RequireReadable(const Location& location, const char* name) {
  const std::optional<std::string> bytes = ReadBytes(location.directory / name);
  if (!bytes) return;
  const Scratch scratch;
  scratch.Copy(name, bytes);
  {
    const Opened copy(location.CopyIn(scratch.Path()).For(signal::fm_radio));
    if (name == std::string_view(kChannelFile)) {
      copy->SetStorageType(StorageXML);  // so that it is written although nothing changed
      copy->SaveChannelToFile();
    } else {
      copy->LoadUserSettingsFromFile();
      copy->SaveUserSettingsToFile();
    }
  }
  std::error_code ignored;
  const bool isKept = fs::exists(scratch.Path() / (std::string(name) + ".unreadable"), ignored);
  if (!bytes->empty() && !isKept) return;
  throw error(E_FAIL, "read", location.File(name), "it is not well-formed XML");
}

/// The channels that the file has. Raises an error where it stands and cannot be read.
inline channel_list LoadChannels(const Location& location) {
  return Guarded("open", location.Place(), [&] {
    const Opened database(location);
    const SharedContext context = MakeContext(database, location);
    const ComPtr<IChannelInfoMgr> list = database.List(location.kind, location.Place());
    std::vector<channel> channels = TakeChannels(list.Get(), context);
    if (channels.empty()) RequireReadable(location, kChannelFile);
    return ListAccess::Make(context, std::move(channels));
  });
}

}  // namespace zortunedex::detail

#include "contract/database.h"

#include <string>

#include "platform/host.h"
#include "support/expect.h"

ComPtr<IClassFactory> GetFactory() {
  host::Prepare();
  void* factory = nullptr;
  ExpectHr(S_OK, host::GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, &factory));
  return ComPtr<IClassFactory>::Attach(static_cast<IClassFactory*>(factory));
}

ComPtr<IZorTunedex> NewDatabase() {
  void* database = nullptr;
  ExpectHr(S_OK, GetFactory()->CreateInstance(nullptr, IID_IZorTunedex, &database));
  return ComPtr<IZorTunedex>::Attach(static_cast<IZorTunedex*>(database));
}

Bstr PathText(const std::filesystem::path& path) {
  const std::u16string text = path.u16string();
  return Bstr(std::basic_string<OLECHAR>(text.begin(), text.end()));
}

ComPtr<IZorTunedex> OpenDatabase(const std::filesystem::path& directory, InputSignalType signalType,
                                 DWORD countryCode) {
  ComPtr<IZorTunedex> database = NewDatabase();
  ExpectHr(S_OK, database->Open(PathText(directory).Get(), countryCode, signalType));
  return database;
}

ComPtr<IChannelInfoMgr> ListOf(const ComPtr<IZorTunedex>& database, InputSignalType signalType) {
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, database->GetChannelInfoMgr(signalType, list.Receive()));
  return list;
}

UINT CountOf(const ComPtr<IChannelInfoMgr>& list) {
  UINT count = 0;
  ExpectHr(S_OK, list->GetChannelCount(kAllServices, &count));
  return count;
}

std::vector<UINT> IndexesOf(const ComPtr<IChannelInfoMgr>& list) {
  std::vector<UINT> indexes;
  UINT index = 0;
  // From position n the search begins at the channel behind it, and every channel is acceptable.
  for (UINT n = 0; list->FindNextChannel(n, &index, kAllServices, 0, 0) == S_OK; ++n) {
    indexes.push_back(index);
  }
  return indexes;
}

ComPtr<IChannelInfo> ChannelAt(const ComPtr<IChannelInfoMgr>& list, UINT index) {
  ComPtr<IChannelInfo> channel;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(index, channel.Receive()));
  return channel;
}

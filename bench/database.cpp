#include "bench/database.h"

#include "bench/check.h"
#include "platform/bstr.h"
#include "platform/host.h"

namespace bench {

ComPtr<IZorTunedex> NewDatabase() {
  void* object = nullptr;
  HRESULT hr = host::GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, &object);
  Check(hr == S_OK, "no class object");
  const auto factory = ComPtr<IClassFactory>::Attach(static_cast<IClassFactory*>(object));
  hr = factory->CreateInstance(nullptr, IID_IZorTunedex, &object);
  Check(hr == S_OK, "no database");
  return ComPtr<IZorTunedex>::Attach(static_cast<IZorTunedex*>(object));
}

void Open(const ComPtr<IZorTunedex>& database, const std::filesystem::path& directory) {
  const Bstr text(directory.u16string());
  Check(database->Open(text.Get(), 49, InputSignalDVBSatellite) == S_OK, "Open failed");
}

ComPtr<IChannelInfoMgr> SatelliteList(const ComPtr<IZorTunedex>& database) {
  ComPtr<IChannelInfoMgr> list;
  Check(database->GetChannelInfoMgr(InputSignalDVBSatellite, list.Receive()) == S_OK, "no list");
  return list;
}

void CheckCount(const ComPtr<IZorTunedex>& database, UINT count) {
  UINT actual = 0;
  SatelliteList(database)->GetChannelCount(0xFFFFFFFF, &actual);
  Check(actual == count, "channels were lost");
}

}  // namespace bench

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

namespace {

UINT CountTransponders(const ComPtr<ISatelliteInfo>& satellite, ESatFreqBand band) {
  ComPtr<ITransponderInfoMgr> list;
  Check(SUCCEEDED(satellite->GetTransponderMgr(band, list.Receive())), "no transponder list");
  UINT count = 0;
  list->GetTransponderCount(&count);
  return count;
}

}  // namespace

void CheckCatalogue(const ComPtr<IZorTunedex>& database, UINT transponders) {
  ComPtr<ISatelliteInfoMgr> list;
  Check(SUCCEEDED(database->GetSatelliteInfoMgr(list.Receive())), "no satellite list");
  UINT actual = 0;
  ComPtr<ISatelliteInfo> satellite;
  for (UINT index = 0; SUCCEEDED(
           list->GetSatInfoByIndex(index, 0, RegionUnknown, SatcoDX_Unknown, satellite.Receive()));
       ++index) {
    actual += CountTransponders(satellite, SatFreqBand_CBand);
    actual += CountTransponders(satellite, SatFreqBand_KuBand);
  }
  Check(actual == transponders, "transponders were lost");
}

void CheckCount(const ComPtr<IZorTunedex>& database, UINT count) {
  UINT actual = 0;
  SatelliteList(database)->GetChannelCount(0xFFFFFFFF, &actual);
  Check(actual == count, "channels were lost");
}

}  // namespace bench

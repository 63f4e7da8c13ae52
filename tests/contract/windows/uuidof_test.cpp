// What __uuidof names, and what hosts that are written with it get: IID_PPV_ARGS and smart
// pointers.
#include <wrl/client.h>

#include "contract/database.h"
#include "platform/host.h"
#include "support/expect.h"

namespace {

template <typename I>
using Pointer = Microsoft::WRL::ComPtr<I>;

TEST(UuidOf, NamesTheClassAndEveryInterface) {
  EXPECT_TRUE(__uuidof(ZorTunedex) == CLSID_ZorTunedex);
  EXPECT_TRUE(__uuidof(IZorTunedex) == IID_IZorTunedex);
  EXPECT_TRUE(__uuidof(IChannelInfo) == IID_IChannelInfo);
  EXPECT_TRUE(__uuidof(IChannelInfoMgr) == IID_IChannelInfoMgr);
  EXPECT_TRUE(__uuidof(ISatelliteInfo) == IID_ISatelliteInfo);
  EXPECT_TRUE(__uuidof(ISatelliteInfoMgr) == IID_ISatelliteInfoMgr);
  EXPECT_TRUE(__uuidof(ITransponderInfo) == IID_ITransponderInfo);
  EXPECT_TRUE(__uuidof(ITransponderInfoMgr) == IID_ITransponderInfoMgr);
  EXPECT_TRUE(__uuidof(ILNBInfo) == IID_ILNBInfo);
  EXPECT_TRUE(__uuidof(ILNBInfoMgr) == IID_ILNBInfoMgr);
  EXPECT_TRUE(__uuidof(IDishSatInfo) == IID_IDishSatInfo);
  EXPECT_TRUE(__uuidof(IDishSatInfoMgr) == IID_IDishSatInfoMgr);
}

TEST(UuidOf, PointersFindTheirInterface) {
  Pointer<IClassFactory> factory;
  ExpectHr(S_OK, host::GetClassObject(__uuidof(ZorTunedex), IID_PPV_ARGS(&factory)));
  Pointer<IZorTunedex> database;
  ExpectHr(S_OK, factory->CreateInstance(nullptr, IID_PPV_ARGS(&database)));
  Pointer<IUnknown> unknown;
  ExpectHr(S_OK, database.As(&unknown));
  Pointer<IZorTunedex> again;
  ExpectHr(S_OK, unknown.As(&again));
  EXPECT_EQ(database.Get(), again.Get());
  Pointer<IChannelInfo> other;
  ExpectHr(E_NOINTERFACE, unknown.As(&other));
}

}  // namespace

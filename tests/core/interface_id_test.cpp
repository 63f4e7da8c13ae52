#include "core/interface_id.h"

#include <cstdio>
#include <string>

#include "support/expect.h"

namespace {

std::string TextOf(const IID& iid) {
  char text[40];
  std::snprintf(text, sizeof(text), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(iid.Data1), iid.Data2, iid.Data3, iid.Data4[0], iid.Data4[1],
                iid.Data4[2], iid.Data4[3], iid.Data4[4], iid.Data4[5], iid.Data4[6], iid.Data4[7]);
  return text;
}

TEST(InterfaceId, EveryInterfaceHasItsOwn) {
  EXPECT_EQ("{3584EA46-F4B3-4D80-9D59-6372977C88A0}", TextOf(InterfaceId<IChannelInfo>::kValue));
  EXPECT_EQ("{FF376EE5-B768-40CF-9F72-128DD130584A}", TextOf(InterfaceId<IChannelInfoMgr>::kValue));
  EXPECT_EQ("{678F0641-A164-49B2-86C0-5B269C54E547}", TextOf(InterfaceId<ISatelliteInfo>::kValue));
  EXPECT_EQ("{25965562-4302-4466-A569-7A451620A4BB}",
            TextOf(InterfaceId<ISatelliteInfoMgr>::kValue));
  EXPECT_EQ("{0823766E-9D78-4C9A-A1BB-8FB5BE797B1E}",
            TextOf(InterfaceId<ITransponderInfo>::kValue));
  EXPECT_EQ("{A4807474-3D36-413E-B497-FDD7233BDD14}",
            TextOf(InterfaceId<ITransponderInfoMgr>::kValue));
  EXPECT_EQ("{AC27B5D0-A7A1-4D86-9A60-CE71D8327150}", TextOf(InterfaceId<ILNBInfo>::kValue));
  EXPECT_EQ("{303C56DC-22C2-47BC-BAAA-397D245B17B3}", TextOf(InterfaceId<ILNBInfoMgr>::kValue));
  EXPECT_EQ("{2B02C9F4-A2F3-436E-80F5-AAA924838DD7}", TextOf(InterfaceId<IDishSatInfo>::kValue));
  EXPECT_EQ("{6364EAFD-2DBE-4434-B42F-46705FA6CE63}", TextOf(InterfaceId<IDishSatInfoMgr>::kValue));
  EXPECT_EQ("{D68DEB38-CC68-4BCF-9757-EDD6FF66F27E}", TextOf(IID_IZorTunedex));
  EXPECT_EQ("{00000000-0000-0000-C000-000000000046}", TextOf(IID_IUnknown));
}

}  // namespace

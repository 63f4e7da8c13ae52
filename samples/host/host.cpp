#include <cstdio>
#include <string>

#include "core/interfaces.h"
#include "platform/bstr.h"
#include "platform/com_ptr.h"
#include "platform/component.h"

int main(int argc, char** argv) {
  const std::basic_string_view<char> folder = argc > 1 ? argv[1] : "samples/home";
  const std::basic_string<OLECHAR> path(folder.begin(), folder.end());
  const Component component;
  ComPtr<IClassFactory> factory;
  ComPtr<IZorTunedex> database;
  ComPtr<IChannelInfoMgr> channels;
  UINT count = 0;
  component.GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, (void**)factory.Receive());
  if (!factory) {
    std::fputs("no ZorTunedex beside this program\n", stderr);
    return 1;
  }
  factory->CreateInstance(nullptr, IID_IZorTunedex, (void**)database.Receive());
  database->Open(Bstr(path).Get(), 49, InputSignalDVBSatellite);
  database->GetChannelInfoMgr(InputSignalDVBSatellite, channels.Receive());
  channels->GetChannelCount(DWORD(ServiceDigitalTV), &count);
  std::printf("%u television channels\n", count);
}

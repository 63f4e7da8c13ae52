// Counts the television channels of a data directory.
#include <zortunedex/core/interfaces.h>
#include <zortunedex/platform/arguments.h>
#include <zortunedex/platform/bstr.h>
#include <zortunedex/platform/com_ptr.h>
#include <zortunedex/platform/component.h>

#include <cstdio>
#include <exception>

bool Works(HRESULT hr, const char* problem) {
  if (FAILED(hr)) std::fprintf(stderr, "%s: %08X\n", problem, static_cast<unsigned>(hr));
  return SUCCEEDED(hr);
}

bool Count(WideView folder, UINT* count) {
  const Component component;  // outlives whatever comes from it
  ComPtr<IClassFactory> factory;
  ComPtr<IZorTunedex> database;
  ComPtr<IChannelInfoMgr> channels;
  return Works(component.GetClassObject(CLSID_ZorTunedex, IID_IClassFactory,
                                        (void**)factory.Receive()),
               "no ZorTunedex beside this program") &&
         Works(factory->CreateInstance(nullptr, IID_IZorTunedex, (void**)database.Receive()),
               "no database object") &&
         Works(database->Open(Bstr(folder).Get(), 49, InputSignalDVBSatellite),
               "the directory cannot be opened") &&
         Works(database->GetChannelInfoMgr(InputSignalDVBSatellite, channels.Receive()),
               "no list of channels") &&
         Works(channels->GetChannelCount(DWORD(ServiceDigitalTV), count), "no count");
}

int main(int argc, char** argv) try {
  const auto arguments = WideArguments(argc, argv);
  UINT count = 0;
  if (!Count(arguments.size() > 1 ? arguments[1] : OLESTR("samples/home"), &count)) return 1;
  std::printf("%u television channels\n", count);
} catch (const ComError& error) {  // no memory for a text
  Works(error.Error(), "the library gave up");
  return 1;
} catch (const std::exception& error) {  // no memory, or an argument that is no text
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}

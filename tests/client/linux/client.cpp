// The same client of the library for Linux.
//
// Usage: module_client list|change DIRECTORY
#include <cstring>
#include <string>

#include "client/walk.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  // The one that the Windows client is tested with: names in station blocks are narrow text.
  if (ZorTunedexSetCodePage(1252) != S_OK) return 1;
  Held<IClassFactory> factory;
  Held<IZorTunedex> database;
  void* answer = nullptr;
  if (DllGetClassObject(CLSID_ZorTunedex, IID_IClassFactory, &answer) != S_OK) return 1;
  *factory.Receive() = static_cast<IClassFactory*>(answer);
  if (factory->CreateInstance(nullptr, IID_IZorTunedex, &answer) != S_OK) return 1;
  *database.Receive() = static_cast<IZorTunedex*>(answer);
  const std::basic_string<OLECHAR> directory(argv[2], argv[2] + std::strlen(argv[2]));
  const BSTR path = SysAllocString(directory.c_str());
  Walk walk(database.Get(), path);
  if (std::strcmp(argv[1], "change") == 0) {
    walk.Change();
  } else {
    walk.List();
  }
  SysFreeString(path);
  return 0;
}

// A client that knows nothing of this project but the header that the IDL compiler makes of the
// type library's source. The class must be registered.
//
// Usage: module_client list|change DIRECTORY
#include <fcntl.h>
#include <io.h>

#include <cwchar>

#include "client/walk.h"

namespace {

int Run(const wchar_t* what, const wchar_t* directory) {
  CLSID clsid = {};
  Held<IZorTunedex> database;
  HRESULT hr = CLSIDFromProgID(L"ZorTunedex.ZorTunedex", &clsid);
  if (SUCCEEDED(hr)) {
    hr = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IZorTunedex,
                          reinterpret_cast<void**>(database.Receive()));
  }
  if (FAILED(hr)) {
    std::printf("no database: %08x\n", static_cast<unsigned>(hr));
    return 1;
  }
  const BSTR path = SysAllocString(directory);
  Walk walk(database.Get(), path);
  if (std::wcscmp(what, L"change") == 0) {
    walk.Change();
  } else {
    walk.List();
  }
  SysFreeString(path);
  return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 3) return 2;
  _setmode(_fileno(stdout), _O_BINARY);
  if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) return 1;
  const int status = Run(argv[1], argv[2]);
  CoUninitialize();
  return status;
}

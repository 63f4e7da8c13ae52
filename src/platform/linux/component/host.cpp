#include "platform/host.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

namespace host {

// Standard output takes bytes as they are, and arguments are the shell's bytes.
std::vector<std::string> Arguments(int argc, char** argv) { return {argv, argv + argc}; }
void Prepare() {}

std::optional<std::string> Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

bool InputIsTerminal() { return isatty(STDIN_FILENO) == 1; }

std::optional<std::size_t> OutputWidth() {
  winsize size = {};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return std::nullopt;
  return size.ws_col;
}

HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  return DllGetClassObject(rclsid, riid, ppv);
}
HRESULT CanUnloadNow() { return DllCanUnloadNow(); }
HRESULT RegisterServer() { return DllRegisterServer(); }
HRESULT UnregisterServer() { return DllUnregisterServer(); }

HRESULT SetCodePage(UINT codePage) { return ZorTunedexSetCodePage(codePage); }
HRESULT SetRegistryFile(const char* path) { return ZorTunedexSetRegistryFile(path); }

}  // namespace host

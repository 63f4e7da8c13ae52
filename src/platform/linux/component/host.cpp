#include "platform/host.h"

#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
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

void PreferLargePages(void* memory, std::size_t size) {
  constexpr std::size_t kLargePage = std::size_t{2} * 1024 * 1024;
  if (size < kLargePage) return;
  // Whole pages; what stands around them may be somebody else's.
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t ahead = (0 - reinterpret_cast<std::uintptr_t>(memory)) % page;
  const std::size_t whole = (size - ahead) / page * page;
  madvise(static_cast<char*>(memory) + ahead, whole, MADV_HUGEPAGE);
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

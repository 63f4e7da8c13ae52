// What a host program needs from its platform before it can call the library: finding the module,
// arguments and output as UTF-8. Used by the command-line host and by the contract tests; the
// library itself does not contain it.
#pragma once

#include <string>
#include <vector>

#include "platform/com.h"

namespace host {

/// Arguments of this process as UTF-8, the program's name first.
std::vector<std::string> Arguments(int argc, char** argv);

/// Makes standard output and error take UTF-8 unchanged, and prepares COM for this thread.
void Prepare();

/// True when standard input is a terminal, at which a question can be answered.
bool InputIsTerminal();

/// The library's own entry points. The library is loaded at first use.
HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
HRESULT CanUnloadNow();
HRESULT RegisterServer();
HRESULT UnregisterServer();

/// ZorTunedexSetCodePage where the library has it, else E_NOTIMPL (Windows has a code page
/// already).
HRESULT SetCodePage(UINT codePage);
/// ZorTunedexSetRegistryFile where the library has it, else E_NOTIMPL (Windows has a registry).
HRESULT SetRegistryFile(const char* path);

}  // namespace host

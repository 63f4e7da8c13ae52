// What a host program needs from its platform beside the library: finding the module, arguments and
// output as UTF-8, files that are written durably. The library itself does not contain it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/com.h"

// Headers of the platform have it as a macro.
#undef ReplaceFile

namespace host {

/// Arguments of this process as UTF-8, the program's name first.
std::vector<std::string> Arguments(int argc, char** argv);

/// Makes standard output and error take UTF-8 unchanged, and prepares COM for this thread.
void Prepare();

/// True when standard input is a terminal, at which a question can be answered.
bool InputIsTerminal();

/// Columns of the terminal that standard output is; nothing when it is none, or does not tell.
std::optional<std::size_t> OutputWidth();

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

/// Replaces the file at a path (UTF-8) as a whole or not at all: what the library does when it
/// saves. The bytes go to a temporary file beside it, which is made durable and put in its place.
/// A symbolic link is followed, the old file's mode and, where allowed, its owner are kept. False
/// when that failed; the old file is then still there, whole, unless the very last step, making the
/// change of the directory durable, met a device error.
bool ReplaceFile(const std::string& path, std::string_view bytes);

/// The same for a path where nothing stands yet. False also when something does, whenever it came.
bool WriteNewFile(const std::string& path, std::string_view bytes);

}  // namespace host

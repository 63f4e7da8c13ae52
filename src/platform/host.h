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

/// A variable of the environment (its name is ASCII) as UTF-8; nothing where it is not set.
std::optional<std::string> Environment(const char* name);

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

/// Replaces the file at a path (UTF-8) as a whole or not at all: what the library does when it
/// saves. The bytes go to a temporary file beside it, which is made durable and put in its place.
/// A symbolic link is followed, the old file's mode and, where allowed, its owner are kept. False
/// when that failed; the old file is then still there, whole, unless the very last step, making the
/// change of the directory durable, met a device error.
bool ReplaceFile(const std::string& path, std::string_view bytes);

/// The same for a path where nothing stands yet. False also when something does, whenever it came.
bool WriteNewFile(const std::string& path, std::string_view bytes);

/// What keeps a file from being read.
struct Damage {
  std::string cause;    ///< why its bytes cannot be had; empty when they can, and are no document
  unsigned line = 0;    ///< of the document's fault, from 1; 0 where the parser does not tell
  unsigned column = 0;  ///< in characters, from 1
};

/// Reads a file (its path is UTF-8) as the library reads its own, with the same parser, options and
/// limits. Nothing when that works, and where nothing stands at the path. Raises std::bad_alloc.
std::optional<Damage> CheckFile(const std::string& path);

/// Why a file of so many bytes cannot be put at a path (UTF-8), found by trying everything but the
/// replacing; empty when nothing hinders it. Raises std::bad_alloc.
std::string WhyNotWritten(const std::string& path, std::size_t size);

}  // namespace host

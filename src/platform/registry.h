// The registry calls that the system needs. On Windows the registry itself; on Linux a text file in
// the .reg export format that the host names with ZorTunedexSetRegistryFile (read as UTF-16LE with
// its mark or as UTF-8, written as UTF-16LE). Key and value names compare without regard to case.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/com.h"

namespace registry {

enum class Root { LocalMachine, CurrentUser, ClassesRoot };

/// Reads a text value as narrow text (ANSI code page) of at most `size` bytes with its terminator.
/// `name` empty: the key's default value. E_FAIL when the key cannot be opened, the value does not
/// exist, is not text or does not fit; the buffer is then untouched.
HRESULT ReadText(Root root, std::string_view key, std::string_view name, char* buffer,
                 std::size_t size);

/// True when the key exists and may be read.
bool KeyExists(Root root, std::string_view key);

/// Creates the key with its parents where they are missing.
HRESULT CreateKey(Root root, std::string_view key);

/// Sets a text value (UTF-8), the key's default value where `name` is empty. The key is created.
HRESULT SetText(Root root, std::string_view key, std::string_view name, std::string_view value);

/// Sets a 32-bit value. The key is created.
HRESULT SetNumber(Root root, std::string_view key, std::string_view name, std::uint32_t value);

/// Sets a list of texts (UTF-8). A list cannot hold empty texts: E_INVALIDARG. The key is created.
HRESULT SetTexts(Root root, std::string_view key, std::string_view name,
                 const std::vector<std::string>& values);

/// Sets bytes. The key is created.
HRESULT SetBytes(Root root, std::string_view key, std::string_view name, std::string_view bytes);

/// Deletes one value, the key's default value where `name` is empty. A missing one is S_OK.
HRESULT DeleteValue(Root root, std::string_view key, std::string_view name);

/// Deletes the key with its values. S_FALSE, and nothing happens, when a key stands below it. A
/// missing key is S_OK.
HRESULT DeleteKey(Root root, std::string_view key);

/// Deletes the key with everything below it. A missing key is S_OK.
HRESULT DeleteTree(Root root, std::string_view key);

/// True when at least one key stands below this one.
bool HasSubKeys(Root root, std::string_view key);

}  // namespace registry

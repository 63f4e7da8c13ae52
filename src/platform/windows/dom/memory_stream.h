#pragma once

#include <string>
#include <string_view>

#include "platform/com.h"
#include "platform/com_ptr.h"

/// Bytes in memory as the stream that MSXML reads from and writes to. MSXML is given no path: it
/// would take one for an address, fetch it from a network and limit its length.
namespace memory_stream {

/// A stream with no bytes yet, at its beginning.
HRESULT Create(ComPtr<IStream>& out);

/// A stream of the file's bytes, at its beginning. Fails when the file cannot be read.
HRESULT FromFile(const std::string& path, ComPtr<IStream>& out);
/// The same for a path as the wide file calls take it.
HRESULT FromFile(const std::wstring& name, ComPtr<IStream>& out);

HRESULT Rewind(IStream* stream);

/// Everything that the stream holds.
HRESULT Bytes(IStream* stream, std::string& bytes);

}  // namespace memory_stream

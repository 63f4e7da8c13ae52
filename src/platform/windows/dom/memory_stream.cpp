#include "platform/windows/dom/memory_stream.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "platform/windows/files/file_handle.h"
#include "platform/windows/files/in_use.h"
#include "platform/windows/files/wide_path.h"

namespace memory_stream {
namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;

}  // namespace

HRESULT Create(ComPtr<IStream>& out) { return CreateStreamOnHGlobal(nullptr, TRUE, out.Receive()); }

HRESULT FromFile(const std::string& path, ComPtr<IStream>& out) {
  return FromFile(wide_path::From(path), out);
}

HRESULT FromFile(const std::wstring& name, ComPtr<IStream>& out) {
  FileHandle file;
  const bool isOpen = in_use::Retry([&] {
    file = FileHandle(name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING,
                      FILE_FLAG_SEQUENTIAL_SCAN);
    return file.IsOpen();
  });
  if (!isOpen) return HRESULT_FROM_WIN32(GetLastError());
  ComPtr<IStream> stream;
  HRESULT hr = Create(stream);
  std::vector<char> block(kBlock);
  std::size_t count = 0;
  while (SUCCEEDED(hr)) {
    if (!file.Read(block.data(), block.size(), count)) return HRESULT_FROM_WIN32(GetLastError());
    if (count == 0) break;
    hr = stream->Write(block.data(), static_cast<ULONG>(count), nullptr);
  }
  if (SUCCEEDED(hr)) hr = Rewind(stream.Get());
  if (SUCCEEDED(hr)) out = std::move(stream);
  return hr;
}

HRESULT Rewind(IStream* stream) { return stream->Seek({}, STREAM_SEEK_SET, nullptr); }

HRESULT Bytes(IStream* stream, std::string& bytes) {
  STATSTG state{};
  HRESULT hr = stream->Stat(&state, STATFLAG_NONAME);
  if (SUCCEEDED(hr)) hr = Rewind(stream);
  if (FAILED(hr)) return hr;
  if (state.cbSize.QuadPart > std::numeric_limits<ULONG>::max()) return E_OUTOFMEMORY;
  bytes.resize(static_cast<std::size_t>(state.cbSize.QuadPart));
  ULONG count = 0;
  hr = stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &count);
  if (SUCCEEDED(hr) && count != bytes.size()) hr = E_FAIL;
  return hr;
}

}  // namespace memory_stream

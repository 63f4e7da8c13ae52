#pragma once

#include "platform/linux/tree/file_bytes.h"

namespace domtree {

/// Turns a file in another encoding into UTF-8, by its byte order mark or by the name in its XML
/// declaration: UTF-16, and the single-byte and East Asian encodings of XML files. False when it
/// names none of these or holds what that encoding does not; the bytes are then as they were.
/// Raises std::bad_alloc.
bool ConvertToUtf8(FileBytes& file);

}  // namespace domtree

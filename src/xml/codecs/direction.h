#pragma once

namespace xml {

/// Which way an element codec moves values: from the element into the record, or back.
enum class Direction { Read = 0, Write = 1 };

}  // namespace xml

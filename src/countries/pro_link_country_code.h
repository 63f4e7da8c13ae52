#pragma once

#include <cstdint>

#include "countries/country_table.h"

/// The built-in country table. The current row is that of the United States and never changes.
class CProLinkCountryCode {
 public:
  virtual ~CProLinkCountryCode() = default;

  std::int32_t CurrentRow() const { return m_row; }
  /// First row with the code; -1 when there is none.
  std::int32_t GetIndexByCode(std::uint32_t code) const;
  /// Copies the row's English name (at most 56 bytes) and answers the buffer. Null, and the buffer
  /// untouched, for a null buffer or a row outside the table.
  char* GetTableName(std::int32_t row, char* buffer) const;

 private:
  std::int32_t m_row = countries::FindRow(1);
};

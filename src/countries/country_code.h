#pragma once

#include <cstddef>
#include <cstdint>

#include "countries/pro_link_country_code.h"
#include "platform/com.h"

/// Room that every buffer for a country name has to have.
inline constexpr std::size_t kCountryNameSize = 260;

/// Names of countries: the operating system's own, else the English ones of the built-in table. The
/// current row is that of the United States and never changes.
class CCountryCode {
 public:
  virtual ~CCountryCode() = default;

  std::int32_t CurrentRow() const { return m_row; }
  /// First row with the code; -1 when there is none.
  std::int32_t GetIndexByCode(std::uint32_t code) const;
  /// -1 for a row outside the table.
  std::int32_t GetCodeByIndex(std::int32_t row) const;
  /// Writes the row's name in the ANSI code page and answers the buffer. Null, and the buffer
  /// untouched, for a null buffer or a row outside the table. An empty name of the operating
  /// system's leaves the buffer as it was, too.
  char* GetNameByIndex(std::int32_t row, char* buffer) const;
  /// The same for the first row with the code.
  char* GetNameByCode(std::uint32_t code, char* buffer) const;

  /// GetNameByIndex as it is on the Windows 95 family (table names alone), or elsewhere.
  char* GetNameByIndex(std::int32_t row, char* buffer, bool windows9x) const;

 private:
  std::int32_t m_row = countries::FindRow(1);
  CProLinkCountryCode m_table;
};

/// The name of a country in the operating system's telephony list, in the ANSI code page. E_FAIL
/// when it has none. An empty name is S_OK and leaves the buffer as it was.
HRESULT GetRegistryCountryName(std::uint32_t code, char* buffer);

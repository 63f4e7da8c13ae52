// The words by which the files store the tuning enumerations. The two directions are no exact
// inverses, on purpose: values share words, words are accepted that are never written, and files of
// earlier versions rely on every such row.
#pragma once

#include <string_view>

#include "core/interfaces.h"

// Writers free what `*text` holds, then store the word as a BSTR that the caller frees. A value
// without a word: E_FAIL, with null for the tuning enumerations and "Unknown" for region and
// division. E_POINTER for a null `text`. A ComError is raised when there is no memory; `*text` is
// then null.
//
// Readers take over `text` and free it on every path. Words compare whole and case-sensitively; a
// null text is an empty one. A text that is no word: E_FAIL; the tuning readers then leave `*value`
// as it was, region and division store 0. E_POINTER for a null `value`.

HRESULT FecRateToText(BinaryConvolutionCodeRate value, BSTR* text);
HRESULT TextToFecRate(BSTR text, BinaryConvolutionCodeRate* value);

HRESULT ModulationToText(ModulationType value, BSTR* text);
HRESULT TextToModulation(BSTR text, ModulationType* value);

HRESULT PolarisationToText(Polarisation value, BSTR* text);
HRESULT TextToPolarisation(BSTR text, Polarisation* value);

HRESULT SpectralInversionToText(SpectralInversion value, BSTR* text);
HRESULT TextToSpectralInversion(BSTR text, SpectralInversion* value);

HRESULT SatRegionToText(ESatRegion value, BSTR* text);
HRESULT TextToSatRegion(BSTR text, ESatRegion* value);

HRESULT SatDivisionToText(ESatDivision value, BSTR* text);
HRESULT TextToSatDivision(BSTR text, ESatDivision* value);

/// The same for callers that hold narrow text (ANSI code page), as the codecs do for every word of
/// a file: without any allocation.
namespace tuning_texts {

/// The word that is written; empty for a value without one.
std::string_view FecRateWord(BinaryConvolutionCodeRate value);
std::string_view ModulationWord(ModulationType value);
std::string_view PolarisationWord(Polarisation value);
std::string_view SpectralInversionWord(SpectralInversion value);

/// Result and `*value` as those of the readers above; the caller keeps `narrow`.
HRESULT FecRateFromNarrow(std::string_view narrow, BinaryConvolutionCodeRate* value);
HRESULT ModulationFromNarrow(std::string_view narrow, ModulationType* value);
HRESULT PolarisationFromNarrow(std::string_view narrow, Polarisation* value);
HRESULT SpectralInversionFromNarrow(std::string_view narrow, SpectralInversion* value);
HRESULT SatRegionFromNarrow(std::string_view narrow, ESatRegion* value);
HRESULT SatDivisionFromNarrow(std::string_view narrow, ESatDivision* value);

}  // namespace tuning_texts

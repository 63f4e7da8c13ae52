#pragma once

#include "platform/bstr.h"
#include "satellite/indexed_record.h"

/// One transponder. Numbers are kept as they come; units are those of the satellite file.
class CTransponderInfo : public IndexedRecord<CTransponderInfo, ITransponderInfo> {
 public:
  HRESULT STDMETHODCALLTYPE GetName(BSTR* pbstrName) override;
  HRESULT STDMETHODCALLTYPE SetName(BSTR bstrName) override;
  HRESULT STDMETHODCALLTYPE GetCarrierFrequency(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetCarrierFrequency(DWORD dwFreq) override;
  HRESULT STDMETHODCALLTYPE GetPolarisation(Polarisation* pPolarisation) override;
  HRESULT STDMETHODCALLTYPE SetPolarisation(Polarisation polarisation) override;
  HRESULT STDMETHODCALLTYPE GetSymbolRate(LONG* plSymbolRate) override;
  HRESULT STDMETHODCALLTYPE SetSymbolRate(LONG lSymbolRate) override;
  HRESULT STDMETHODCALLTYPE GetInnerFECRate(BinaryConvolutionCodeRate* pFECRate) override;
  HRESULT STDMETHODCALLTYPE SetInnerFECRate(BinaryConvolutionCodeRate FECRate) override;
  HRESULT STDMETHODCALLTYPE GetModulationType(ModulationType* pModulation) override;
  HRESULT STDMETHODCALLTYPE SetModulationType(ModulationType Modulation) override;
  HRESULT STDMETHODCALLTYPE GetSpectralInversion(SpectralInversion* pInversion) override;
  HRESULT STDMETHODCALLTYPE SetSpectralInversion(SpectralInversion Inversion) override;

 private:
  Bstr m_name;
  DWORD m_carrierFrequency = 0;
  LONG m_symbolRate = 0;
  Polarisation m_polarisation = BDA_POLARISATION_NOT_SET;
  BinaryConvolutionCodeRate m_innerFecRate = BDA_BCC_RATE_NOT_SET;
  ModulationType m_modulation = BDA_MOD_NOT_SET;
  SpectralInversion m_spectralInversion = BDA_SPECTRAL_INVERSION_NOT_SET;
};

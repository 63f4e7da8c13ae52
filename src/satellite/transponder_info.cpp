#include "satellite/transponder_info.h"

#include "satellite/fields.h"

HRESULT STDMETHODCALLTYPE CTransponderInfo::GetName(BSTR* pbstrName) {
  return fields::Get(m_name, pbstrName);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::SetName(BSTR bstrName) {
  return fields::Set(m_name, bstrName);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::GetCarrierFrequency(DWORD* pdwFreq) {
  return fields::Get(m_carrierFrequency, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::SetCarrierFrequency(DWORD dwFreq) {
  return fields::Set(m_carrierFrequency, dwFreq);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::GetPolarisation(Polarisation* pPolarisation) {
  return fields::Get(m_polarisation, pPolarisation);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::SetPolarisation(Polarisation polarisation) {
  return fields::Set(m_polarisation, polarisation);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::GetSymbolRate(LONG* plSymbolRate) {
  return fields::Get(m_symbolRate, plSymbolRate);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::SetSymbolRate(LONG lSymbolRate) {
  return fields::Set(m_symbolRate, lSymbolRate);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::GetInnerFECRate(BinaryConvolutionCodeRate* pFECRate) {
  return fields::Get(m_innerFecRate, pFECRate);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::SetInnerFECRate(BinaryConvolutionCodeRate FECRate) {
  return fields::Set(m_innerFecRate, FECRate);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::GetModulationType(ModulationType* pModulation) {
  return fields::Get(m_modulation, pModulation);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::SetModulationType(ModulationType Modulation) {
  return fields::Set(m_modulation, Modulation);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::GetSpectralInversion(SpectralInversion* pInversion) {
  return fields::Get(m_spectralInversion, pInversion);
}

HRESULT STDMETHODCALLTYPE CTransponderInfo::SetSpectralInversion(SpectralInversion Inversion) {
  return fields::Set(m_spectralInversion, Inversion);
}

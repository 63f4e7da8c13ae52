#include "satellite/dish_sat_info.h"

#include "satellite/fields.h"

HRESULT STDMETHODCALLTYPE CDishSatInfo::GetID(BSTR* pbstrID) { return fields::Get(m_id, pbstrID); }

HRESULT STDMETHODCALLTYPE CDishSatInfo::SetID(BSTR bstrID) { return fields::Set(m_id, bstrID); }

HRESULT STDMETHODCALLTYPE CDishSatInfo::GetBand(BSTR* pbstrBand) {
  return fields::Get(m_band, pbstrBand);
}

HRESULT STDMETHODCALLTYPE CDishSatInfo::SetBand(BSTR bstrBand) {
  return fields::Set(m_band, bstrBand);
}

HRESULT STDMETHODCALLTYPE CDishSatInfo::GetLowFreq(DWORD* pdwFreq) {
  return fields::Get(m_lowFreq, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CDishSatInfo::SetLowFreq(DWORD dwFreq) {
  return fields::Set(m_lowFreq, dwFreq);
}

HRESULT STDMETHODCALLTYPE CDishSatInfo::GetHighFreq(DWORD* pdwFreq) {
  return fields::Get(m_highFreq, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CDishSatInfo::SetHighFreq(DWORD dwFreq) {
  return fields::Set(m_highFreq, dwFreq);
}

HRESULT STDMETHODCALLTYPE CDishSatInfo::GetSwitchFreq(DWORD* pdwFreq) {
  return fields::Get(m_switchFreq, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CDishSatInfo::SetSwitchFreq(DWORD dwFreq) {
  return fields::Set(m_switchFreq, dwFreq);
}

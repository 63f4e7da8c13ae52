#include "satellite/lnb_info.h"

#include "satellite/fields.h"

HRESULT STDMETHODCALLTYPE CLNBInfo::GetType(BSTR* pbstrType) {
  return fields::Get(m_type, pbstrType);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetType(BSTR bstrType) { return fields::Set(m_type, bstrType); }

HRESULT STDMETHODCALLTYPE CLNBInfo::GetLowFreq(DWORD* pdwFreq) {
  return fields::Get(m_lowFreq, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetLowFreq(DWORD dwFreq) {
  return fields::Set(m_lowFreq, dwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::GetHighFreq(DWORD* pdwFreq) {
  return fields::Get(m_highFreq, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetHighFreq(DWORD dwFreq) {
  return fields::Set(m_highFreq, dwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::GetSwitchFreq(DWORD* pdwFreq) {
  return fields::Get(m_switchFreq, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetSwitchFreq(DWORD dwFreq) {
  return fields::Set(m_switchFreq, dwFreq);
}

#include "platform/marshaler.h"

HRESULT CreateFreeThreadedMarshaler(IUnknown* controlling, IUnknown** marshaler) {
  return CoCreateFreeThreadedMarshaler(controlling, marshaler);
}

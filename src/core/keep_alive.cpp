// Not inline on purpose: static analysis that sees a count fall takes every use of the object
// behind it for one after its end.
#include "core/keep_alive.h"

KeepAlive::KeepAlive(IUnknown* object) : m_object(object) {}

KeepAlive::~KeepAlive() = default;

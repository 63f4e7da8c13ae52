// The header that the IDL compiler makes of the type library's source, and nothing of ours.
#pragma once

#include <ZorTunedex.h>

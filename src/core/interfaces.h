// The interfaces of ZorTunedex: what a host includes. Together with station_blocks.h this is the
// whole public face. Its parts stand in interfaces/; this header includes them all and is the one
// to include.
//
// Conventions of every method, unless its comment says otherwise:
// - The result is S_OK. A null out-pointer is answered E_POINTER. When a call fails, what the
//   out-pointers name stays untouched.
// - An interface pointer that is handed out carries one reference, which the caller releases.
// - A BSTR that is handed out is a fresh copy, which the caller frees with SysFreeString; a text
//   that was never set comes out null. A BSTR that is handed in is copied; null stores null.
// - BOOL is 32-bit, 0 or 1 unless said otherwise. Indexes are 1-based unless said otherwise.
// - Where no memory is left for a text, a ComError carrying E_OUTOFMEMORY is raised. Loading,
//   saving and opening answer or raise it: part of a list never passes for the whole.
// - Objects may be called from any thread, one at a time; only reference counts are atomic, and the
//   channel list locks the methods that say so.
// - The order of the methods is the order of their slots behind the three of IUnknown, and is
//   fixed.
#pragma once

#include "core/interfaces/channels.h"
#include "core/interfaces/database.h"
#include "core/interfaces/enumerations.h"
#include "core/interfaces/identifiers.h"
#include "core/interfaces/satellites.h"
#include "core/interfaces/station.h"
#include "platform/com.h"

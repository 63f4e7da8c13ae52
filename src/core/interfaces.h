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
// - Where no memory is left for a text, records and the lookups by text raise a ComError carrying
//   E_OUTOFMEMORY. All others answer it: IZorTunedex never raises, and part of a list never passes
//   for the whole. Opening and loading without memory change nothing.
// - Objects may be called from any thread, one at a time; only reference counts are atomic, and the
//   channel list locks the methods that say so.
// - The order of the methods is the order of their slots behind the three of IUnknown, and is
//   fixed.
#pragma once

#include "platform/com.h"
#include "platform/interface_uuid.h"

/// Tells the header that an IDL compiler makes of ZorTunedex.idl that its declarations are here.
#define ZORTUNEDEX_INTERFACES
#ifndef __IZorTunedex_INTERFACE_DEFINED__  // where that header came first, they are there

#include "core/interfaces/channels.h"
#include "core/interfaces/database.h"
#include "core/interfaces/enumerations.h"
#include "core/interfaces/identifiers.h"
#include "core/interfaces/satellites.h"
#include "core/interfaces/station.h"

// What __uuidof names: the class and the interfaces

ZORTUNEDEX_UUID(class, ZorTunedex, CLSID, "D4FDC473-B225-4746-9983-065F8F21D798");
ZORTUNEDEX_UUID(struct, IZorTunedex, IID, "D68DEB38-CC68-4BCF-9757-EDD6FF66F27E");
ZORTUNEDEX_UUID(struct, IChannelInfo, IID, "3584EA46-F4B3-4D80-9D59-6372977C88A0");
ZORTUNEDEX_UUID(struct, IChannelInfoMgr, IID, "FF376EE5-B768-40CF-9F72-128DD130584A");
ZORTUNEDEX_UUID(struct, ISatelliteInfo, IID, "678F0641-A164-49B2-86C0-5B269C54E547");
ZORTUNEDEX_UUID(struct, ISatelliteInfoMgr, IID, "25965562-4302-4466-A569-7A451620A4BB");
ZORTUNEDEX_UUID(struct, ITransponderInfo, IID, "0823766E-9D78-4C9A-A1BB-8FB5BE797B1E");
ZORTUNEDEX_UUID(struct, ITransponderInfoMgr, IID, "A4807474-3D36-413E-B497-FDD7233BDD14");
ZORTUNEDEX_UUID(struct, ILNBInfo, IID, "AC27B5D0-A7A1-4D86-9A60-CE71D8327150");
ZORTUNEDEX_UUID(struct, ILNBInfoMgr, IID, "303C56DC-22C2-47BC-BAAA-397D245B17B3");
ZORTUNEDEX_UUID(struct, IDishSatInfo, IID, "2B02C9F4-A2F3-436E-80F5-AAA924838DD7");
ZORTUNEDEX_UUID(struct, IDishSatInfoMgr, IID, "6364EAFD-2DBE-4434-B42F-46705FA6CE63");

#endif

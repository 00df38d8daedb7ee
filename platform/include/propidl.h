// PROPVARIANT: a tagged value as the platform lays it out. A PROPVARIANT owns what its
// pointers point at (CoTaskMemAlloc memory, a COM reference); PropVariantClear frees
// that and leaves VT_EMPTY.
#pragma once

#include "unknwn.h"
#include "windows.h"

using VARTYPE = uint16_t;
using VARIANT_BOOL = int16_t;

enum VARENUM : VARTYPE {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_BOOL = 11,
  VT_UNKNOWN = 13,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_LPSTR = 30,
  VT_LPWSTR = 31,
  VT_BLOB = 65,
  VT_CLSID = 72,
  VT_VECTOR = 0x1000,
};

struct BLOB {
  ULONG cbSize;
  BYTE* pBlobData;
};

struct CAUB {
  ULONG cElems;
  UCHAR* pElems;
};

struct PROPVARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    CHAR cVal;
    UCHAR bVal;
    SHORT iVal;
    USHORT uiVal;
    LONG lVal;
    ULONG ulVal;
    INT intVal;
    UINT uintVal;
    LARGE_INTEGER hVal;
    ULARGE_INTEGER uhVal;
    FLOAT fltVal;
    DOUBLE dblVal;
    VARIANT_BOOL boolVal;
    SCODE scode;
    LPSTR pszVal;
    LPWSTR pwszVal;
    CLSID* puuid;
    BLOB blob;
    CAUB caub;
    IUnknown* punkVal;
  };
};
using REFPROPVARIANT = const PROPVARIANT&;
using LPPROPVARIANT = PROPVARIANT*;

inline void PropVariantInit(PROPVARIANT* value) { std::memset(value, 0, sizeof(PROPVARIANT)); }

extern "C" {
TESSEL_PLATFORM_API HRESULT WINAPI PropVariantClear(PROPVARIANT* value);
// A deep copy: strings, GUIDs and blobs are duplicated, interfaces gain a reference.
TESSEL_PLATFORM_API HRESULT WINAPI PropVariantCopy(PROPVARIANT* destination, const PROPVARIANT* source);
}

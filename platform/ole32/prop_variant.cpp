// PropVariantClear and PropVariantCopy for the value types the platform hands out.
#include <cstring>

#include "combaseapi.h"
#include "propidl.h"

namespace {

template <typename T>
T* Duplicate(const T* source, size_t count) {
  auto* copy = static_cast<T*>(CoTaskMemAlloc(count * sizeof(T)));
  if (copy && count) std::memcpy(copy, source, count * sizeof(T));
  return copy;
}

size_t WideLength(const WCHAR* text) {
  size_t n = 0;
  while (text[n] != 0) ++n;
  return n;
}

}  // namespace

extern "C" HRESULT WINAPI PropVariantClear(PROPVARIANT* value) {
  if (!value) return S_OK;
  switch (value->vt) {
    case VT_LPWSTR: CoTaskMemFree(value->pwszVal); break;
    case VT_LPSTR: CoTaskMemFree(value->pszVal); break;
    case VT_CLSID: CoTaskMemFree(value->puuid); break;
    case VT_BLOB: CoTaskMemFree(value->blob.pBlobData); break;
    case VT_VECTOR | VT_UI1: CoTaskMemFree(value->caub.pElems); break;
    case VT_UNKNOWN:
      if (value->punkVal) value->punkVal->Release();
      break;
    default: break;
  }
  PropVariantInit(value);
  return S_OK;
}

extern "C" HRESULT WINAPI PropVariantCopy(PROPVARIANT* destination, const PROPVARIANT* source) {
  if (!destination || !source) return E_POINTER;
  PROPVARIANT copy = *source;
  bool missing = false;
  switch (source->vt) {
    case VT_LPWSTR:
      copy.pwszVal = Duplicate(source->pwszVal, WideLength(source->pwszVal) + 1);
      missing = !copy.pwszVal;
      break;
    case VT_LPSTR:
      copy.pszVal = Duplicate(source->pszVal, std::strlen(source->pszVal) + 1);
      missing = !copy.pszVal;
      break;
    case VT_CLSID:
      copy.puuid = Duplicate(source->puuid, 1);
      missing = !copy.puuid;
      break;
    case VT_BLOB:
      copy.blob.pBlobData = Duplicate(source->blob.pBlobData, source->blob.cbSize);
      missing = !copy.blob.pBlobData;
      break;
    case VT_VECTOR | VT_UI1:
      copy.caub.pElems = Duplicate(source->caub.pElems, source->caub.cElems);
      missing = !copy.caub.pElems;
      break;
    case VT_UNKNOWN:
      if (copy.punkVal) copy.punkVal->AddRef();
      break;
    default: break;
  }
  if (missing) return E_OUTOFMEMORY;
  *destination = copy;
  return S_OK;
}

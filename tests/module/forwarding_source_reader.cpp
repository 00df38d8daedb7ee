#include "forwarding_source_reader.h"

#include <mferror.h>

namespace tessel::testing {

namespace {

bool IsVideo(IMFMediaType* type) {
  GUID major{};
  return SUCCEEDED(type->GetGUID(MF_MT_MAJOR_TYPE, &major)) && major == MFMediaType_Video;
}

HRESULT BareType(const FurtherType& further, IMFMediaType** type) {
  HRESULT hr = MFCreateMediaType(type);
  if (SUCCEEDED(hr)) hr = (*type)->SetGUID(MF_MT_MAJOR_TYPE, further.major);
  if (SUCCEEDED(hr)) hr = (*type)->SetGUID(MF_MT_SUBTYPE, further.subtype);
  return hr;
}

}  // namespace

HRESULT ForwardingSourceReader::AlteredCopy(IMFMediaType* original, const GUID& subtype, IMFMediaType** copy) const {
  HRESULT hr = MFCreateMediaType(copy);
  if (SUCCEEDED(hr)) hr = original->CopyAllItems(*copy);
  if (SUCCEEDED(hr) && subtype != GUID_NULL) hr = (*copy)->SetGUID(MF_MT_SUBTYPE, subtype);
  UINT32 numerator = 0, denominator = 0;
  if (SUCCEEDED(hr) && zeroRateDenominator &&
      SUCCEEDED(MFGetAttributeRatio(original, MF_MT_FRAME_RATE, &numerator, &denominator)))
    hr = MFSetAttributeRatio(*copy, MF_MT_FRAME_RATE, numerator, 0);
  return hr;
}

HRESULT ForwardingSourceReader::GetNativeMediaType(DWORD streamIndex, DWORD typeIndex, IMFMediaType** type) {
  IMFMediaType* first = nullptr;
  HRESULT hr = _inner->GetNativeMediaType(streamIndex, 0, &first);
  if (FAILED(hr)) return hr;
  if (!IsVideo(first)) {
    first->Release();
    return _inner->GetNativeMediaType(streamIndex, typeIndex, type);
  }
  *type = nullptr;
  if (typeIndex == 0) {
    hr = AlteredCopy(first, GUID_NULL, type);
  } else if (typeIndex > furtherTypes.size()) {
    hr = MF_E_NO_MORE_TYPES;
  } else {
    const FurtherType& further = furtherTypes[typeIndex - 1];
    hr = further.major == MFMediaType_Video ? AlteredCopy(first, further.subtype, type) : BareType(further, type);
  }
  first->Release();
  if (FAILED(hr) && *type) {
    (*type)->Release();
    *type = nullptr;
  }
  return hr;
}

HRESULT ForwardingSourceReader::GetCurrentMediaType(DWORD streamIndex, IMFMediaType** type) {
  IMFMediaType* current = nullptr;
  HRESULT hr = _inner->GetCurrentMediaType(streamIndex, &current);
  if (FAILED(hr)) return hr;
  if (!IsVideo(current)) {
    *type = current;
    return S_OK;
  }
  *type = nullptr;
  hr = AlteredCopy(current, GUID_NULL, type);
  current->Release();
  if (FAILED(hr) && *type) {
    (*type)->Release();
    *type = nullptr;
  }
  return hr;
}

}  // namespace tessel::testing

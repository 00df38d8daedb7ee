// MFCreateMediaType: a media type is an attribute store with the major type, subtype
// and format attributes of a stream.
#include "com.h"
#include "mfapi.h"
#include "mfplat/attributes_impl.h"

namespace tessel::platform {

namespace {

class MediaType final : public AttributesImpl<RuntimeClass<RuntimeClassFlags<ClassicCom>, ChainInterfaces<IMFMediaType, IMFAttributes>>> {
 public:
  HRESULT STDMETHODCALLTYPE GetMajorType(GUID* majorType) override {
    if (!majorType) return E_POINTER;
    return GetGUID(MF_MT_MAJOR_TYPE, majorType);
  }
  HRESULT STDMETHODCALLTYPE IsCompressedFormat(BOOL* compressed) override {
    if (!compressed) return E_POINTER;
    *compressed = MFGetAttributeUINT32(this, MF_MT_ALL_SAMPLES_INDEPENDENT, FALSE) ? FALSE : TRUE;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE IsEqual(IMFMediaType* other, DWORD* flags) override {
    if (!other || !flags) return E_POINTER;
    *flags = 0;
    if (SameGuid(other, MF_MT_MAJOR_TYPE)) *flags |= MF_MEDIATYPE_EQUAL_MAJOR_TYPES;
    if (SameGuid(other, MF_MT_SUBTYPE)) *flags |= MF_MEDIATYPE_EQUAL_FORMAT_TYPES;
    if (SameItems(other)) *flags |= MF_MEDIATYPE_EQUAL_FORMAT_DATA | MF_MEDIATYPE_EQUAL_FORMAT_USER_DATA;
    constexpr DWORD kAll = MF_MEDIATYPE_EQUAL_MAJOR_TYPES | MF_MEDIATYPE_EQUAL_FORMAT_TYPES |
                           MF_MEDIATYPE_EQUAL_FORMAT_DATA | MF_MEDIATYPE_EQUAL_FORMAT_USER_DATA;
    return *flags == kAll ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE GetRepresentation(GUID /*representation*/, LPVOID* /*data*/) override {
    return MF_E_UNSUPPORTED_REPRESENTATION;
  }
  HRESULT STDMETHODCALLTYPE FreeRepresentation(GUID /*representation*/, LPVOID /*data*/) override {
    return MF_E_UNSUPPORTED_REPRESENTATION;
  }

 private:
  bool SameGuid(IMFMediaType* other, REFGUID key) {
    GUID mine, theirs;
    return SUCCEEDED(GetGUID(key, &mine)) && SUCCEEDED(other->GetGUID(key, &theirs)) && mine == theirs;
  }
};

}  // namespace

}  // namespace tessel::platform

extern "C" HRESULT WINAPI MFCreateMediaType(IMFMediaType** mediaType) {
  if (!mediaType) return E_POINTER;
  *mediaType = new (std::nothrow) tessel::platform::MediaType();
  return *mediaType ? S_OK : E_OUTOFMEMORY;
}

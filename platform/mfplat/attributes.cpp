// MFCreateAttributes: a plain attribute store.
#include "mfapi.h"
#include "mfplat/attributes_impl.h"
#include "ref_count.h"

namespace tessel::platform {

namespace {

class Attributes final : public AttributesImpl<IMFAttributes> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
    if (!object) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IMFAttributes) {
      *object = static_cast<IMFAttributes*>(this);
      AddRef();
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return refs_.Add(); }
  ULONG STDMETHODCALLTYPE Release() override { return refs_.Drop(this); }

 private:
  RefCount refs_;
};

}  // namespace

}  // namespace tessel::platform

extern "C" HRESULT WINAPI MFCreateAttributes(IMFAttributes** attributes, UINT32 /*initialSize*/) {
  if (!attributes) return E_POINTER;
  *attributes = new (std::nothrow) tessel::platform::Attributes();
  return *attributes ? S_OK : E_OUTOFMEMORY;
}

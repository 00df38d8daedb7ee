// MFCreateAttributes: a plain attribute store.
#include "com.h"
#include "mfapi.h"
#include "mfplat/attributes_impl.h"

namespace tessel::platform {

namespace {

class Attributes final : public AttributesImpl<RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFAttributes>> {
 public:
 private:
};

}  // namespace

}  // namespace tessel::platform

extern "C" HRESULT WINAPI MFCreateAttributes(IMFAttributes** attributes, UINT32 /*initialSize*/) {
  if (!attributes) return E_POINTER;
  *attributes = new (std::nothrow) tessel::platform::Attributes();
  return *attributes ? S_OK : E_OUTOFMEMORY;
}

// MFCreateAsyncResult and MFInvokeCallback.
#include <atomic>
#include <new>

#include "com.h"
#include "mfapi.h"
#include "mfplat/work_queue.h"

namespace tessel::platform {

namespace {

// Holds a reference on its object, callback and state until it is destroyed.
class AsyncResult final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFAsyncResult> {
 public:
  AsyncResult(IUnknown* object, IMFAsyncCallback* callback, IUnknown* state)
      : object_(object), callback_(callback), state_(state) {}

  HRESULT STDMETHODCALLTYPE GetState(IUnknown** state) override {
    if (!state) return E_POINTER;
    if (!state_) return E_POINTER;
    *state = ComPtr<IUnknown>(state_).Detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetStatus() override { return status_.load(); }
  HRESULT STDMETHODCALLTYPE SetStatus(HRESULT status) override {
    status_ = status;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetObject(IUnknown** object) override {
    if (!object) return E_POINTER;
    *object = ComPtr<IUnknown>(object_).Detach();
    return *object ? S_OK : E_POINTER;
  }
  IUnknown* STDMETHODCALLTYPE GetStateNoAddRef() override { return state_.Get(); }

  IMFAsyncCallback* Callback() const { return callback_.Get(); }

 private:
  ComPtr<IUnknown> object_;
  ComPtr<IMFAsyncCallback> callback_;
  ComPtr<IUnknown> state_;
  std::atomic<HRESULT> status_{S_OK};
};

}  // namespace

}  // namespace tessel::platform

using tessel::platform::AsyncResult;
using tessel::platform::ComPtr;

extern "C" HRESULT WINAPI MFCreateAsyncResult(IUnknown* object, IMFAsyncCallback* callback, IUnknown* state,
                                              IMFAsyncResult** result) {
  if (!result) return E_POINTER;
  *result = new (std::nothrow) AsyncResult(object, callback, state);
  return *result ? S_OK : E_OUTOFMEMORY;
}

// The result keeps itself and its callback alive until Invoke has returned.
extern "C" HRESULT WINAPI MFInvokeCallback(IMFAsyncResult* result) {
  if (!result) return E_POINTER;
  auto* ours = dynamic_cast<AsyncResult*>(result);
  if (!ours || !ours->Callback()) return E_INVALIDARG;
  ComPtr<IMFAsyncResult> keep(result);
  return tessel::platform::PostToWorkQueue([keep] {
    static_cast<AsyncResult*>(keep.Get())->Callback()->Invoke(keep.Get());
  });
}

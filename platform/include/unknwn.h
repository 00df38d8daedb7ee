// IUnknown: the base of every COM-style object of the platform. Objects count their own
// references; the last Release destroys the object.
#pragma once

#include "windows.h"

DEFINE_GUID(IID_IUnknown, 0x00000000, 0x0000, 0x0000, 0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46);

// __uuidof(Interface) gives the IID of an interface type, as the system's compiler does.
// Each interface header ties its type to its IID with DECLARE_INTERFACE_IID after the
// interface's declaration.
template <typename Interface>
struct InterfaceIidOf;
#define DECLARE_INTERFACE_IID(type, iid)  \
  template <>                             \
  struct InterfaceIidOf<type> {           \
    static constexpr const IID& value = iid; \
  }
#define __uuidof(type) (InterfaceIidOf<type>::value)

struct IUnknown {
  virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) = 0;
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;
};
DECLARE_INTERFACE_IID(IUnknown, IID_IUnknown);

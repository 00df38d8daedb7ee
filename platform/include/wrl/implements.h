// Microsoft::WRL::RuntimeClass: QueryInterface, AddRef and Release for a list of
// interfaces, so that a COM class writes only its own methods. Classic COM only:
//
//   class Sample final : public RuntimeClass<RuntimeClassFlags<ClassicCom>,
//                                            ChainInterfaces<IMFSample, IMFAttributes>> { ... };
//
// The count starts at 1 for the creator (`new` or `Make`); the Release that brings it to 0
// deletes the object through its virtual destructor. QueryInterface answers IUnknown and
// every listed interface; ChainInterfaces<Derived, Bases...> names bases of one listed
// interface that it answers too.
#pragma once

#include <atomic>
#include <new>
#include <utility>

#include "wrl/client.h"

namespace Microsoft::WRL {

enum RuntimeClassType { WinRt = 0x0001, ClassicCom = 0x0002 };

template <unsigned int flags>
struct RuntimeClassFlags {
  static constexpr unsigned int value = flags;
};

template <typename Derived, typename... Bases>
struct ChainInterfaces : Derived {};

namespace Details {

// How a listed entry answers QueryInterface: its own IID, and for a chain those of the
// bases it names, each through the one vtable of the chain's derived interface.
template <typename Interface>
struct Entry {
  using Vtable = Interface;
  static bool Answers(REFIID riid) { return riid == __uuidof(Interface); }
};
template <typename Derived, typename... Bases>
struct Entry<ChainInterfaces<Derived, Bases...>> {
  using Vtable = Derived;
  static bool Answers(REFIID riid) { return riid == __uuidof(Derived) || ((riid == __uuidof(Bases)) || ...); }
};

template <typename First, typename... Rest>
struct FirstOf {
  using Type = First;
};

}  // namespace Details

template <typename Flags, typename... Interfaces>
class RuntimeClass : public Interfaces... {
  static_assert(Flags::value == ClassicCom, "only classic COM classes are offered");

 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (riid == IID_IUnknown) {
      using First = typename Details::Entry<typename Details::FirstOf<Interfaces...>::Type>::Vtable;
      *object = static_cast<IUnknown*>(static_cast<First*>(this));
    } else {
      ((!*object && Details::Entry<Interfaces>::Answers(riid)
            ? void(*object = static_cast<typename Details::Entry<Interfaces>::Vtable*>(this))
            : void()),
       ...);
    }
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return refs_.fetch_add(1, std::memory_order_relaxed) + 1; }
  ULONG STDMETHODCALLTYPE Release() override {
    ULONG left = refs_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) delete this;
    return left;
  }

  RuntimeClass(const RuntimeClass&) = delete;
  RuntimeClass& operator=(const RuntimeClass&) = delete;

 protected:
  RuntimeClass() = default;
  virtual ~RuntimeClass() = default;

 private:
  std::atomic<ULONG> refs_{1};
};

// A new object with its first reference in the pointer; an empty pointer without memory.
template <typename T, typename... Args>
ComPtr<T> Make(Args&&... args) {
  ComPtr<T> object;
  object.Attach(new (std::nothrow) T(std::forward<Args>(args)...));
  return object;
}

}  // namespace Microsoft::WRL

// _com_error: a status with its text, as the compiler's COM support publishes it. The
// text is made on first request: the system's message for the status without its
// final line end, or one of two fallback wordings. Not thread-safe; one owner.
#pragma once

#include "corecrt_wstdio.h"
#include "oaidl.h"
#include "windows.h"

class _com_error {
 public:
  explicit _com_error(HRESULT hr, IErrorInfo* errorInfo = nullptr, bool addRef = false)
      : m_hresult(hr), m_perrinfo(errorInfo), m_pszMsg(nullptr) {
    if (m_perrinfo && addRef) m_perrinfo->AddRef();
  }
  _com_error(const _com_error& other) : m_hresult(other.m_hresult), m_perrinfo(other.m_perrinfo), m_pszMsg(nullptr) {
    if (m_perrinfo) m_perrinfo->AddRef();
  }
  _com_error& operator=(const _com_error&) = delete;
  virtual ~_com_error() {
    if (m_perrinfo) m_perrinfo->Release();
    if (m_pszMsg) LocalFree(m_pszMsg);
  }

  HRESULT Error() const { return m_hresult; }
  IErrorInfo* ErrorInfo() const {
    if (m_perrinfo) m_perrinfo->AddRef();
    return m_perrinfo;
  }
  WORD WCode() const { return HRESULTToWCode(m_hresult); }

  // The text stays owned by this object until it is destroyed.
  const WCHAR* ErrorMessage() const {
    if (m_pszMsg) return m_pszMsg;
    FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                   nullptr, static_cast<DWORD>(m_hresult), MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                   reinterpret_cast<LPWSTR>(&m_pszMsg), 0, nullptr);
    if (m_pszMsg) {
      TrimLineEnd(m_pszMsg);
      return m_pszMsg;
    }
    m_pszMsg = static_cast<LPWSTR>(LocalAlloc(0, 32 * sizeof(WCHAR)));
    if (!m_pszMsg) return nullptr;
    WORD code = WCode();
    if (code != 0) {
      swprintf_s(m_pszMsg, 32, u"IDispatch error #%d", static_cast<int>(code));
    } else {
      swprintf_s(m_pszMsg, 32, u"Unknown error 0x%0lX", static_cast<unsigned long>(static_cast<DWORD>(m_hresult)));
    }
    return m_pszMsg;
  }

  // Statuses 0x80040200 to 0x8004FFFF carry a dispatch code; everything else gives 0.
  static WORD HRESULTToWCode(HRESULT hr) {
    DWORD code = static_cast<DWORD>(hr) - 0x80040200u;
    return code <= 0xFDFF ? static_cast<WORD>(code) : 0;
  }

 private:
  // Removes one "\n" or "\r\n" at the very end of a text longer than one character.
  static void TrimLineEnd(WCHAR* text) {
    size_t length = 0;
    while (text[length] != 0) ++length;
    if (length > 1 && text[length - 1] == u'\n') {
      text[length - 1] = 0;
      if (text[length - 2] == u'\r') text[length - 2] = 0;
    }
  }

  HRESULT m_hresult;
  IErrorInfo* m_perrinfo;
  mutable LPWSTR m_pszMsg;
};

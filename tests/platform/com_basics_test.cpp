// Statuses and their texts, GUID text, PROPVARIANT and the UTF-16 formatter.
#include <gtest/gtest.h>

#include <string>

#include "comdef.h"
#include "corecrt_wstdio.h"
#include "mfapi.h"
#include "mferror.h"
#include "objbase.h"

namespace {

std::u16string Text(const WCHAR* text) { return text ? std::u16string(text) : std::u16string(u"<null>"); }

TEST(ComError, SuccessStatusesAreNotErrors) {
  EXPECT_TRUE(SUCCEEDED(S_FALSE));
  EXPECT_FALSE(FAILED(S_FALSE));
  EXPECT_TRUE(FAILED(E_FAIL));
}

TEST(ComError, SystemTextLosesOnlyItsLineEnd) {
  _com_error error(HRESULT(0x80070002));
  EXPECT_EQ(Text(error.ErrorMessage()), u"The system cannot find the file specified.");
  EXPECT_EQ(error.ErrorMessage(), error.ErrorMessage()) << "the text is made once";
}

// Inside the dispatch range a status without text gives its number, outside it its value.
TEST(ComError, StatusesWithoutTextGiveTheirNumberOrValue) {
  EXPECT_EQ(Text(_com_error(HRESULT(0x80040201)).ErrorMessage()), u"IDispatch error #1");
  EXPECT_EQ(Text(_com_error(HRESULT(0x8004FFFF)).ErrorMessage()), u"IDispatch error #65023");
  EXPECT_EQ(Text(_com_error(HRESULT(0xC00DFFFF)).ErrorMessage()), u"Unknown error 0xC00DFFFF");
  EXPECT_EQ(Text(_com_error(HRESULT(0x80040200)).ErrorMessage()), u"Unknown error 0x80040200");
}

TEST(ComError, MediaFoundationStatusesHaveSystemTexts) {
  for (HRESULT hr : {MF_E_INVALIDSTREAMNUMBER, MF_E_NO_MORE_TYPES, MF_E_INVALIDMEDIATYPE, MF_E_INVALIDREQUEST,
                     MF_E_NOTACCEPTING, MF_E_UNSUPPORTED_BYTESTREAM_TYPE, MF_E_ATTRIBUTENOTFOUND,
                     MF_E_PLATFORM_NOT_INITIALIZED, MF_E_TOPO_CODEC_NOT_FOUND, MF_E_TRANSFORM_TYPE_NOT_SET,
                     MF_E_NO_SAMPLE_TIMESTAMP, MF_E_BUFFERTOOSMALL, MF_E_UNSUPPORTED_SERVICE, E_OUTOFMEMORY,
                     E_INVALIDARG, E_FAIL, E_NOTIMPL}) {
    std::u16string text = Text(_com_error(hr).ErrorMessage());
    EXPECT_EQ(text.find(u"Unknown error"), std::u16string::npos) << std::hex << hr;
    EXPECT_EQ(text.find(u'\n'), std::u16string::npos) << std::hex << hr;
  }
}

TEST(FormatMessage, GivesTheLineEndAndFailsForUnknownStatuses) {
  LPWSTR text = nullptr;
  DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                    FORMAT_MESSAGE_IGNORE_INSERTS,
                                nullptr, 0x80070057, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                                reinterpret_cast<LPWSTR>(&text), 0, nullptr);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(std::u16string(text), u"The parameter is incorrect.\r\n");
  EXPECT_EQ(length, 29u);
  EXPECT_EQ(LocalFree(text), nullptr);
  text = nullptr;
  EXPECT_EQ(FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM, nullptr, 0xC00DFFFF, 0,
                           reinterpret_cast<LPWSTR>(&text), 0, nullptr),
            0u);
  EXPECT_EQ(text, nullptr);
  EXPECT_EQ(GetLastError(), ERROR_MR_MID_NOT_FOUND);
}

TEST(WideFormat, WidthZeroPaddingAndOverflow) {
  WCHAR buffer[32];
  EXPECT_EQ(swprintf_s(buffer, 32, u"[%08X|%-4d|%5d|%x]", 0xBEEFu, 7, -42, 255u), 24);
  EXPECT_EQ(std::u16string(buffer), u"[0000BEEF|7   |  -42|ff]");
  EXPECT_EQ(swprintf_s(buffer, 32, u"%s and %%", u"text"), 10);
  EXPECT_EQ(std::u16string(buffer), u"text and %");
  EXPECT_EQ(swprintf_s(buffer, 4, u"%d", 12345), -1);
  EXPECT_EQ(buffer[0], 0);
}

TEST(GuidText, RegistryFormInUpperCase) {
  LPWSTR text = nullptr;
  ASSERT_EQ(StringFromCLSID(MF_MT_VIDEO_ROTATION, &text), S_OK);
  EXPECT_EQ(std::u16string(text), u"{C380465D-2271-428C-9B83-ECEA3B4A85C1}");
  CoTaskMemFree(text);
}

TEST(PropVariant, ClearFreesAndEmpties) {
  PROPVARIANT value;
  PropVariantInit(&value);
  value.vt = VT_LPWSTR;
  value.pwszVal = static_cast<LPWSTR>(CoTaskMemAlloc(8));
  value.pwszVal[0] = 0;
  EXPECT_EQ(PropVariantClear(&value), S_OK);
  EXPECT_EQ(value.vt, VT_EMPTY);
  EXPECT_EQ(value.pwszVal, nullptr);
}

TEST(PublishedValues, SubtypesCarryTheirFormatCodes) {
  EXPECT_EQ(MFVideoFormat_YUY2.Data1, 0x32595559u);
  EXPECT_EQ(MFVideoFormat_RGB32.Data1, 22u);
  EXPECT_EQ(MFAudioFormat_AAC.Data1, 0x1610u);
  EXPECT_EQ(MFVideoFormat_Base, MFAudioFormat_Base);
  EXPECT_EQ(MF_E_INVALIDSTREAMNUMBER, HRESULT(0xC00D36B3));
  EXPECT_EQ(MF_E_NO_MORE_TYPES, HRESULT(0xC00D36B9));
}

}  // namespace

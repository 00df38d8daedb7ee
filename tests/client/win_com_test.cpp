#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/win_com.h"

namespace vorna {
namespace {

TEST(CheckHResultTest, SuccessCodesPass) {
  EXPECT_FALSE(CheckHResult(S_OK).IsError());
  EXPECT_FALSE(CheckHResult(S_FALSE).IsError());
}

TEST(CheckHResultTest, FailuresBecomeIllegalStateAtTheCheck) {
  struct {
    uint32_t status;
    const char* message;
  } cases[] = {
      {0x80070002, "Error 0x80070002: The system cannot find the file specified."},
      {0x80040201, "Error 0x80040201: IDispatch error #1"},
      {0xC00DFFFF, "Error 0xC00DFFFF: Unknown error 0xC00DFFFF"},
      {0x80040200, "Error 0x80040200: Unknown error 0x80040200"},
  };
  for (auto& c : cases) {
    Result<void> result = CheckHResult(HRESULT(c.status));
    ASSERT_TRUE(result.IsError());
    EXPECT_TRUE(IsErrorOfClass(result.GetError(), g_IllegalStateErrorObject));
    EXPECT_STREQ(ErrorOf(result.GetError()).GetMessage().GetCString().GetValue().GetCString(), c.message);
    SourceLocation where = ErrorOf(result.GetError()).GetLocation();
    EXPECT_STREQ(where.file, "../../../frameworks/core.framework/source/vorna/win_com");
    EXPECT_EQ(where.line, 37);
  }
}

TEST(PropVariantToInt64Test, ReadsTheFourWholeNumberTypes) {
  PROPVARIANT value;
  PropVariantInit(&value);
  value.vt = VT_I8;
  value.hVal.QuadPart = -5;
  EXPECT_EQ(PropVariantToInt64(value).GetValue(), -5);
  value.vt = VT_UI8;
  value.uhVal.QuadPart = 0xFFFFFFFFFFFFFFFFull;
  EXPECT_EQ(PropVariantToInt64(value).GetValue(), -1);
  value.vt = VT_INT;
  value.intVal = INT(0xFFFFFFFF);
  EXPECT_EQ(PropVariantToInt64(value).GetValue(), -1);
  value.vt = VT_UINT;
  value.uintVal = 0xFFFFFFFFu;
  EXPECT_EQ(PropVariantToInt64(value).GetValue(), 4294967295ll);
}

TEST(PropVariantToInt64Test, OtherTypesAreAnIllegalArgument) {
  PROPVARIANT value;
  PropVariantInit(&value);
  value.vt = VT_R8;
  value.dblVal = 2.0;
  Result<Int64> result = PropVariantToInt64(value);
  ASSERT_TRUE(result.IsError());
  EXPECT_EQ(result.GetValue(), 0);
  EXPECT_TRUE(IsErrorOfClass(result.GetError(), g_IllegalArgumentErrorObject));
  EXPECT_EQ(ErrorOf(result.GetError()).GetLocation().line, 76);
}

TEST(GuidFormatTest, RegistryFormInUpperCase) {
  const GUID rotation = {0xC380465D, 0x2271, 0x428C, {0x9B, 0x83, 0xEC, 0xEA, 0x3B, 0x4A, 0x85, 0xC1}};
  Result<CString> text = FormatToString("subtype @", rotation).GetCString();
  EXPECT_STREQ(text.GetValue().GetCString(), "subtype {C380465D-2271-428C-9B83-ECEA3B4A85C1}");
}

}  // namespace
}  // namespace vorna

#include <gtest/gtest.h>

#include <mfapi.h>

#include "guid_name.h"
#include "host_environment.h"

namespace {

std::string Text(const vorna::String& s) {
  vorna::Result<vorna::CString> bytes = s.GetCString();
  return bytes.IsError() ? "<error>" : bytes.GetValue().GetCString();
}

TEST(GuidNameTest, PublishedNamesFirstMatchWins) {
  EXPECT_EQ(Text(tessel::GuidName(MFVideoFormat_H264)), "MFVideoFormat_H264");
  EXPECT_EQ(Text(tessel::GuidName(MFMediaType_Audio)), "MFMediaType_Audio");
  EXPECT_EQ(Text(tessel::GuidName(MFAudioFormat_AAC)), "MFAudioFormat_AAC");
  EXPECT_EQ(Text(tessel::GuidName(MFAudioFormat_Base)), "MFVideoFormat_Base") << "two names, one GUID";
  EXPECT_EQ(Text(tessel::GuidName(MF_MT_ORIGINAL_WAVE_FORMAT_TAG)), "MF_MT_ORIGINAL_WAVE_FORMAT_TAG");
}

TEST(GuidNameTest, UnknownGuidsReadInTheirRegistryForm) {
  EXPECT_EQ(Text(tessel::GuidName(MF_MT_VIDEO_ROTATION)), "{C380465D-2271-428C-9B83-ECEA3B4A85C1}");
}

}  // namespace

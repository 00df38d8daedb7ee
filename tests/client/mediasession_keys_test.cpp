#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/mediasession_keys.h"
#include "vorna/resourceid.h"

namespace vorna {
namespace {

VORNA_DEFINE_RESOURCE_ID(g_localFps, "vorna.mediaformat.video.fps");

TEST(MediaSessionKeysTest, KeysAreInternedByTheirFullNames) {
  ASSERT_TRUE(g_mediaFormatVideoFps.IsSet());
  EXPECT_EQ(g_mediaFormatVideoFps.Get(), g_localFps.Get()) << "a key of one name has one identity";
  EXPECT_STREQ((*g_mediaFormatImagePixelformat).GetCString(), "vorna.mediaformat.image.pixelformat");
  EXPECT_STREQ((*g_mediaPropertiesVideoSkippedframes).GetCString(), "vorna.mediaproperties.video.skippedframes");
  EXPECT_STREQ((*g_mediaOutputUrlEmbedColorprofile).GetCString(), "vorna.mediaoutputurlproperties.embed_colorprofile");
  EXPECT_STREQ((*g_fileFormatCommonsuffixes).GetCString(), "vorna.fileformatproperties.commonsuffixes");
  EXPECT_FALSE(g_mediaInputSupportsVideo == g_mediaOutputUrlSupportsVideo);
}

}  // namespace
}  // namespace vorna

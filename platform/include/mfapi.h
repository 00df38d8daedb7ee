// Media Foundation platform functions (MFPlat.DLL) and the media type vocabulary:
// attribute keys, major types and subtypes with their published GUID values.
#pragma once

#include "mfobjects.h"
#include "windows.h"

inline constexpr ULONG MF_SDK_VERSION = 0x0002;
inline constexpr ULONG MF_API_VERSION = 0x0070;
inline constexpr ULONG MF_VERSION = (MF_SDK_VERSION << 16 | MF_API_VERSION);
inline constexpr DWORD MFSTARTUP_NOSOCKET = 0x1;
inline constexpr DWORD MFSTARTUP_LITE = MFSTARTUP_NOSOCKET;
inline constexpr DWORD MFSTARTUP_FULL = 0;

// The four-character code of a subtype: the first 32 bits of its GUID, first letter in
// the lowest byte.
constexpr DWORD MFFourCC(const char (&code)[5]) {
  return DWORD(uint8_t(code[0])) | DWORD(uint8_t(code[1])) << 8 | DWORD(uint8_t(code[2])) << 16 |
         DWORD(uint8_t(code[3])) << 24;
}

// Subtypes made from a four-character code, a D3D format number or a wave format tag.
#define DEFINE_MEDIATYPE_GUID(name, format) \
  DEFINE_GUID(name, format, 0x0000, 0x0010, 0x80, 0x00, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71)

// Attribute keys of media types.
DEFINE_GUID(MF_MT_MAJOR_TYPE, 0x48eba18e, 0xf8c9, 0x4687, 0xbf, 0x11, 0x0a, 0x74, 0xc9, 0xf9, 0x6a, 0x8f);
DEFINE_GUID(MF_MT_SUBTYPE, 0xf7e34c9a, 0x42e8, 0x4714, 0xb7, 0x4b, 0xcb, 0x29, 0xd7, 0x2c, 0x35, 0xe5);
DEFINE_GUID(MF_MT_ALL_SAMPLES_INDEPENDENT, 0xc9173739, 0x5e56, 0x461c, 0xb7, 0x13, 0x46, 0xfb, 0x99, 0x5c, 0xb9, 0x5f);
DEFINE_GUID(MF_MT_FIXED_SIZE_SAMPLES, 0xb8ebefaf, 0xb718, 0x4e04, 0xb0, 0xa9, 0x11, 0x67, 0x75, 0xe3, 0x32, 0x1b);
DEFINE_GUID(MF_MT_COMPRESSED, 0x3afd0cee, 0x18f2, 0x4ba5, 0xa1, 0x10, 0x8b, 0xea, 0x50, 0x2e, 0x1f, 0x92);
DEFINE_GUID(MF_MT_SAMPLE_SIZE, 0xdad3ab78, 0x1990, 0x408b, 0xbc, 0xe2, 0xeb, 0xa6, 0x73, 0xda, 0xcc, 0x10);
DEFINE_GUID(MF_MT_WRAPPED_TYPE, 0x4d3f7b23, 0xd02f, 0x4e6c, 0x9b, 0xee, 0xe4, 0xbf, 0x2c, 0x6c, 0x69, 0x5d);
DEFINE_GUID(MF_MT_AUDIO_NUM_CHANNELS, 0x37e48bf5, 0x645e, 0x4c5b, 0x89, 0xde, 0xad, 0xa9, 0xe2, 0x9b, 0x69, 0x6a);
DEFINE_GUID(MF_MT_AUDIO_SAMPLES_PER_SECOND, 0x5faeeae7, 0x0290, 0x4c31, 0x9e, 0x8a, 0xc5, 0x34, 0xf6, 0x8d, 0x9d, 0xba);
DEFINE_GUID(MF_MT_AUDIO_FLOAT_SAMPLES_PER_SECOND, 0xfb3b724a, 0xcfb5, 0x4319, 0xae, 0xfe, 0x6e, 0x42, 0xb2, 0x40, 0x61, 0x32);
DEFINE_GUID(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, 0x1aab75c8, 0xcfef, 0x451c, 0xab, 0x95, 0xac, 0x03, 0x4b, 0x8e, 0x17, 0x31);
DEFINE_GUID(MF_MT_AUDIO_BLOCK_ALIGNMENT, 0x322de230, 0x9eeb, 0x43bd, 0xab, 0x7a, 0xff, 0x41, 0x22, 0x51, 0x54, 0x1d);
DEFINE_GUID(MF_MT_AUDIO_BITS_PER_SAMPLE, 0xf2deb57f, 0x40fa, 0x4764, 0xaa, 0x33, 0xed, 0x4f, 0x2d, 0x1f, 0xf6, 0x69);
DEFINE_GUID(MF_MT_AUDIO_VALID_BITS_PER_SAMPLE, 0xd9bf8d6a, 0x9530, 0x4b7c, 0x9d, 0xdf, 0xff, 0x6f, 0xd5, 0x8b, 0xbd, 0x06);
DEFINE_GUID(MF_MT_AUDIO_SAMPLES_PER_BLOCK, 0xaab15aac, 0xe13a, 0x4995, 0x92, 0x22, 0x50, 0x1e, 0xa1, 0x5c, 0x68, 0x77);
DEFINE_GUID(MF_MT_AUDIO_CHANNEL_MASK, 0x55fb5765, 0x644a, 0x4caf, 0x84, 0x79, 0x93, 0x89, 0x83, 0xbb, 0x15, 0x88);
DEFINE_GUID(MF_MT_AUDIO_FOLDDOWN_MATRIX, 0x9d62927c, 0x36be, 0x4cf2, 0xb5, 0xc4, 0xa3, 0x92, 0x6e, 0x3e, 0x87, 0x11);
DEFINE_GUID(MF_MT_AUDIO_WMADRC_PEAKREF, 0x9d62927d, 0x36be, 0x4cf2, 0xb5, 0xc4, 0xa3, 0x92, 0x6e, 0x3e, 0x87, 0x11);
DEFINE_GUID(MF_MT_AUDIO_WMADRC_PEAKTARGET, 0x9d62927e, 0x36be, 0x4cf2, 0xb5, 0xc4, 0xa3, 0x92, 0x6e, 0x3e, 0x87, 0x11);
DEFINE_GUID(MF_MT_AUDIO_WMADRC_AVGREF, 0x9d62927f, 0x36be, 0x4cf2, 0xb5, 0xc4, 0xa3, 0x92, 0x6e, 0x3e, 0x87, 0x11);
DEFINE_GUID(MF_MT_AUDIO_WMADRC_AVGTARGET, 0x9d629280, 0x36be, 0x4cf2, 0xb5, 0xc4, 0xa3, 0x92, 0x6e, 0x3e, 0x87, 0x11);
DEFINE_GUID(MF_MT_AUDIO_PREFER_WAVEFORMATEX, 0xa901aaba, 0xe037, 0x458a, 0xbd, 0xf6, 0x54, 0x5b, 0xe2, 0x07, 0x40, 0x42);
DEFINE_GUID(MF_MT_AAC_PAYLOAD_TYPE, 0xbfbabe79, 0x7434, 0x4d1c, 0x94, 0xf0, 0x72, 0xa3, 0xb9, 0xe1, 0x71, 0x88);
DEFINE_GUID(MF_MT_AAC_AUDIO_PROFILE_LEVEL_INDICATION, 0x7632f0e6, 0x9538, 0x4d61, 0xac, 0xda, 0xea, 0x29, 0xc8, 0xc1, 0x44, 0x56);
DEFINE_GUID(MF_MT_FRAME_SIZE, 0x1652c33d, 0xd6b2, 0x4012, 0xb8, 0x34, 0x72, 0x03, 0x08, 0x49, 0xa3, 0x7d);
DEFINE_GUID(MF_MT_FRAME_RATE, 0xc459a2e8, 0x3d2c, 0x4e44, 0xb1, 0x32, 0xfe, 0xe5, 0x15, 0x6c, 0x7b, 0xb0);
DEFINE_GUID(MF_MT_FRAME_RATE_RANGE_MAX, 0xe3371d41, 0xb4cf, 0x4a05, 0xbd, 0x4e, 0x20, 0xb8, 0x8b, 0xb2, 0xc4, 0xd6);
DEFINE_GUID(MF_MT_FRAME_RATE_RANGE_MIN, 0xd2e7558c, 0xdc1f, 0x403f, 0x9a, 0x72, 0xd2, 0x8b, 0xb1, 0xeb, 0x3b, 0x5e);
DEFINE_GUID(MF_MT_PIXEL_ASPECT_RATIO, 0xc6376a1e, 0x8d0a, 0x4027, 0xbe, 0x45, 0x6d, 0x9a, 0x0a, 0xd3, 0x9b, 0xb6);
DEFINE_GUID(MF_MT_DRM_FLAGS, 0x8772f323, 0x355a, 0x4cc7, 0xbb, 0x78, 0x6d, 0x61, 0xa0, 0x48, 0xae, 0x82);
DEFINE_GUID(MF_MT_PAD_CONTROL_FLAGS, 0x4d0e73e5, 0x80ea, 0x4354, 0xa9, 0xd0, 0x11, 0x76, 0xce, 0xb0, 0x28, 0xea);
DEFINE_GUID(MF_MT_SOURCE_CONTENT_HINT, 0x68aca3cc, 0x22d0, 0x44e6, 0x85, 0xf8, 0x28, 0x16, 0x71, 0x97, 0xfa, 0x38);
DEFINE_GUID(MF_MT_VIDEO_CHROMA_SITING, 0x65df2370, 0xc773, 0x4c33, 0xaa, 0x64, 0x84, 0x3e, 0x06, 0x8e, 0xfb, 0x0c);
DEFINE_GUID(MF_MT_INTERLACE_MODE, 0xe2724bb8, 0xe676, 0x4806, 0xb4, 0xb2, 0xa8, 0xd6, 0xef, 0xb4, 0x4c, 0xcd);
DEFINE_GUID(MF_MT_TRANSFER_FUNCTION, 0x5fb0fce9, 0xbe5c, 0x4935, 0xa8, 0x11, 0xec, 0x83, 0x8f, 0x8e, 0xed, 0x93);
DEFINE_GUID(MF_MT_VIDEO_PRIMARIES, 0xdbfbe4d7, 0x0740, 0x4ee0, 0x81, 0x92, 0x85, 0x0a, 0xb0, 0xe2, 0x19, 0x35);
DEFINE_GUID(MF_MT_CUSTOM_VIDEO_PRIMARIES, 0x47537213, 0x8cfb, 0x4722, 0xaa, 0x34, 0xfb, 0xc9, 0xe2, 0x4d, 0x77, 0xb8);
DEFINE_GUID(MF_MT_YUV_MATRIX, 0x3e23d450, 0x2c75, 0x4d25, 0xa0, 0x0e, 0xb9, 0x16, 0x70, 0xd1, 0x23, 0x27);
DEFINE_GUID(MF_MT_VIDEO_LIGHTING, 0x53a0529c, 0x890b, 0x4216, 0x8b, 0xf9, 0x59, 0x93, 0x67, 0xad, 0x6d, 0x20);
DEFINE_GUID(MF_MT_VIDEO_NOMINAL_RANGE, 0xc21b8ee5, 0xb956, 0x4071, 0x8d, 0xaf, 0x32, 0x5e, 0xdf, 0x5c, 0xab, 0x11);
DEFINE_GUID(MF_MT_GEOMETRIC_APERTURE, 0x66758743, 0x7e5f, 0x400d, 0x98, 0x0a, 0xaa, 0x85, 0x96, 0xc8, 0x56, 0x96);
DEFINE_GUID(MF_MT_MINIMUM_DISPLAY_APERTURE, 0xd7388766, 0x18fe, 0x48c6, 0xa1, 0x77, 0xee, 0x89, 0x48, 0x67, 0xc8, 0xc4);
DEFINE_GUID(MF_MT_PAN_SCAN_APERTURE, 0x79614dde, 0x9187, 0x48fb, 0xb8, 0xc7, 0x4d, 0x52, 0x68, 0x9d, 0xe6, 0x49);
DEFINE_GUID(MF_MT_PAN_SCAN_ENABLED, 0x4b7f6bc3, 0x8b13, 0x40b2, 0xa9, 0x93, 0xab, 0xf6, 0x30, 0xb8, 0x20, 0x4e);
DEFINE_GUID(MF_MT_AVG_BITRATE, 0x20332624, 0xfb0d, 0x4d9e, 0xbd, 0x0d, 0xcb, 0xf6, 0x78, 0x6c, 0x10, 0x2e);
DEFINE_GUID(MF_MT_AVG_BIT_ERROR_RATE, 0x799cabd6, 0x3508, 0x4db4, 0xa3, 0xc7, 0x56, 0x9c, 0xd5, 0x33, 0xde, 0xb1);
DEFINE_GUID(MF_MT_MAX_KEYFRAME_SPACING, 0xc16eb52b, 0x73a1, 0x476f, 0x8d, 0x62, 0x83, 0x9d, 0x6a, 0x02, 0x06, 0x52);
DEFINE_GUID(MF_MT_DEFAULT_STRIDE, 0x644b4e48, 0x1e02, 0x4516, 0xb0, 0xeb, 0xc0, 0x1c, 0xa9, 0xd4, 0x9a, 0xc6);
DEFINE_GUID(MF_MT_PALETTE, 0x6d283f42, 0x9846, 0x4410, 0xaf, 0xd9, 0x65, 0x4d, 0x50, 0x3b, 0x1a, 0x54);
DEFINE_GUID(MF_MT_USER_DATA, 0xb6bc765f, 0x4c3b, 0x40a4, 0xbd, 0x51, 0x25, 0x35, 0xb6, 0x6f, 0xe0, 0x9d);
DEFINE_GUID(MF_MT_AM_FORMAT_TYPE, 0x73d1072d, 0x1870, 0x4174, 0xa0, 0x63, 0x29, 0xff, 0x4f, 0xf6, 0xc1, 0x1e);
DEFINE_GUID(MF_MT_MPEG_START_TIME_CODE, 0x91f67885, 0x4333, 0x4280, 0x97, 0xcd, 0xbd, 0x5a, 0x6c, 0x03, 0xa0, 0x6e);
DEFINE_GUID(MF_MT_MPEG2_PROFILE, 0xad76a80b, 0x2d5c, 0x4e0b, 0xb3, 0x75, 0x64, 0xe5, 0x20, 0x13, 0x70, 0x36);
DEFINE_GUID(MF_MT_MPEG2_LEVEL, 0x96f66574, 0x11c5, 0x4015, 0x86, 0x66, 0xbf, 0xf5, 0x16, 0x43, 0x6d, 0xa7);
DEFINE_GUID(MF_MT_MPEG2_FLAGS, 0x31e3991d, 0xf701, 0x4b2f, 0xb4, 0x26, 0x8a, 0xe3, 0xbd, 0xa9, 0xe0, 0x4b);
DEFINE_GUID(MF_MT_MPEG_SEQUENCE_HEADER, 0x3c036de7, 0x3ad0, 0x4c9e, 0x92, 0x16, 0xee, 0x6d, 0x6a, 0xc2, 0x1c, 0xb3);
DEFINE_GUID(MF_MT_DV_AAUX_SRC_PACK_0, 0x84bd5d88, 0x0fb8, 0x4ac8, 0xbe, 0x4b, 0xa8, 0x84, 0x8b, 0xef, 0x98, 0xf3);
DEFINE_GUID(MF_MT_DV_AAUX_CTRL_PACK_0, 0xf731004e, 0x1dd1, 0x4515, 0xaa, 0xbe, 0xf0, 0xc0, 0x6a, 0xa5, 0x36, 0xac);
DEFINE_GUID(MF_MT_DV_AAUX_SRC_PACK_1, 0x720e6544, 0x0225, 0x4003, 0xa6, 0x51, 0x01, 0x96, 0x56, 0x3a, 0x95, 0x8e);
DEFINE_GUID(MF_MT_DV_AAUX_CTRL_PACK_1, 0xcd1f470d, 0x1f04, 0x4fe0, 0xbf, 0xb9, 0xd0, 0x7a, 0xe0, 0x38, 0x6a, 0xd8);
DEFINE_GUID(MF_MT_DV_VAUX_SRC_PACK, 0x41402d9d, 0x7b57, 0x43c6, 0xb1, 0x29, 0x2c, 0xb9, 0x97, 0xf1, 0x50, 0x09);
DEFINE_GUID(MF_MT_DV_VAUX_CTRL_PACK, 0x2f84e1c4, 0x0da1, 0x4788, 0x93, 0x8e, 0x0d, 0xfb, 0xfb, 0xb3, 0x4b, 0x48);
DEFINE_GUID(MF_MT_ARBITRARY_HEADER, 0x9e6bd6f5, 0x0109, 0x4f95, 0x84, 0xac, 0x93, 0x09, 0x15, 0x3a, 0x19, 0xfc);
DEFINE_GUID(MF_MT_ARBITRARY_FORMAT, 0x5a75b249, 0x0d7d, 0x49a1, 0xa1, 0xc3, 0xe0, 0xd8, 0x7f, 0x0c, 0xad, 0xe5);
DEFINE_GUID(MF_MT_IMAGE_LOSS_TOLERANT, 0xed062cf4, 0xe34e, 0x4922, 0xbe, 0x99, 0x93, 0x40, 0x32, 0x13, 0x3d, 0x7c);
DEFINE_GUID(MF_MT_MPEG4_SAMPLE_DESCRIPTION, 0x261e9d83, 0x9529, 0x4b8f, 0xa1, 0x11, 0x8b, 0x9c, 0x95, 0x0a, 0x81, 0xa9);
DEFINE_GUID(MF_MT_MPEG4_CURRENT_SAMPLE_ENTRY, 0x9aa7e155, 0xb64a, 0x4c1d, 0xa5, 0x00, 0x45, 0x5d, 0x60, 0x0b, 0x65, 0x60);
DEFINE_GUID(MF_MT_ORIGINAL_4CC, 0xd7be3fe0, 0x2bc7, 0x492d, 0xb8, 0x43, 0x61, 0xa1, 0x91, 0x9b, 0x70, 0xc3);
DEFINE_GUID(MF_MT_ORIGINAL_WAVE_FORMAT_TAG, 0x8cbbc843, 0x9fd9, 0x49c2, 0x88, 0x2f, 0xa7, 0x25, 0x86, 0xc4, 0x08, 0xad);
// The clockwise turn in degrees (0, 90, 180, 270) that shows the frame upright.
DEFINE_GUID(MF_MT_VIDEO_ROTATION, 0xc380465d, 0x2271, 0x428c, 0x9b, 0x83, 0xec, 0xea, 0x3b, 0x4a, 0x85, 0xc1);

// Attribute keys of samples.
DEFINE_GUID(MFSampleExtension_CleanPoint, 0x9cdf01d8, 0xa0f0, 0x43ba, 0xb0, 0x77, 0xea, 0xa0, 0x6c, 0xbd, 0x72, 0x8a);
DEFINE_GUID(MFSampleExtension_Discontinuity, 0x9cdf01d9, 0xa0f0, 0x43ba, 0xb0, 0x77, 0xea, 0xa0, 0x6c, 0xbd, 0x72, 0x8a);
DEFINE_GUID(MFSampleExtension_3DVideo_SampleFormat, 0x08671772, 0xe36f, 0x4cff, 0x97, 0xb3, 0xd7, 0x2e, 0x20, 0x98, 0x7a, 0x48);

// Major types.
DEFINE_GUID(MFMediaType_Default, 0x81a412e6, 0x8103, 0x4b06, 0x85, 0x7f, 0x18, 0x62, 0x78, 0x10, 0x24, 0xac);
DEFINE_GUID(MFMediaType_Audio, 0x73647561, 0x0000, 0x0010, 0x80, 0x00, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71);
DEFINE_GUID(MFMediaType_Video, 0x73646976, 0x0000, 0x0010, 0x80, 0x00, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71);
DEFINE_GUID(MFMediaType_Protected, 0x7b4b6fe6, 0x9d04, 0x4494, 0xbe, 0x14, 0x7e, 0x0b, 0xd0, 0x76, 0xc8, 0xe4);
DEFINE_GUID(MFMediaType_SAMI, 0xe69669a0, 0x3dcd, 0x40cb, 0x9e, 0x2e, 0x37, 0x08, 0x38, 0x7c, 0x06, 0x16);
DEFINE_GUID(MFMediaType_Script, 0x72178c22, 0xe45b, 0x11d5, 0xbc, 0x2a, 0x00, 0xb0, 0xd0, 0xf3, 0xf4, 0xab);
DEFINE_GUID(MFMediaType_Image, 0x72178c23, 0xe45b, 0x11d5, 0xbc, 0x2a, 0x00, 0xb0, 0xd0, 0xf3, 0xf4, 0xab);
DEFINE_GUID(MFMediaType_HTML, 0x72178c24, 0xe45b, 0x11d5, 0xbc, 0x2a, 0x00, 0xb0, 0xd0, 0xf3, 0xf4, 0xab);
DEFINE_GUID(MFMediaType_Binary, 0x72178c25, 0xe45b, 0x11d5, 0xbc, 0x2a, 0x00, 0xb0, 0xd0, 0xf3, 0xf4, 0xab);
DEFINE_GUID(MFMediaType_FileTransfer, 0x72178c26, 0xe45b, 0x11d5, 0xbc, 0x2a, 0x00, 0xb0, 0xd0, 0xf3, 0xf4, 0xab);

// Video subtypes.
DEFINE_MEDIATYPE_GUID(MFVideoFormat_Base, 0x00000000);
DEFINE_MEDIATYPE_GUID(MFVideoFormat_RGB32, 22);   // D3DFMT_X8R8G8B8
DEFINE_MEDIATYPE_GUID(MFVideoFormat_ARGB32, 21);  // D3DFMT_A8R8G8B8
DEFINE_MEDIATYPE_GUID(MFVideoFormat_RGB24, 20);   // D3DFMT_R8G8B8
DEFINE_MEDIATYPE_GUID(MFVideoFormat_RGB555, 24);  // D3DFMT_X1R5G5B5
DEFINE_MEDIATYPE_GUID(MFVideoFormat_RGB565, 23);  // D3DFMT_R5G6B5
DEFINE_MEDIATYPE_GUID(MFVideoFormat_RGB8, 41);    // D3DFMT_P8
DEFINE_MEDIATYPE_GUID(MFVideoFormat_AI44, MFFourCC("AI44"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_AYUV, MFFourCC("AYUV"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_YUY2, MFFourCC("YUY2"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_YVYU, MFFourCC("YVYU"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_YVU9, MFFourCC("YVU9"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_UYVY, MFFourCC("UYVY"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_NV11, MFFourCC("NV11"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_NV12, MFFourCC("NV12"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_YV12, MFFourCC("YV12"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_I420, MFFourCC("I420"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_IYUV, MFFourCC("IYUV"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_Y210, MFFourCC("Y210"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_Y216, MFFourCC("Y216"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_Y410, MFFourCC("Y410"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_Y416, MFFourCC("Y416"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_Y41P, MFFourCC("Y41P"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_Y41T, MFFourCC("Y41T"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_Y42T, MFFourCC("Y42T"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_P210, MFFourCC("P210"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_P216, MFFourCC("P216"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_P010, MFFourCC("P010"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_P016, MFFourCC("P016"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_v210, MFFourCC("v210"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_v216, MFFourCC("v216"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_v410, MFFourCC("v410"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_MP43, MFFourCC("MP43"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_MP4S, MFFourCC("MP4S"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_M4S2, MFFourCC("M4S2"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_MP4V, MFFourCC("MP4V"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_WMV1, MFFourCC("WMV1"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_WMV2, MFFourCC("WMV2"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_WMV3, MFFourCC("WMV3"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_WVC1, MFFourCC("WVC1"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_MSS1, MFFourCC("MSS1"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_MSS2, MFFourCC("MSS2"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_MPG1, MFFourCC("MPG1"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_DVSL, MFFourCC("dvsl"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_DVSD, MFFourCC("dvsd"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_DVHD, MFFourCC("dvhd"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_DV25, MFFourCC("dv25"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_DV50, MFFourCC("dv50"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_DVH1, MFFourCC("dvh1"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_DVC, MFFourCC("dvc "));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_H264, MFFourCC("H264"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_MJPG, MFFourCC("MJPG"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_420O, MFFourCC("420O"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_HEVC, MFFourCC("HEVC"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_HEVC_ES, MFFourCC("HEVS"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_H263, MFFourCC("H263"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_VP80, MFFourCC("VP80"));
DEFINE_MEDIATYPE_GUID(MFVideoFormat_VP90, MFFourCC("VP90"));
DEFINE_GUID(MFVideoFormat_MPEG2, 0xe06d8026, 0xdb46, 0x11cf, 0xb4, 0xd1, 0x00, 0x80, 0x5f, 0x6c, 0xbb, 0xea);

// Audio subtypes: wave format tags.
DEFINE_MEDIATYPE_GUID(MFAudioFormat_Base, 0x00000000);
DEFINE_MEDIATYPE_GUID(MFAudioFormat_PCM, 0x0001);               // WAVE_FORMAT_PCM
DEFINE_MEDIATYPE_GUID(MFAudioFormat_Float, 0x0003);             // WAVE_FORMAT_IEEE_FLOAT
DEFINE_MEDIATYPE_GUID(MFAudioFormat_DTS, 0x0008);               // WAVE_FORMAT_DTS
DEFINE_MEDIATYPE_GUID(MFAudioFormat_Dolby_AC3_SPDIF, 0x0092);   // WAVE_FORMAT_DOLBY_AC3_SPDIF
DEFINE_MEDIATYPE_GUID(MFAudioFormat_DRM, 0x0009);               // WAVE_FORMAT_DRM
DEFINE_MEDIATYPE_GUID(MFAudioFormat_WMAudioV8, 0x0161);         // WAVE_FORMAT_WMAUDIO2
DEFINE_MEDIATYPE_GUID(MFAudioFormat_WMAudioV9, 0x0162);         // WAVE_FORMAT_WMAUDIO3
DEFINE_MEDIATYPE_GUID(MFAudioFormat_WMAudio_Lossless, 0x0163);  // WAVE_FORMAT_WMAUDIO_LOSSLESS
DEFINE_MEDIATYPE_GUID(MFAudioFormat_WMASPDIF, 0x0164);          // WAVE_FORMAT_WMASPDIF
DEFINE_MEDIATYPE_GUID(MFAudioFormat_MSP1, 0x000A);              // WAVE_FORMAT_WMAVOICE9
DEFINE_MEDIATYPE_GUID(MFAudioFormat_MP3, 0x0055);               // WAVE_FORMAT_MPEGLAYER3
DEFINE_MEDIATYPE_GUID(MFAudioFormat_MPEG, 0x0050);              // WAVE_FORMAT_MPEG
DEFINE_MEDIATYPE_GUID(MFAudioFormat_AAC, 0x1610);               // WAVE_FORMAT_MPEG_HEAAC
DEFINE_MEDIATYPE_GUID(MFAudioFormat_ADTS, 0x1600);              // WAVE_FORMAT_MPEG_ADTS_AAC
DEFINE_MEDIATYPE_GUID(MFAudioFormat_AMR_NB, 0x7361);
DEFINE_MEDIATYPE_GUID(MFAudioFormat_AMR_WB, 0x7362);
DEFINE_MEDIATYPE_GUID(MFAudioFormat_AMR_WP, 0x7363);
DEFINE_MEDIATYPE_GUID(MFAudioFormat_FLAC, 0xF1AC);
DEFINE_MEDIATYPE_GUID(MFAudioFormat_Dolby_AC3, 0x2000);

enum MF_FILE_ACCESSMODE { MF_ACCESSMODE_READ = 1, MF_ACCESSMODE_WRITE = 2, MF_ACCESSMODE_READWRITE = 3 };
enum MF_FILE_OPENMODE {
  MF_OPENMODE_FAIL_IF_NOT_EXIST = 0,
  MF_OPENMODE_FAIL_IF_EXIST = 1,
  MF_OPENMODE_RESET_IF_EXIST = 2,
  MF_OPENMODE_APPEND_IF_EXIST = 3,
  MF_OPENMODE_DELETE_IF_EXIST = 4,
};
enum MF_FILE_FLAGS { MF_FILEFLAGS_NONE = 0, MF_FILEFLAGS_NOBUFFERING = 0x1, MF_FILEFLAGS_ALLOW_WRITE_SHARING = 0x2 };

extern "C" {
TESSEL_PLATFORM_API HRESULT WINAPI MFStartup(ULONG version, DWORD flags);
TESSEL_PLATFORM_API HRESULT WINAPI MFShutdown();

TESSEL_PLATFORM_API HRESULT WINAPI MFCreateAttributes(IMFAttributes** attributes, UINT32 initialSize);
TESSEL_PLATFORM_API HRESULT WINAPI MFCreateMediaType(IMFMediaType** mediaType);
// A buffer of maxLength bytes with current length 0.
TESSEL_PLATFORM_API HRESULT WINAPI MFCreateMemoryBuffer(DWORD maxLength, IMFMediaBuffer** buffer);
// An image buffer of height rows of width pixels in the format with that code (the first
// 32 bits of the subtype). It offers IMF2DBuffer; bottomUp gives a negative pitch.
TESSEL_PLATFORM_API HRESULT WINAPI MFCreate2DMediaBuffer(DWORD width, DWORD height, DWORD fourCC, BOOL bottomUp,
                                                         IMFMediaBuffer** buffer);
TESSEL_PLATFORM_API HRESULT WINAPI MFCreateSample(IMFSample** sample);
TESSEL_PLATFORM_API HRESULT WINAPI MFCreateAsyncResult(IUnknown* object, IMFAsyncCallback* callback, IUnknown* state,
                                                       IMFAsyncResult** result);
// A byte stream over a file (a plain UTF-16 path). It reads synchronously and answers
// BeginRead on the platform's work-queue thread.
TESSEL_PLATFORM_API HRESULT WINAPI MFCreateFile(MF_FILE_ACCESSMODE accessMode, MF_FILE_OPENMODE openMode,
                                                MF_FILE_FLAGS flags, LPCWSTR path, IMFByteStream** stream);
// Calls the result's callback with the result on the platform's work-queue thread.
TESSEL_PLATFORM_API HRESULT WINAPI MFInvokeCallback(IMFAsyncResult* result);
// The row pitch of an uncompressed format: negative for the RGB formats, which the
// platform lays out bottom-up, rows padded to 4 bytes; positive for YUV formats.
TESSEL_PLATFORM_API HRESULT WINAPI MFGetStrideForBitmapInfoHeader(DWORD format, DWORD width, LONG* stride);
}

// Pair attributes hold two 32-bit numbers in one UINT64, the first in the high half.
inline UINT64 Pack2UINT32AsUINT64(UINT32 high, UINT32 low) { return (UINT64(high) << 32) | low; }
inline void Unpack2UINT32AsUINT64(UINT64 packed, UINT32* high, UINT32* low) {
  *high = UINT32(packed >> 32);
  *low = UINT32(packed);
}
inline HRESULT MFGetAttribute2UINT32asUINT64(IMFAttributes* attributes, REFGUID key, UINT32* high, UINT32* low) {
  UINT64 packed = 0;
  HRESULT hr = attributes->GetUINT64(key, &packed);
  if (SUCCEEDED(hr)) Unpack2UINT32AsUINT64(packed, high, low);
  return hr;
}
inline HRESULT MFSetAttribute2UINT32asUINT64(IMFAttributes* attributes, REFGUID key, UINT32 high, UINT32 low) {
  return attributes->SetUINT64(key, Pack2UINT32AsUINT64(high, low));
}
inline HRESULT MFGetAttributeSize(IMFAttributes* attributes, REFGUID key, UINT32* width, UINT32* height) {
  return MFGetAttribute2UINT32asUINT64(attributes, key, width, height);
}
inline HRESULT MFSetAttributeSize(IMFAttributes* attributes, REFGUID key, UINT32 width, UINT32 height) {
  return MFSetAttribute2UINT32asUINT64(attributes, key, width, height);
}
inline HRESULT MFGetAttributeRatio(IMFAttributes* attributes, REFGUID key, UINT32* numerator, UINT32* denominator) {
  return MFGetAttribute2UINT32asUINT64(attributes, key, numerator, denominator);
}
inline HRESULT MFSetAttributeRatio(IMFAttributes* attributes, REFGUID key, UINT32 numerator, UINT32 denominator) {
  return MFSetAttribute2UINT32asUINT64(attributes, key, numerator, denominator);
}
inline UINT32 MFGetAttributeUINT32(IMFAttributes* attributes, REFGUID key, UINT32 fallback) {
  UINT32 value = fallback;
  if (FAILED(attributes->GetUINT32(key, &value))) value = fallback;
  return value;
}
inline UINT64 MFGetAttributeUINT64(IMFAttributes* attributes, REFGUID key, UINT64 fallback) {
  UINT64 value = fallback;
  if (FAILED(attributes->GetUINT64(key, &value))) value = fallback;
  return value;
}

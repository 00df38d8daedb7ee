// The property keys of the media session: format keys of streams, per-frame keys,
// capability keys of converters and file formats, and the keys of setting
// descriptions. Each is an interned id, one identity per name in the whole process, and
// compared by that identity, never by text.
#pragma once

#include "vorna/records.h"

namespace vorna {

// vorna.mediaformat.image.*
extern InternedId g_mediaFormatImageType;
extern InternedId g_mediaFormatImageSubimageindex;
extern InternedId g_mediaFormatImagePixelformat;
extern InternedId g_mediaFormatImageColorprofile;
extern InternedId g_mediaFormatImageWidth;
extern InternedId g_mediaFormatImageHeight;
extern InternedId g_mediaFormatImageAspectratio;
extern InternedId g_mediaFormatImageDpi;
extern InternedId g_mediaFormatImageStreamname;
extern InternedId g_mediaFormatImageAlphatype;
extern InternedId g_mediaFormatImageLayeralpha;
extern InternedId g_mediaFormatImageDeepimage;
extern InternedId g_mediaFormatImageHotspotx;
extern InternedId g_mediaFormatImageHotspoty;

// vorna.mediaformat.video.*
extern InternedId g_mediaFormatVideoFps;
extern InternedId g_mediaFormatVideoStarttime;
extern InternedId g_mediaFormatVideoDuration;

// vorna.mediaformat.audio.*
extern InternedId g_mediaFormatAudioChannelcount;
extern InternedId g_mediaFormatAudioBitsperchannel;
extern InternedId g_mediaFormatAudioSamplerate;
extern InternedId g_mediaFormatAudioMarkerarray;

// vorna.mediaformat.*
extern InternedId g_mediaFormatExportsettings;

// vorna.mediaproperties.video.*
extern InternedId g_mediaPropertiesVideoSampletime;
extern InternedId g_mediaPropertiesVideoSampleduration;
extern InternedId g_mediaPropertiesVideoSkippedframes;

// vorna.mediainputproperties.*
extern InternedId g_mediaInputSupportsImage;
extern InternedId g_mediaInputSupportsVideo;
extern InternedId g_mediaInputSupportsAudio;

// vorna.mediaoutputurlproperties.*
extern InternedId g_mediaOutputUrlSupportsImage;
extern InternedId g_mediaOutputUrlSupportsVideo;
extern InternedId g_mediaOutputUrlSupportsAudio;
extern InternedId g_mediaOutputUrlSupportsSystemoptions;
extern InternedId g_mediaOutputUrlMaximalalphachannels;
extern InternedId g_mediaOutputUrlMaximalimageresolution;
extern InternedId g_mediaOutputUrlMaximallayerresolution;
extern InternedId g_mediaOutputUrlBitdepthsimage;
extern InternedId g_mediaOutputUrlBitdepthslayer;
extern InternedId g_mediaOutputUrlEmbedColorprofile;

// vorna.fileformatproperties.*
extern InternedId g_fileFormatCommonsuffixes;

// vorna.datadescriptionprops.*
extern InternedId g_dataDescriptionCommand;
extern InternedId g_dataDescriptionIdentifier;
extern InternedId g_dataDescriptionDatatype;
extern InternedId g_dataDescriptionInclude;
extern InternedId g_dataDescriptionMinvalue;
extern InternedId g_dataDescriptionMaxvalue;
extern InternedId g_dataDescriptionUnit;
extern InternedId g_dataDescriptionEnum;
extern InternedId g_dataDescriptionDefaultvalue;

extern InternedId g_mediaformatImagelayerBoundingboxX;
extern InternedId g_mediaformatImagelayerBoundingboxY;
extern InternedId g_mediaformatImagelayerBoundingboxW;
extern InternedId g_mediaformatImagelayerBoundingboxH;
extern InternedId g_mediaformatImagelayerEnabled;
extern InternedId g_mediaformatImagelayerTransparencyprotected;
extern InternedId g_mediaformatImagelayerOpacity;
extern InternedId g_mediaformatImagelayerFillopacity;
extern InternedId g_mediaformatImagelayerBlendmode;
extern InternedId g_mediaformatImagelayerLayergroup;
extern InternedId g_mediaformatImagelayerMaskdefcolor;
extern InternedId g_mediaformatImagelayerFolderIsopen;
extern InternedId g_mediaformatImagelayerAdjustmentPsdFilterid;
extern InternedId g_mediaformatImagelayerAdjustmentPsdData;
extern InternedId g_mediaformatAudioMarkerIdentifier;
extern InternedId g_mediaformatAudioMarkerPosition;
extern InternedId g_mediaformatAudioMarkerLabel;
extern InternedId g_mediaformatAudioMarkerNote;
extern InternedId g_mediastreamDummy;

}  // namespace vorna

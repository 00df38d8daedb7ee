#include "vorna/translationunit.h"

#include "vorna/mediasession_keys.h"

#include "vorna/resourceid.h"

namespace vorna {

VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageType, "vorna.mediaformat.image.type");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageSubimageindex, "vorna.mediaformat.image.subimageindex");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImagePixelformat, "vorna.mediaformat.image.pixelformat");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageColorprofile, "vorna.mediaformat.image.colorprofile");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageWidth, "vorna.mediaformat.image.width");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageHeight, "vorna.mediaformat.image.height");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageAspectratio, "vorna.mediaformat.image.aspectratio");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageDpi, "vorna.mediaformat.image.dpi");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageStreamname, "vorna.mediaformat.image.streamname");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageAlphatype, "vorna.mediaformat.image.alphatype");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageLayeralpha, "vorna.mediaformat.image.layeralpha");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageDeepimage, "vorna.mediaformat.image.deepimage");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageHotspotx, "vorna.mediaformat.image.hotspotx");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatImageHotspoty, "vorna.mediaformat.image.hotspoty");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatVideoFps, "vorna.mediaformat.video.fps");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatVideoStarttime, "vorna.mediaformat.video.starttime");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatVideoDuration, "vorna.mediaformat.video.duration");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatAudioChannelcount, "vorna.mediaformat.audio.channelcount");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatAudioBitsperchannel, "vorna.mediaformat.audio.bitsperchannel");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatAudioSamplerate, "vorna.mediaformat.audio.samplerate");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatAudioMarkerarray, "vorna.mediaformat.audio.markerarray");
VORNA_DEFINE_RESOURCE_ID(g_mediaFormatExportsettings, "vorna.mediaformat.exportsettings");
VORNA_DEFINE_RESOURCE_ID(g_mediaPropertiesVideoSampletime, "vorna.mediaproperties.video.sampletime");
VORNA_DEFINE_RESOURCE_ID(g_mediaPropertiesVideoSampleduration, "vorna.mediaproperties.video.sampleduration");
VORNA_DEFINE_RESOURCE_ID(g_mediaPropertiesVideoSkippedframes, "vorna.mediaproperties.video.skippedframes");
VORNA_DEFINE_RESOURCE_ID(g_mediaInputSupportsImage, "vorna.mediainputproperties.supports_image");
VORNA_DEFINE_RESOURCE_ID(g_mediaInputSupportsVideo, "vorna.mediainputproperties.supports_video");
VORNA_DEFINE_RESOURCE_ID(g_mediaInputSupportsAudio, "vorna.mediainputproperties.supports_audio");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlSupportsImage, "vorna.mediaoutputurlproperties.supports_image");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlSupportsVideo, "vorna.mediaoutputurlproperties.supports_video");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlSupportsAudio, "vorna.mediaoutputurlproperties.supports_audio");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlSupportsSystemoptions, "vorna.mediaoutputurlproperties.supports_systemoptions");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlMaximalalphachannels, "vorna.mediaoutputurlproperties.maximalalphachannels");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlMaximalimageresolution, "vorna.mediaoutputurlproperties.maximalimageresolution");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlMaximallayerresolution, "vorna.mediaoutputurlproperties.maximallayerresolution");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlBitdepthsimage, "vorna.mediaoutputurlproperties.bitdepthsimage");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlBitdepthslayer, "vorna.mediaoutputurlproperties.bitdepthslayer");
VORNA_DEFINE_RESOURCE_ID(g_mediaOutputUrlEmbedColorprofile, "vorna.mediaoutputurlproperties.embed_colorprofile");
VORNA_DEFINE_RESOURCE_ID(g_fileFormatCommonsuffixes, "vorna.fileformatproperties.commonsuffixes");
VORNA_DEFINE_RESOURCE_ID(g_dataDescriptionCommand, "vorna.datadescriptionprops.command");
VORNA_DEFINE_RESOURCE_ID(g_dataDescriptionIdentifier, "vorna.datadescriptionprops.identifier");
VORNA_DEFINE_RESOURCE_ID(g_dataDescriptionDatatype, "vorna.datadescriptionprops.datatype");
VORNA_DEFINE_RESOURCE_ID(g_dataDescriptionInclude, "vorna.datadescriptionprops.include");
VORNA_DEFINE_RESOURCE_ID(g_dataDescriptionMinvalue, "vorna.datadescriptionprops.minvalue");
VORNA_DEFINE_RESOURCE_ID(g_dataDescriptionMaxvalue, "vorna.datadescriptionprops.maxvalue");
VORNA_DEFINE_RESOURCE_ID(g_dataDescriptionUnit, "vorna.datadescriptionprops.unit");
VORNA_DEFINE_RESOURCE_ID(g_dataDescriptionEnum, "vorna.datadescriptionprops.enum");
VORNA_DEFINE_RESOURCE_ID(g_dataDescriptionDefaultvalue, "vorna.datadescriptionprops.defaultvalue");

VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerBoundingboxX, "vorna.mediaformat.imagelayer.boundingbox_x");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerBoundingboxY, "vorna.mediaformat.imagelayer.boundingbox_y");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerBoundingboxW, "vorna.mediaformat.imagelayer.boundingbox_w");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerBoundingboxH, "vorna.mediaformat.imagelayer.boundingbox_h");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerEnabled, "vorna.mediaformat.imagelayer.enabled");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerTransparencyprotected, "vorna.mediaformat.imagelayer.transparencyprotected");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerOpacity, "vorna.mediaformat.imagelayer.opacity");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerFillopacity, "vorna.mediaformat.imagelayer.fillopacity");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerBlendmode, "vorna.mediaformat.imagelayer.blendmode");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerLayergroup, "vorna.mediaformat.imagelayer.layergroup");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerMaskdefcolor, "vorna.mediaformat.imagelayer.maskdefcolor");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerFolderIsopen, "vorna.mediaformat.imagelayer.folder.isopen");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerAdjustmentPsdFilterid, "vorna.mediaformat.imagelayer.adjustment.psd_filterid");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatImagelayerAdjustmentPsdData, "vorna.mediaformat.imagelayer.adjustment.psd_data");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatAudioMarkerIdentifier, "vorna.mediaformat.audio.marker.identifier");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatAudioMarkerPosition, "vorna.mediaformat.audio.marker.position");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatAudioMarkerLabel, "vorna.mediaformat.audio.marker.label");
VORNA_DEFINE_RESOURCE_ID(g_mediaformatAudioMarkerNote, "vorna.mediaformat.audio.marker.note");
VORNA_DEFINE_RESOURCE_ID(g_mediastreamDummy, "vorna.mediastream.dummy");

}  // namespace vorna

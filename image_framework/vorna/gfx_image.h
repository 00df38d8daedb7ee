// Images: the base of every image and texture with its size, channels, pixel format
// and pixel handler, images and their layers, textures, the storage of their pixels
// (deep images included), the static image functions, the data types the image
// headers bring, and the keys of image and layer properties.
#pragma once

#include "vorna/datadictionaryobject.h"
#include "vorna/hierarchyobject.h"
#include "vorna/objectuse.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(ImageBaseInterface, DataDictionaryObjectInterface, "vorna.ImageBaseInterface#1", refclass::STRONG,
                         kInitBase, kAddChildren, kGetWidth, kGetHeight, kGetChannelCount, kGetPixelFormat,
                         kGetPixelHandler, kSetPixelHandler, kFreePixelHandler, kFreePixelHandler2,
                         kGetComponent, kSetComponent, kCreateSubImagePart, kObservableRegionChanged);

VORNA_DECLARED_INTERFACE(ImageInterface, ImageBaseInterface, "vorna.ImageInterface#1", refclass::STRONG, kInit);

VORNA_DECLARED_INTERFACE(ImageLayerInterface, ImageInterface, "vorna.ImageLayerInterface#1", refclass::STRONG);

VORNA_DECLARED_INTERFACE(ImageTextureInterface, ImageBaseInterface, "vorna.ImageTextureInterface#1", refclass::STRONG,
                         kLoad, kSave);

VORNA_DECLARED_INTERFACE(ImagePixelStorageInterface, ObjectInterface, "vorna.ImagePixelStorageInterface#1", refclass::COPY_ON_WRITE,
                         kInit, kGetWidth, kGetHeight, kGetChannelCount, kGetPixelFormat, kGetPixelHandler,
                         kSetPixelHandler, kFreePixelHandler, kFreePixelHandler2, kGetComponent, kSetComponent);

VORNA_DECLARED_INTERFACE(ImagePixelDeepImageStorageInterface, ImagePixelStorageInterface, "vorna.ImagePixelDeepImageStorageInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_STATIC_INTERFACE(ImageFunctionsInterface, "vorna.ImageFunctionsInterface#1", 1);

extern InternedId g_imagepropertiesType;
extern InternedId g_imagepropertiesName;
extern InternedId g_imagepropertiesTextureAudiodata;
extern InternedId g_imagepropertiesImageAspectratio;
extern InternedId g_imagepropertiesImageDpi;
extern InternedId g_imagepropertiesImageColorprofile;
extern InternedId g_imagepropertiesImageFps;
extern InternedId g_imagepropertiesImageDuration;
extern InternedId g_imagepropertiesImageSampletime;
extern InternedId g_imagepropertiesImageExportsettings;
extern InternedId g_imagepropertiesImageHotspotx;
extern InternedId g_imagepropertiesImageHotspoty;
extern InternedId g_imagepropertiesLayerEnabled;
extern InternedId g_imagepropertiesLayerBlendmode;
extern InternedId g_imagepropertiesLayerOpacity;
extern InternedId g_imagepropertiesLayerFillopacity;
extern InternedId g_imagepropertiesLayerTransparencyprotected;
extern InternedId g_imagepropertiesLayerLayergroup;
extern InternedId g_imagepropertiesLayerMaskdefcolor;
extern InternedId g_imagepropertiesLayerBoundingboxX;
extern InternedId g_imagepropertiesLayerBoundingboxY;
extern InternedId g_imagepropertiesLayerBoundingboxW;
extern InternedId g_imagepropertiesLayerBoundingboxH;
extern InternedId g_imagepropertiesLayerFolderIsopen;
extern InternedId g_imagepropertiesLayerAdjustmentPsdFilterid;
extern InternedId g_imagepropertiesLayerAdjustmentPsdData;
extern InternedId g_imagebasepropertiesExifdata;
extern InternedId g_compression;
extern InternedId g_mipmaps;
extern InternedId g_interlaced;
extern InternedId g_compressionmethod;
extern InternedId g_halffloat;
extern InternedId g_layernumbering;
extern InternedId g_baseline;
extern InternedId g_byteorder;
extern InternedId g_planar;
extern InternedId g_bitdepth;
extern InternedId g_maxrenderinfo;
extern InternedId g_nametab;
extern InternedId g_z;
extern InternedId g_materialid;
extern InternedId g_objectbuffer;
extern InternedId g_uv;
extern InternedId g_normal;
extern InternedId g_originalcolor;
extern InternedId g_coverage;
extern InternedId g_objectid;
extern InternedId g_color;
extern InternedId g_transparency;
extern InternedId g_subpixelweight;
extern InternedId g_subpixelmask;

}  // namespace vorna

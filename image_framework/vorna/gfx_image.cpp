#include "vorna/translationunit.h"

#include "vorna/gfx_image.h"

#include "vorna/resourceid.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(ImageBaseInterface, &DataDictionaryObjectInterface::_record, &HierarchyObjectInterface::_record);

VORNA_DEFINE_INTERFACE(ImageInterface, &ImageBaseInterface::_record);

VORNA_DEFINE_INTERFACE(ImageLayerInterface, &ImageInterface::_record);

VORNA_DEFINE_INTERFACE(ImageTextureInterface, &ImageBaseInterface::_record);

VORNA_DEFINE_INTERFACE(ImagePixelStorageInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(ImagePixelDeepImageStorageInterface, &ImagePixelStorageInterface::_record);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ImageFunctionsInterface, nullptr);

VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaBITS, "vorna.DataTypes:vorna.BITS");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaPix16f, "vorna.DataTypes:vorna.Pix16f");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaUpdateRegion, "vorna.DataTypes:vorna.UpdateRegion");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaDrawPointInt, "vorna.DataTypes:vorna.DrawPointInt");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaDrawPointFloat, "vorna.DataTypes:vorna.DrawPointFloat");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaDrawDimensionInt, "vorna.DataTypes:vorna.DrawDimensionInt");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaDrawDimensionFloat, "vorna.DataTypes:vorna.DrawDimensionFloat");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaDrawRectInt, "vorna.DataTypes:vorna.DrawRectInt");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaDrawRectFloat, "vorna.DataTypes:vorna.DrawRectFloat");

VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesType, "vorna.imageproperties.type");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesName, "vorna.imageproperties.name");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesTextureAudiodata, "vorna.imageproperties.texture.audiodata");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesImageAspectratio, "vorna.imageproperties.image.aspectratio");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesImageDpi, "vorna.imageproperties.image.dpi");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesImageColorprofile, "vorna.imageproperties.image.colorprofile");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesImageFps, "vorna.imageproperties.image.fps");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesImageDuration, "vorna.imageproperties.image.duration");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesImageSampletime, "vorna.imageproperties.image.sampletime");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesImageExportsettings, "vorna.imageproperties.image.exportsettings");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesImageHotspotx, "vorna.imageproperties.image.hotspotx");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesImageHotspoty, "vorna.imageproperties.image.hotspoty");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerEnabled, "vorna.imageproperties.layer.enabled");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerBlendmode, "vorna.imageproperties.layer.blendmode");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerOpacity, "vorna.imageproperties.layer.opacity");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerFillopacity, "vorna.imageproperties.layer.fillopacity");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerTransparencyprotected, "vorna.imageproperties.layer.transparencyprotected");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerLayergroup, "vorna.imageproperties.layer.layergroup");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerMaskdefcolor, "vorna.imageproperties.layer.maskdefcolor");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerBoundingboxX, "vorna.imageproperties.layer.boundingbox_x");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerBoundingboxY, "vorna.imageproperties.layer.boundingbox_y");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerBoundingboxW, "vorna.imageproperties.layer.boundingbox_w");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerBoundingboxH, "vorna.imageproperties.layer.boundingbox_h");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerFolderIsopen, "vorna.imageproperties.layer.folder.isopen");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerAdjustmentPsdFilterid, "vorna.imageproperties.layer.adjustment.psd_filterid");
VORNA_DEFINE_RESOURCE_ID(g_imagepropertiesLayerAdjustmentPsdData, "vorna.imageproperties.layer.adjustment.psd_data");
VORNA_DEFINE_RESOURCE_ID(g_imagebasepropertiesExifdata, "vorna.imagebaseproperties.exifdata");
VORNA_DEFINE_RESOURCE_ID(g_compression, "compression");
VORNA_DEFINE_RESOURCE_ID(g_mipmaps, "mipmaps");
VORNA_DEFINE_RESOURCE_ID(g_interlaced, "interlaced");
VORNA_DEFINE_RESOURCE_ID(g_compressionmethod, "compressionmethod");
VORNA_DEFINE_RESOURCE_ID(g_halffloat, "halffloat");
VORNA_DEFINE_RESOURCE_ID(g_layernumbering, "layernumbering");
VORNA_DEFINE_RESOURCE_ID(g_baseline, "baseline");
VORNA_DEFINE_RESOURCE_ID(g_byteorder, "byteorder");
VORNA_DEFINE_RESOURCE_ID(g_planar, "planar");
VORNA_DEFINE_RESOURCE_ID(g_bitdepth, "bitdepth");
VORNA_DEFINE_RESOURCE_ID(g_maxrenderinfo, "maxrenderinfo");
VORNA_DEFINE_RESOURCE_ID(g_nametab, "nametab");
VORNA_DEFINE_RESOURCE_ID(g_z, "z");
VORNA_DEFINE_RESOURCE_ID(g_materialid, "materialid");
VORNA_DEFINE_RESOURCE_ID(g_objectbuffer, "objectbuffer");
VORNA_DEFINE_RESOURCE_ID(g_uv, "uv");
VORNA_DEFINE_RESOURCE_ID(g_normal, "normal");
VORNA_DEFINE_RESOURCE_ID(g_originalcolor, "originalcolor");
VORNA_DEFINE_RESOURCE_ID(g_coverage, "coverage");
VORNA_DEFINE_RESOURCE_ID(g_objectid, "objectid");
VORNA_DEFINE_RESOURCE_ID(g_color, "color");
VORNA_DEFINE_RESOURCE_ID(g_transparency, "transparency");
VORNA_DEFINE_RESOURCE_ID(g_subpixelweight, "subpixelweight");
VORNA_DEFINE_RESOURCE_ID(g_subpixelmask, "subpixelmask");

}  // namespace vorna

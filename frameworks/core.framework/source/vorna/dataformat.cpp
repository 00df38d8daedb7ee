#include "vorna/translationunit.h"

#include "vorna/dataformat.h"

#include "vorna/resourceid.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(DataFormatBaseReaderInterface, &DataDictionaryObjectInterface::_record);

VORNA_DEFINE_INTERFACE(DataFormatBaseWriterInterface, &DataDictionaryObjectInterface::_record);

VORNA_DEFINE_INTERFACE(DataFormatReaderInterface, &DataFormatBaseReaderInterface::_record, &DataSerializeReaderInterface::_record);

VORNA_DEFINE_INTERFACE(DataFormatWriterInterface, &DataFormatBaseWriterInterface::_record, &DataSerializeWriterInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_DataFormatBaseReaderFromStream, "vorna.DataFormatBaseReader.FromStream");
VORNA_DEFINE_OBJECT_USE(g_DataFormatBaseReaderFromString, "vorna.DataFormatBaseReader.FromString");
VORNA_DEFINE_OBJECT_USE(g_DataFormatBaseReaderFromUrl, "vorna.DataFormatBaseReader.FromUrl");
VORNA_DEFINE_OBJECT_USE(g_DataFormatBaseWriterToStream, "vorna.DataFormatBaseWriter.ToStream");
VORNA_DEFINE_OBJECT_USE(g_DataFormatBaseWriterToString, "vorna.DataFormatBaseWriter.ToString");
VORNA_DEFINE_OBJECT_USE(g_DataFormatBaseWriterToUrl, "vorna.DataFormatBaseWriter.ToUrl");
VORNA_DEFINE_OBJECT_USE(g_DataFormatReaderBinaryClass, "vorna.DataFormatReaderBinaryClass");
VORNA_DEFINE_OBJECT_USE(g_DataFormatReaderJsonClass, "vorna.DataFormatReaderJsonClass");
VORNA_DEFINE_OBJECT_USE(g_DataFormatReaderXmlClass, "vorna.DataFormatReaderXmlClass");
VORNA_DEFINE_OBJECT_USE(g_DataFormatWriterBinaryClass, "vorna.DataFormatWriterBinaryClass");
VORNA_DEFINE_OBJECT_USE(g_DataFormatWriterJsonClass, "vorna.DataFormatWriterJsonClass");
VORNA_DEFINE_OBJECT_USE(g_DataFormatWriterXmlClass, "vorna.DataFormatWriterXmlClass");

VORNA_DEFINE_RESOURCE_ID(g_dataformatCompression, "vorna.dataformat.compression");
VORNA_DEFINE_RESOURCE_ID(g_dataformatNoReferences, "vorna.dataformat.no_references");
VORNA_DEFINE_RESOURCE_ID(g_dataformatSorted, "vorna.dataformat.sorted");
VORNA_DEFINE_RESOURCE_ID(g_dataformatbasewriterFlagsResultString, "vorna.dataformatbasewriter.flags.result_string");
VORNA_DEFINE_RESOURCE_ID(g_dataformatbaseidsStream, "vorna.dataformatbaseids.stream");

}  // namespace vorna

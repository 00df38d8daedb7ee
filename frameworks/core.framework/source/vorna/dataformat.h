// Readers and writers of documents in the binary, JSON and XML formats: the base
// reader and writer over a stream, the format reader and writer that add serialisation,
// their classes, the named factory functions, their option keys and the registries of
// their factories (vorna.DataFormatReaderFactories, vorna.DataFormatWriterFactories).
#pragma once

#include "vorna/dataserialize.h"
#include "vorna/datadictionaryobject.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(DataFormatBaseReaderInterface, DataDictionaryObjectInterface, "vorna.DataFormatBaseReaderInterface#1", refclass::STRONG,
                         kCloseInput, kReadDataEOS);

VORNA_DECLARED_INTERFACE(DataFormatBaseWriterInterface, DataDictionaryObjectInterface, "vorna.DataFormatBaseWriterInterface#1", refclass::STRONG,
                         kCloseOutput, kWriteData, kFlush);

VORNA_DECLARED_INTERFACE(DataFormatReaderInterface, DataFormatBaseReaderInterface, "vorna.DataFormatReaderInterface#1", refclass::STRONG);

VORNA_DECLARED_INTERFACE(DataFormatWriterInterface, DataFormatBaseWriterInterface, "vorna.DataFormatWriterInterface#1", refclass::STRONG);

extern ObjectUseRecord g_DataFormatBaseReaderFromStream;
extern ObjectUseRecord g_DataFormatBaseReaderFromString;
extern ObjectUseRecord g_DataFormatBaseReaderFromUrl;
extern ObjectUseRecord g_DataFormatBaseWriterToStream;
extern ObjectUseRecord g_DataFormatBaseWriterToString;
extern ObjectUseRecord g_DataFormatBaseWriterToUrl;
extern ObjectUseRecord g_DataFormatReaderBinaryClass;
extern ObjectUseRecord g_DataFormatReaderJsonClass;
extern ObjectUseRecord g_DataFormatReaderXmlClass;
extern ObjectUseRecord g_DataFormatWriterBinaryClass;
extern ObjectUseRecord g_DataFormatWriterJsonClass;
extern ObjectUseRecord g_DataFormatWriterXmlClass;

extern InternedId g_dataformatCompression;
extern InternedId g_dataformatNoReferences;
extern InternedId g_dataformatSorted;
extern InternedId g_dataformatbasewriterFlagsResultString;
extern InternedId g_dataformatbaseidsStream;

}  // namespace vorna

// The records of the media session's interfaces, with their bases in order.
#include "vorna/translationunit.h"

#include "vorna/audioobject.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_output.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(MediaSessionInterface, &ObserverObjectInterface::_record);
VORNA_DEFINE_INTERFACE(MediaSessionProgressInterface, &ObserverObjectInterface::_record);
VORNA_DEFINE_INTERFACE(MediaBaseInterface, &DataDictionaryObjectInterface::_record,
                       &DataDescriptionObjectInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamFormatInterface, &DataDictionaryObjectInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamPropertiesInterface, &MediaStreamFormatInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamInterface, &MediaBaseInterface::_record, &HierarchyObjectInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamImageBaseInterface, &MediaStreamInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamExifDataInterface, &MediaStreamInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamImageDataImportInterface, &MediaStreamImageBaseInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamImageDataForwardImportInterface, &MediaStreamImageDataImportInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamImageDataExportInterface, &MediaStreamImageBaseInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamAudioDataImportInterface, &MediaStreamInterface::_record);
VORNA_DEFINE_INTERFACE(MediaStreamAudioDataExportInterface, &MediaStreamInterface::_record);
VORNA_DEFINE_INTERFACE(MediaConverterInterface, &MediaBaseInterface::_record);
VORNA_DEFINE_INTERFACE(MediaInputInterface, &MediaConverterInterface::_record);
VORNA_DEFINE_INTERFACE(MediaOutputInterface, &MediaConverterInterface::_record);
VORNA_DEFINE_INTERFACE(MediaOutputTextureInterface, &MediaOutputInterface::_record);
VORNA_DEFINE_INTERFACE(MediaOutputUrlInterface, &MediaOutputInterface::_record);
VORNA_DEFINE_INTERFACE(AudioObjectInterface, &DataDictionaryObjectInterface::_record);
VORNA_DEFINE_INTERFACE(FileFormatInterface, &DataDictionaryObjectInterface::_record);
VORNA_DEFINE_INTERFACE(FileFormatHandlerInterface, &ObjectInterface::_record);
VORNA_DEFINE_INTERFACE(MediaSessionFileFormatHandlerInterface, &FileFormatHandlerInterface::_record);

}  // namespace vorna

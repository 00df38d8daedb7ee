#include "vorna/translationunit.h"

#include "vorna/iostreams.h"
#include "vorna/resourceid.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(BaseStreamInterface, &DataDictionaryObjectInterface::_record);
VORNA_DEFINE_INTERFACE(InputStreamInterface, &BaseStreamInterface::_record);
VORNA_DEFINE_INTERFACE(OutputStreamInterface, &BaseStreamInterface::_record);

VORNA_DEFINE_INTERFACE(InOutputStreamInterface, &InputStreamInterface::_record, &OutputStreamInterface::_record);

VORNA_DEFINE_INTERFACE(WrappedStreamInterface, &BaseStreamInterface::_record);

VORNA_DEFINE_INTERFACE(WrappedInputStreamInterface, &InputStreamInterface::_record, &WrappedStreamInterface::_record);

VORNA_DEFINE_INTERFACE(IoDualInOutputStreamInterface, &InOutputStreamInterface::_record);

VORNA_DEFINE_INTERFACE(IoPipeInOutputStreamInterface, &InOutputStreamInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_InputStreamBaseClass, "vorna.InputStreamBaseClass");
VORNA_DEFINE_OBJECT_USE(g_OutputStreamBaseClass, "vorna.OutputStreamBaseClass");
VORNA_DEFINE_OBJECT_USE(g_InOutputStreamBaseClass, "vorna.InOutputStreamBaseClass");
VORNA_DEFINE_OBJECT_USE(g_InOutputStreamDualClass, "vorna.InOutputStreamDualClass");
VORNA_DEFINE_OBJECT_USE(g_InputStreamInterfaceFromBlock, "vorna.InputStreamInterface.FromBlock");
VORNA_DEFINE_OBJECT_USE(g_WrappedInputStreamInterfaceFromStream, "vorna.WrappedInputStreamInterface.FromStream");
VORNA_DEFINE_OBJECT_USE(g_WrappedStreamComponent, "vorna.WrappedStreamComponent");

VORNA_DEFINE_CLASS_USE(g_WrappedStreamComponentUse, "vorna/iostreams", "vorna.WrappedStreamComponent");

VORNA_DEFINE_RESOURCE_ID(g_streamflagsHttpRemoteaddress, "vorna.streamflags.http_remoteaddress");
VORNA_DEFINE_RESOURCE_ID(g_streamflagsHttpHeader, "vorna.streamflags.http_header");

}  // namespace vorna

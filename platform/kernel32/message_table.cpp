// The system message table: Win32 errors, COM statuses and Media Foundation statuses,
// worded as the system words them. The system has no texts of its own for the
// statuses of the AVI functions (0x80044065 on); theirs say what failed in the words of
// the published reference of those functions.
#include "kernel32/message_table.h"

#include <algorithm>
#include <iterator>

namespace tessel::platform {

namespace {

struct Message {
  DWORD id;
  const char16_t* text;
};

// Sorted by id.
constexpr Message kMessages[] = {
    {1, u"Incorrect function.\r\n"},
    {2, u"The system cannot find the file specified.\r\n"},
    {3, u"The system cannot find the path specified.\r\n"},
    {4, u"The system cannot open the file.\r\n"},
    {5, u"Access is denied.\r\n"},
    {6, u"The handle is invalid.\r\n"},
    {8, u"Not enough memory resources are available to process this command.\r\n"},
    {13, u"The data is invalid.\r\n"},
    {14, u"Not enough memory resources are available to complete this operation.\r\n"},
    {15, u"The system cannot find the drive specified.\r\n"},
    {21, u"The device is not ready.\r\n"},
    {23, u"Data error (cyclic redundancy check).\r\n"},
    {25, u"The drive cannot locate a specific area or track on the disk.\r\n"},
    {29, u"The system cannot write to the specified device.\r\n"},
    {30, u"The system cannot read from the specified device.\r\n"},
    {32, u"The process cannot access the file because it is being used by another process.\r\n"},
    {33, u"The process cannot access the file because another process has locked a portion of the file.\r\n"},
    {38, u"Reached the end of the file.\r\n"},
    {39, u"The disk is full.\r\n"},
    {50, u"The request is not supported.\r\n"},
    {80, u"The file exists.\r\n"},
    {87, u"The parameter is incorrect.\r\n"},
    {110, u"The system cannot open the device or file specified.\r\n"},
    {112, u"There is not enough space on the disk.\r\n"},
    {122, u"The data area passed to a system call is too small.\r\n"},
    {123, u"The filename, directory name, or volume label syntax is incorrect.\r\n"},
    {131, u"An attempt was made to move the file pointer before the beginning of the file.\r\n"},
    {158, u"The segment is already unlocked.\r\n"},
    {161, u"The specified path is invalid.\r\n"},
    {183, u"Cannot create a file when that file already exists.\r\n"},
    {206, u"The filename or extension is too long.\r\n"},
    {267, u"The directory name is invalid.\r\n"},
    {1150, u"The specified program requires a newer version of Windows.\r\n"},
    {1392, u"The file or directory is corrupted and unreadable.\r\n"},
    {5023, u"The group or resource is not in the correct state to perform the requested operation.\r\n"},
    {0x80004001, u"Not implemented\r\n"},
    {0x80004002, u"No such interface supported\r\n"},
    {0x80004003, u"Invalid pointer\r\n"},
    {0x80004004, u"Operation aborted\r\n"},
    {0x80004005, u"Unspecified error\r\n"},
    {0x8000FFFF, u"Catastrophic failure\r\n"},
    {0x80010106, u"Cannot change thread mode after it is set.\r\n"},
    {0x80030001, u"Unable to perform requested operation.\r\n"},
    {0x80030070, u"There is insufficient disk space to complete operation.\r\n"},
    {0x80040110, u"Class does not support aggregation (or class object is remote)\r\n"},
    {0x80040154, u"Class not registered\r\n"},
    {0x800401F0, u"CoInitialize has not been called.\r\n"},
    {0x80044065, u"The operation is not supported for this AVI file or stream.\r\n"},
    {0x80044066, u"The data format is corrupt, unrecognized, or not accepted by the stream or its compressor.\r\n"},
    {0x80044067, u"There is not enough memory to complete the AVI operation.\r\n"},
    {0x80044068, u"An internal error occurred in the AVI file functions.\r\n"},
    {0x80044069, u"The flags passed to the AVI function are not valid.\r\n"},
    {0x8004406A, u"A parameter passed to the AVI function is not valid.\r\n"},
    {0x8004406B, u"A size passed to the AVI function is not valid.\r\n"},
    {0x8004406C, u"The AVI file or stream handle is not valid.\r\n"},
    {0x8004406D, u"A disk error occurred while reading the AVI file.\r\n"},
    {0x8004406E, u"A disk error occurred while writing the AVI file.\r\n"},
    {0x8004406F, u"A disk error occurred while opening the AVI file.\r\n"},
    {0x80044070, u"The video compressor failed.\r\n"},
    {0x80044071, u"A suitable compressor cannot be found.\r\n"},
    {0x80044072, u"The AVI file is open for reading only.\r\n"},
    {0x80044073, u"The AVI stream holds no data.\r\n"},
    {0x80044074, u"The buffer passed to the AVI function is too small.\r\n"},
    {0x80044075, u"The data cannot be compressed.\r\n"},
    {0x800440C6, u"The AVI operation was cancelled by the user.\r\n"},
    {0x800440C7, u"An unknown error occurred in the AVI file functions.\r\n"},
    {0xC00D36B0, u"Platform not initialized. Please call MFStartup().\r\n"},
    {0xC00D36B1, u"The buffer was too small to carry out the requested action.\r\n"},
    {0xC00D36B2, u"The request is invalid in the current state.\r\n"},
    {0xC00D36B3, u"The stream number provided was invalid.\r\n"},
    {0xC00D36B4, u"The data specified for the media type is invalid, inconsistent, or not supported by this object.\r\n"},
    {0xC00D36B5, u"The callee is currently not accepting further input.\r\n"},
    {0xC00D36B6, u"This object needs to be initialized before the requested operation can be carried out.\r\n"},
    {0xC00D36B7, u"The requested representation is not supported by this object.\r\n"},
    {0xC00D36B9, u"An object ran out of media types to suggest therefore the requested chain of streaming objects cannot be completed.\r\n"},
    {0xC00D36BA, u"The object does not support the specified service.\r\n"},
    {0xC00D36BB, u"An unexpected error has occurred in the operation requested.\r\n"},
    {0xC00D36BC, u"Invalid name.\r\n"},
    {0xC00D36BD, u"Invalid type.\r\n"},
    {0xC00D36BE, u"The file does not conform to the relevant file format.\r\n"},
    {0xC00D36BF, u"Invalid index.\r\n"},
    {0xC00D36C0, u"An invalid timestamp was given.\r\n"},
    {0xC00D36C3, u"The scheme of the given URL is unsupported.\r\n"},
    {0xC00D36C4, u"The byte stream type of the given URL is unsupported.\r\n"},
    {0xC00D36C5, u"The given time format is unsupported.\r\n"},
    {0xC00D36C8, u"The Media Sample does not have a timestamp.\r\n"},
    {0xC00D36C9, u"The Media Sample does not have a duration.\r\n"},
    {0xC00D36CB, u"The request failed because the data in the stream is corrupt.\r\n"},
    {0xC00D36D0, u"The requested rate is not supported.\r\n"},
    {0xC00D36D5, u"The requested object could not be found.\r\n"},
    {0xC00D36D6, u"The requested value is not available.\r\n"},
    {0xC00D36D9, u"Multiple begin calls were made before a single end call.\r\n"},
    {0xC00D36DE, u"Media Foundation has encountered an unrecoverable error.\r\n"},
    {0xC00D36DF, u"The sample has too many buffers.\r\n"},
    {0xC00D36E0, u"The sample is not writable.\r\n"},
    {0xC00D36E2, u"The specified key is not valid.\r\n"},
    {0xC00D36E3, u"You are calling MFStartup with the wrong MF_VERSION. Mismatched bits?\r\n"},
    {0xC00D36E5, u"The specified position is not valid.\r\n"},
    {0xC00D36E6, u"The requested attribute was not found.\r\n"},
    {0xC00D36E7, u"The specified property type is not allowed in this context.\r\n"},
    {0xC00D36E8, u"The specified property type is not supported.\r\n"},
    {0xC00D36ED, u"The operation was cancelled.\r\n"},
    {0xC00D36EE, u"The provided bytestream was expected to be seekable and it was not.\r\n"},
    {0xC00D36F0, u"Cannot parse the byte stream.\r\n"},
    {0xC00D36FB, u"The length of the provided bytestream is unknown.\r\n"},
    {0xC00D36FD, u"The format change is not supported.\r\n"},
    {0xC00D3701, u"The value is out of range.\r\n"},
    {0xC00D3E84, u"The end of the stream has been reached.\r\n"},
    {0xC00D3E85, u"The object has been shut down.\r\n"},
    {0xC00D3E8A, u"The media source does not have a duration.\r\n"},
    {0xC00D3E8C, u"The media format is recognized but is invalid.\r\n"},
    {0xC00D3E98, u"The media format is not supported.\r\n"},
    {0xC00D3E9C, u"No streams are selected in the source presentation descriptor.\r\n"},
    {0xC00D3E9D, u"The media source could not find a key frame sample.\r\n"},
    {0xC00D5212, u"No suitable transform was found to encode or decode the content.\r\n"},
    {0xC00D6D60, u"You must set the media type on one or more streams of the MFT before calling this method.\r\n"},
    {0xC00D6D61, u"The MFT's output format has changed. Call GetOutputAvailableType to get the new output type.\r\n"},
    {0xC00D6D72, u"The transform cannot produce output until it gets more input samples.\r\n"},
    {0xC00D7170, u"The buffer is too small to carry out the requested action.\r\n"},
};

constexpr bool IsSorted() {
  for (size_t i = 1; i < std::size(kMessages); ++i) {
    if (kMessages[i - 1].id >= kMessages[i].id) return false;
  }
  return true;
}
static_assert(IsSorted(), "the message table is searched by halving");

constexpr DWORD kWin32Facility = 0x80070000;

}  // namespace

const char16_t* FindSystemMessage(DWORD messageId) {
  if ((messageId & 0xFFFF0000) == kWin32Facility) messageId &= 0xFFFF;
  auto found = std::lower_bound(std::begin(kMessages), std::end(kMessages), messageId,
                                [](const Message& m, DWORD id) { return m.id < id; });
  if (found == std::end(kMessages) || found->id != messageId) return nullptr;
  return found->text;
}

}  // namespace tessel::platform

#include "scripted_source_reader.h"

#include <propidl.h>

#include <utility>

namespace tessel::testing {

namespace {

constexpr DWORD FOURCC_RGB24 = 20;

HRESULT VideoBuffer(size_t index, IMFMediaBuffer** buffer) {
  HRESULT hr = MFCreate2DMediaBuffer(2, 2, FOURCC_RGB24, FALSE, buffer);
  if (FAILED(hr)) return hr;
  IMF2DBuffer* image = nullptr;
  (*buffer)->QueryInterface(IID_PPV_ARGS(&image));
  BYTE* top = nullptr;
  LONG pitch = 0;
  image->Lock2D(&top, &pitch);
  for (int r = 0; r < 2; ++r)
    for (int c = 0; c < 2; ++c) {
      BYTE* p = top + r * pitch + 3 * c;
      p[0] = BYTE(index);
      p[1] = BYTE(index >> 8);
      p[2] = 7;
    }
  image->Unlock2D();
  image->Release();
  return S_OK;
}

HRESULT AudioBuffer(size_t index, int part, IMFMediaBuffer** buffer) {
  HRESULT hr = MFCreateMemoryBuffer(2, buffer);
  if (FAILED(hr)) return hr;
  BYTE* data = nullptr;
  (*buffer)->Lock(&data, nullptr, nullptr);
  data[0] = BYTE(index);
  data[1] = BYTE(part);
  (*buffer)->Unlock();
  return (*buffer)->SetCurrentLength(2);
}

}  // namespace

std::vector<ScriptedRead> EvenReads(int count, LONGLONG first, LONGLONG step, LONGLONG duration) {
  std::vector<ScriptedRead> reads;
  for (int i = 0; i < count; ++i) reads.push_back({first + i * step, duration, true, 1});
  return reads;
}

void ScriptedSourceReader::AddStream(std::vector<ScriptedRead> reads, LONGLONG endTime, bool video, int keyInterval) {
  _streams.push_back({std::move(reads), endTime, video, keyInterval, 0});
}

HRESULT ScriptedSourceReader::SetStreamSelection(DWORD streamIndex, BOOL) {
  if (streamIndex >= _streams.size()) return E_INVALIDARG;
  selections.push_back(streamIndex);
  return S_OK;
}

size_t ScriptedSourceReader::Land(const Stream& stream, LONGLONG position) const {
  size_t key = 0;
  for (size_t i = 0; i < stream.reads.size(); i += size_t(stream.keyInterval)) {
    if (landing == Landing::KEY_FRAME_AFTER && stream.reads[i].time >= position) return i;
    if (landing == Landing::KEY_FRAME_BEFORE && stream.reads[i].time > position) return key;
    key = i;
  }
  return landing == Landing::KEY_FRAME_AFTER || (!stream.reads.empty() && stream.endTime <= position)
             ? stream.reads.size()
             : key;
}

HRESULT ScriptedSourceReader::SetCurrentPosition(REFGUID, REFPROPVARIANT position) {
  if (position.vt != VT_I8) return E_INVALIDARG;
  positions.push_back(position.hVal.QuadPart);
  for (Stream& stream : _streams) stream.next = Land(stream, position.hVal.QuadPart);
  return S_OK;
}

HRESULT ScriptedSourceReader::MakeSample(const Stream& stream, size_t index, IMFSample** sample) const {
  const ScriptedRead& read = stream.reads[index];
  HRESULT hr = MFCreateSample(sample);
  if (FAILED(hr)) return hr;
  (*sample)->SetSampleTime(read.time);
  if (read.duration >= 0) (*sample)->SetSampleDuration(read.duration);
  for (int part = 0; part < read.buffers && SUCCEEDED(hr); ++part) {
    IMFMediaBuffer* buffer = nullptr;
    hr = stream.video ? VideoBuffer(index, &buffer) : AudioBuffer(index, part, &buffer);
    if (SUCCEEDED(hr)) hr = (*sample)->AddBuffer(buffer);
    if (buffer) buffer->Release();
  }
  return hr;
}

HRESULT ScriptedSourceReader::ReadSample(DWORD streamIndex, DWORD, DWORD*, DWORD* streamFlags, LONGLONG* timestamp,
                                         IMFSample** sample) {
  if (streamIndex >= _streams.size() || !streamFlags || !timestamp || !sample) return E_INVALIDARG;
  ++readCount;
  *sample = nullptr;
  *streamFlags = 0;
  if (failNextRead != S_OK) return std::exchange(failNextRead, S_OK);
  Stream& stream = _streams[streamIndex];
  if (stream.next >= stream.reads.size()) {
    *streamFlags = MF_SOURCE_READERF_ENDOFSTREAM;
    *timestamp = stream.endTime;
    return S_OK;
  }
  const size_t index = stream.next++;
  *timestamp = stream.reads[index].time;
  if (!stream.reads[index].sample) {
    *streamFlags = MF_SOURCE_READERF_STREAMTICK;
    return S_OK;
  }
  HRESULT hr = MakeSample(stream, index, sample);
  if (FAILED(hr) && *sample) (*sample)->Release(), *sample = nullptr;
  return hr;
}

}  // namespace tessel::testing

#include "wmvencod/motion_search.h"

#include <algorithm>
#include <cstdlib>

#include "wmvencod/mv_prediction.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tessel::platform::wmv3 {
namespace {

// Integer vectors (whole samples) stay where the decoder never clips the source
// position and the wrapped differential can reach them.
struct SearchBounds {
  int minX, maxX, minY, maxY;  // whole samples
};

SearchBounds BoundsFor(const SearchRequest& request) {
  int x = request.mbX * 16, y = request.mbY * 16;
  const Plane& plane = request.reference->Phase(0, 0);
  int width = plane.Width(), height = plane.Height();
  int reachX = kRangeX / 4 - 2, reachY = kRangeY / 4 - 2;
  return {std::max(-16 - x, -reachX), std::min(width - 16 - x, reachX), std::max(-16 - y, -reachY),
          std::min(height - 16 - y, reachY)};
}

class Searcher {
 public:
  explicit Searcher(const SearchRequest& request)
      : request_(request),
        bounds_(BoundsFor(request)),
        source_(request.source->At(request.mbX * 16, request.mbY * 16)) {}

  // Cost of the whole-sample vector (x, y), remembered when it is the best so far.
  // Cost of the half-sample vector (quarter units, even), remembered when it is the
  // best so far.
  void Try(MotionVector vector) {
    int x = vector.x >> 2, y = vector.y >> 2;
    if (x < bounds_.minX || x > bounds_.maxX || y < bounds_.minY || y > bounds_.maxY) return;
    const Plane& phase = request_.reference->Phase((vector.x >> 1) & 1, (vector.y >> 1) & 1);
    int sad = Sad16(source_, request_.source->Stride(), phase.At(request_.mbX * 16 + x, request_.mbY * 16 + y),
                    phase.Stride());
    Consider(vector, sad);
  }
  void TryInteger(int x, int y) { Try({4 * x, 4 * y}); }

  const SearchResult& Best() const { return best_; }

 private:
  void Consider(MotionVector vector, int sad) {
    MotionVector differential{(vector.x - request_.expected.x) / 2, (vector.y - request_.expected.y) / 2};
    int cost = sad + request_.lambda * VectorCostEstimate(differential);
    if (!found_ || cost < best_.cost) {
      best_ = {vector, cost, sad};
      found_ = true;
    }
  }

  const SearchRequest& request_;
  SearchBounds bounds_;
  const uint8_t* source_;
  SearchResult best_;
  bool found_ = false;
};

}  // namespace

int Sad16(const uint8_t* a, ptrdiff_t aStride, const uint8_t* b, ptrdiff_t bStride) {
#if defined(__SSE2__)
  __m128i sum = _mm_setzero_si128();
  for (int y = 0; y < 16; ++y) {
    __m128i rowA = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + y * aStride));
    __m128i rowB = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + y * bStride));
    sum = _mm_add_epi64(sum, _mm_sad_epu8(rowA, rowB));
  }
  return _mm_cvtsi128_si32(sum) + _mm_cvtsi128_si32(_mm_srli_si128(sum, 8));
#else
  int sum = 0;
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 16; ++x) sum += std::abs(a[y * aStride + x] - b[y * bStride + x]);
  return sum;
#endif
}

int IntraActivity(const Plane& source, int mbX, int mbY) {
  int activity = 0;
  for (int block = 0; block < 4; ++block) {
    const uint8_t* origin = source.At(mbX * 16 + (block & 1) * 8, mbY * 16 + (block >> 1) * 8);
    int sum = 0;
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 8; ++x) sum += origin[y * source.Stride() + x];
    int mean = (sum + 32) >> 6;
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 8; ++x) activity += std::abs(origin[y * source.Stride() + x] - mean);
  }
  return activity;
}

SearchResult SearchMotion(const SearchRequest& request) {
  Searcher searcher(request);
  searcher.TryInteger(0, 0);
  for (int i = 0; i < request.candidateCount; ++i)
    searcher.TryInteger(request.candidates[i].x >> 2, request.candidates[i].y >> 2);

  // Diamonds of shrinking size around the best, then the small one until it settles.
  static constexpr int kDiamond[4][2] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
  for (int size : {8, 4, 2}) {
    MotionVector center = searcher.Best().vector;
    for (const auto& d : kDiamond) searcher.TryInteger((center.x >> 2) + size * d[0], (center.y >> 2) + size * d[1]);
  }
  for (int step = 0; step < 32; ++step) {
    MotionVector center = searcher.Best().vector;
    for (const auto& d : kDiamond) searcher.TryInteger((center.x >> 2) + d[0], (center.y >> 2) + d[1]);
    if (searcher.Best().vector == center) break;
  }

  MotionVector whole = searcher.Best().vector;
  for (int dy = -2; dy <= 2; dy += 2)
    for (int dx = -2; dx <= 2; dx += 2)
      if (dx || dy) searcher.Try({whole.x + dx, whole.y + dy});
  return searcher.Best();
}

}  // namespace tessel::platform::wmv3

#include "vorna/tripleidtable.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

#include "vorna/diagnostics.h"

namespace vorna {

namespace {

constexpr Int TEXT_BUFFER = 4096;

struct Node {
  Node* next;
  UInt hash;
  const Char* a;
  const Char* b;
  const Char* c;
  Id id;
  Char text[TEXT_BUFFER];
};

UInt HashOf(const Char* s) { return Id::HashText(s, Id::LengthOf(s)); }

Bool SameTriple(const Node* node, UInt hash, const Char* a, const Char* b, const Char* c) {
  return node->hash == hash && std::strcmp(node->a, a) == 0 && std::strcmp(node->b, b) == 0 &&
         std::strcmp(node->c, c) == 0;
}

// Never grows: sized by doubling from 1 until at least 4000 buckets.
class Table {
 public:
  static constexpr Int BUCKETS = 4096;

  ~Table() {
    for (auto& bucket : _buckets) {
      Node* node = bucket.load();
      while (node) {
        Node* next = node->next;
        node->~Node();
        std::free(node);
        node = next;
      }
    }
  }

  const Id& Get(const Char* a, const Char* b, const Char* c) {
    UInt hash = (HashOf(a) * 31 + HashOf(b)) * 31 + HashOf(c);
    std::atomic<Node*>& bucket = _buckets[hash & (BUCKETS - 1)];
    Node* head = bucket.load();
    if (Node* found = FindFrom(head, nullptr, hash, a, b, c)) return found->id;
    Node* node = MakeNode(hash, a, b, c);
    if (!node) return _failed;
    for (;;) {
      node->next = head;
      if (bucket.compare_exchange_strong(head, node)) {
        _count.fetch_add(1);
        return node->id;
      }
      // Another thread inserted: look at what it added before trying again.
      if (Node* found = FindFrom(head, node->next, hash, a, b, c)) {
        node->~Node();
        std::free(node);
        return found->id;
      }
    }
  }

 private:
  static Node* FindFrom(Node* from, Node* until, UInt hash, const Char* a, const Char* b, const Char* c) {
    for (Node* node = from; node != until; node = node->next)
      if (SameTriple(node, hash, a, b, c)) return node;
    return nullptr;
  }

  static Node* MakeNode(UInt hash, const Char* a, const Char* b, const Char* c) {
    size_t la = std::strlen(a), lb = std::strlen(b), lc = std::strlen(c);
    if (Int(la + lb + lc) >= Id::MAX_LENGTH) {
      VORNA_STOP("Assertion failed: (int)(strlen(triple._a) + strlen(triple._b) + strlen(triple._c)) < Id::MAX_LENGTH");
      return nullptr;
    }
    void* memory = std::malloc(sizeof(Node));
    if (!memory) {
      ReportAssertion("Assertion failed: e", __LINE__, __FILE__);
      return nullptr;
    }
    Node* node = new (memory) Node{nullptr, hash, a, b, c, Id(), {}};
    std::memcpy(node->text, a, la);
    std::memcpy(node->text + la, b, lb);
    std::memcpy(node->text + la + lb, c, lc);
    node->text[la + lb + lc] = 0;
    node->id = Id(static_cast<const Char*>(node->text));
    return node;
  }

  std::atomic<Node*> _buckets[BUCKETS] = {};
  std::atomic<Int> _count{0};
  // What a caller gets when no node can be made: the empty Id, so start-up can go on
  // and the failed lookup shows as an unresolved entity.
  const Id _failed{};
};

}  // namespace

const Id& GetTripleId(const Char* a, const Char* b, const Char* c) {
  static Table table;  // created once under the runtime's one-time guard
  return table.Get(a, b, c);
}

}  // namespace vorna

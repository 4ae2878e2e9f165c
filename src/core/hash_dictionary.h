#pragma once

#include <QtGlobal>
#include <vector>

namespace corvane {

// The part of a hash dictionary that does not depend on its types: buckets of singly linked chains.
// The number of buckets is fixed at construction.
class hashDictionaryBase {
 public:
  // The bucket count is bucketCountFor(requestedBuckets).
  hashDictionaryBase(quint32 requestedBuckets, bool flag);
  hashDictionaryBase(const hashDictionaryBase &) = delete;
  hashDictionaryBase &operator=(const hashDictionaryBase &) = delete;
  virtual ~hashDictionaryBase() = default;

  // The first prime from the requested count upwards, odd candidates only; candidates divisible by
  // 3 are passed over (3 itself too), and 1 counts as a prime.
  static quint32 bucketCountFor(quint32 requestedBuckets);

  qint32 count() const { return count_; }
  quint32 bucketCount() const { return static_cast<quint32>(buckets_.size()); }
  bool flag() const { return flag_; }

 protected:
  struct Association {
    void *key;
    void *value;
    Association *next;
    quint32 hash;
  };

  // Puts a new entry at the head of its chain.
  void addAtHead(void *key, void *value, quint32 hash);
  // Releases the entry, which the caller has taken out of its chain.
  void releaseAssociation(Association *association);
  // Makes the pool of the entries, where it will be used and is not there yet. (The pool enters
  // itself in the registry, which is a dictionary.)
  static void prepareAssociations();
  Association *&bucketOf(quint32 hash) { return buckets_[hash % buckets_.size()]; }
  std::vector<Association *> &buckets() { return buckets_; }

 private:
  // A 32-byte block of the pool "hashDictionaryAssoc" while both switches of pooled allocation are
  // on, else of the plain heap. Throws std::bad_alloc.
  static Association *allocateAssociation();

  qint32 count_ = 0;
  std::vector<Association *> buckets_;
  bool flag_;
};

// Maps keys to values, both held by pointer. Hash is a function object from K to quint32. The
// dictionary takes ownership of what it stores and hands it to the two deletion operations when it
// is destroyed. Entries that are looked up move to the head of their chain.
//
// A derived class that overrides an operation calls clear() in its own destructor.
template <typename K, typename V, typename Hash>
class hashDictionary : public hashDictionaryBase {
 public:
  using hashDictionaryBase::hashDictionaryBase;
  hashDictionary(const hashDictionary &) = delete;
  hashDictionary &operator=(const hashDictionary &) = delete;
  ~hashDictionary() override { clear(); }

  virtual bool keysEqual(const K &a, const K &b) const { return a == b; }
  virtual void deleteKey(K *key) { delete key; }
  virtual void deleteValue(V *value) { delete value; }

  // The value of the key, or null.
  V *lookup(const K &key) {
    const quint32 hash = Hash()(key);
    Association *&head = bucketOf(hash);
    Association **link = find(key, hash);
    Association *entry = *link;
    if (entry == nullptr) {
      return nullptr;
    }
    *link = entry->next;
    entry->next = head;
    head = entry;
    return static_cast<V *>(entry->value);
  }

  // False, with nothing changed or taken over, when an equal key is there already.
  bool insert(K *key, V *value) {
    const quint32 hash = Hash()(*key);
    if (*find(*key, hash) != nullptr) {
      return false;
    }
    addAtHead(key, value, hash);
    return true;
  }

  // Deletes every key and value and forgets them.
  void clear() {
    for (Association *&head : buckets()) {
      while (head != nullptr) {
        Association *entry = head;
        head = entry->next;
        deleteKey(static_cast<K *>(entry->key));
        deleteValue(static_cast<V *>(entry->value));
        releaseAssociation(entry);
      }
    }
  }

 private:
  // The link to the key's entry, or to the end of its chain.
  Association **find(const K &key, quint32 hash) {
    Association **link = &bucketOf(hash);
    while (*link != nullptr &&
           ((*link)->hash != hash || !keysEqual(*static_cast<K *>((*link)->key), key))) {
      link = &(*link)->next;
    }
    return link;
  }
};

}  // namespace corvane

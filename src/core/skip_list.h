#pragma once

#include <QtGlobal>
#include <algorithm>
#include <array>

#include "core/comparison.h"
#include "core/skip_levels.h"
#include "core/skip_node.h"

namespace corvane {

template <typename T>
class SkipListAppender;
template <typename T>
class SkipListCursor;
template <typename T>
class SkipListGroupCursor;
template <typename T>
struct SkipListInspector;

// The ordered container behind every keyed collection: a skip list of element pointers.
//
// The list owns its nodes but never its elements: whoever fills it deletes the records. The
// comparator is not owned either. Searching, inserting and removing cost logarithmic time on
// average; a search compares no node twice. Throws std::bad_alloc, with nothing changed.
template <typename T>
class skipList {
 public:
  static constexpr int kFound = 0;
  static constexpr int kNotFound = 1;
  static constexpr int kStored = 0;
  static constexpr int kDuplicate = 2;

  // With duplicates allowed an element that equals a stored one is stored before it. levelArgument
  // (0 to 8) chooses the level parameter; the lists of a run have the one that stands here.
  skipList(Comparison<T> *comparison, bool duplicatesAllowed, int levelArgument = 3)
      : comparison_(comparison),
        k_(skipLevelParameter(levelArgument)),
        duplicatesAllowed_(duplicatesAllowed ? 1 : 0) {
    head_ = SkipNode::allocate(nullptr, levelCount_);
    try {
      finger_ = SkipNode::allocate(nullptr, levelCount_);
    } catch (...) {
      SkipNode::release(head_, levelCount_);
      throw;
    }
  }
  skipList(const skipList &) = delete;
  skipList &operator=(const skipList &) = delete;
  virtual ~skipList() {
    clear();
    SkipNode::release(finger_, levelCount_);
    SkipNode::release(head_, levelCount_);
  }

  virtual T *elementOf(SkipNode *node) const { return static_cast<T *>(node->element); }
  virtual void releaseNode(SkipNode *node, int level, bool deleteItsElement) {
    if (deleteItsElement) {
      deleteElement(elementOf(node));
    }
    SkipNode::release(node, level);
  }
  virtual T *elementAt(SkipNode *node) const { return static_cast<T *>(node->element); }
  virtual void setElement(SkipNode *node, T *element) { node->element = element; }
  virtual SkipNode *allocateNode(T *element, int level) {
    return SkipNode::allocate(element, level);
  }
  virtual void deleteElement(T *element) { delete element; }

  // kFound with the equal element that the search met first, or kNotFound with the element before
  // the key's place (null at the front).
  int search(const T &key, T *&element) const {
    Path path;
    SkipNode *match = findPath(key, path);
    SkipNode *answer = match != nullptr ? match : lastFound_;
    element = answer == head_ ? nullptr : raw(answer);
    return match != nullptr ? kFound : kNotFound;
  }

  // kStored, or kDuplicate with the equal element that stays. The list does not take ownership.
  int insert(T *element, T **existing = nullptr) {
    Path path;
    SkipNode *match = findPath(*element, path);
    if (match != nullptr && duplicatesAllowed_ == 0) {
      if (existing != nullptr) {
        *existing = raw(match);
      }
      return kDuplicate;
    }
    linkNode(element, randomLevelForNext(), path);
    return kStored;
  }

  // As insert, at constant cost on average for an element that orders after every stored one. Such
  // elements get counted levels and move the remembered position to the end.
  int append(T *element, T **existing = nullptr) {
    Path path;
    seekEnd(path);
    if (path[0] != head_ && comparison_->compare(*raw(path[0]), *element) >= 0) {
      return insert(element, existing);
    }
    linkLast(element, path);
    rememberEnds(path);
    return kStored;
  }

  // Takes out the first element that equals the key and returns it, or null when there is none. A
  // remembered position on it moves on to its successor on the same level.
  T *remove(const T &key) {
    Path path;
    if (findPath(key, path) == nullptr) {
      return nullptr;
    }
    SkipNode *node = path[0]->next(0);
    T *element = raw(node);
    releaseNode(node, unlinkNode(node, path), false);
    return element;
  }

  qint32 count() const { return count_; }
  int levelCount() const { return levelCount_; }
  int levelParameter() const { return k_; }

  // Iteration by the list's own remembered position, which survives removals: rewind, then step
  // until null. Appending moves the position.
  void rewind() { finger_->next(0) = head_->next(0); }
  T *step() {
    SkipNode *node = finger_->next(0);
    if (node == nullptr) {
      return nullptr;
    }
    finger_->next(0) = node->next(0);
    return raw(node);
  }

  // Releases every node, deletes no element, and returns the number of nodes released.
  qint32 clear() {
    qint32 released = 0;
    while (SkipNode *node = head_->next(0)) {
      int level = 0;
      for (; level < levelCount_ && head_->next(level) == node; ++level) {
        head_->next(level) = node->next(level);
      }
      releaseNode(node, level, false);
      ++released;
    }
    std::fill_n(finger_->forward(), levelCount_, nullptr);
    lastFound_ = nullptr;
    count_ = 0;
    return released;
  }

 private:
  friend class SkipListAppender<T>;
  friend class SkipListCursor<T>;
  friend class SkipListGroupCursor<T>;
  friend struct SkipListInspector<T>;

  // The last node before the key, level by level.
  using Path = std::array<SkipNode *, SkipNode::kMaxLevel>;

  static T *raw(SkipNode *node) { return static_cast<T *>(node->element); }
  static std::size_t index(int level) { return static_cast<std::size_t>(level); }

  // Fills the levels of the path that the list has; returns the node that compared equal first, or
  // null. The node compared last is the stop of the levels below, so it is not compared again.
  SkipNode *findPath(const T &key, Path &path) const {
    const typename Comparison<T>::SearchScope scope(*comparison_);
    SkipNode *match = nullptr;
    SkipNode *stop = nullptr;
    SkipNode *node = head_;
    for (int level = levelCount_ - 1; level >= 0; --level) {
      SkipNode *next = node->next(level);
      while (next != nullptr && next != stop) {
        const int order = comparison_->compare(*raw(next), key);
        if (order >= 0) {
          stop = next;
          match = order == 0 && match == nullptr ? next : match;
          break;
        }
        node = next;
        next = node->next(level);
      }
      path[index(level)] = node;
    }
    lastFound_ = node;
    return match;
  }

  // Drawn only for elements that are stored.
  int randomLevelForNext() { return randomLevel(randomState_, k_); }

  SkipNode *linkNode(T *element, int level, Path &path) {
    if (level > levelCount_) {
      growTo(level, path);
    }
    SkipNode *node = allocateNode(element, level);
    for (int at = 0; at < level; ++at) {
      node->next(at) = path[index(at)]->next(at);
      path[index(at)]->next(at) = node;
    }
    ++count_;
    return node;
  }

  // Behind the last node of every level, which the path holds before and after.
  void linkLast(T *element, Path &ends) {
    const int level = countedLevel(static_cast<quint32>(count_) + 1U, k_);
    SkipNode *node = linkNode(element, level, ends);
    std::fill_n(ends.begin(), level, node);
  }

  void rememberEnds(const Path &ends) {
    for (int level = 0; level < levelCount_; ++level) {
      SkipNode *last = ends[index(level)];
      finger_->next(level) = last == head_ ? nullptr : last;
    }
  }

  // Replaces head and finger by higher ones; path entries that name the old head follow.
  void growTo(int newLevelCount, Path &path) {
    SkipNode *newHead = SkipNode::allocate(nullptr, newLevelCount);
    SkipNode *newFinger = nullptr;
    try {
      newFinger = SkipNode::allocate(nullptr, newLevelCount);
    } catch (...) {
      SkipNode::release(newHead, newLevelCount);
      throw;
    }
    std::copy_n(head_->forward(), levelCount_, newHead->forward());
    std::copy_n(finger_->forward(), levelCount_, newFinger->forward());
    std::replace(path.begin(), path.begin() + levelCount_, head_, newHead);
    std::fill(path.begin() + levelCount_, path.begin() + newLevelCount, newHead);
    lastFound_ = lastFound_ == head_ ? newHead : lastFound_;
    SkipNode::release(head_, levelCount_);
    SkipNode::release(finger_, levelCount_);
    head_ = newHead;
    finger_ = newFinger;
    levelCount_ = newLevelCount;
  }

  // The last node of every level, from the remembered position on.
  void seekEnd(Path &path) {
    SkipNode *node = head_;
    for (int level = levelCount_ - 1; level >= 0; --level) {
      if (finger_->next(level) != nullptr) {
        node = finger_->next(level);
      }
      while (node->next(level) != nullptr) {
        node = node->next(level);
      }
      path[index(level)] = node;
    }
  }

  // Returns the level of the node.
  int unlinkNode(SkipNode *node, Path &path) {
    int level = 0;
    for (; level < levelCount_ && path[index(level)]->next(level) == node; ++level) {
      path[index(level)]->next(level) = node->next(level);
      if (finger_->next(level) == node) {
        finger_->next(level) = node->next(level);
      }
    }
    lastFound_ = path[0];
    --count_;
    return level;
  }

  Comparison<T> *comparison_;
  SkipNode *head_ = nullptr;
  SkipNode *finger_ = nullptr;
  qint32 count_ = 0;
  qint32 k_;
  quint32 randomState_ = 0x1E9EB544U;
  // The predecessor on level 0 that the last search found; may be the head.
  mutable SkipNode *lastFound_ = nullptr;
  qint32 levelCount_ = 3;
  qint32 duplicatesAllowed_;
};

}  // namespace corvane

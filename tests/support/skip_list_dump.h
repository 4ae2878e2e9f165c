#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "core/numbers.h"
#include "core/skip_list.h"

namespace corvane {

// The inside of a skip list, for tests only.
template <typename T>
struct SkipListInspector {
  // Replaces the state that the levels of new nodes are drawn from; 1 draws 31 zeros first.
  static void setRandomState(skipList<T> &list, quint32 state) { list.randomState_ = state; }
  static quint32 randomState(const skipList<T> &list) { return list.randomState_; }

  // The remembered position on a level, null for none.
  static T *finger(const skipList<T> &list, int level) {
    return elementOf(list.finger_->next(level));
  }

  // The element of the last-found node; null when that is the head, or none.
  static T *lastFound(const skipList<T> &list) {
    return list.lastFound_ == list.head_ ? nullptr : elementOf(list.lastFound_);
  }
  static bool lastFoundIsHead(const skipList<T> &list) { return list.lastFound_ == list.head_; }

  static SkipNode *firstNode(const skipList<T> &list) { return list.head_->next(0); }

  // The elements that a level links, in order.
  static std::vector<T *> level(const skipList<T> &list, int level) {
    std::vector<T *> elements;
    for (SkipNode *node : nodes(list, level)) {
      elements.push_back(elementOf(node));
    }
    return elements;
  }

  // The number of levels that the node of this element has.
  static int levelOf(const skipList<T> &list, const T *element) {
    int levels = 0;
    while (levels < list.levelCount_ && contains(level(list, levels), element)) {
      ++levels;
    }
    return levels;
  }

  // One line a level, "L{level}: {elements}", then "finger: {one a level}", "-" for none. text(T)
  // gives the text of an element.
  template <typename Text>
  static std::string dump(const skipList<T> &list, Text text) {
    std::ostringstream out;
    for (int at = 0; at < list.levelCount(); ++at) {
      out << "L" << at << ":";
      for (const T *element : level(list, at)) {
        out << " " << text(*element);
      }
      out << "\n";
    }
    out << "finger:";
    for (int at = 0; at < list.levelCount(); ++at) {
      const T *position = finger(list, at);
      out << " " << (position == nullptr ? std::string("-") : text(*position));
    }
    out << "\n";
    return out.str();
  }

  // What is wrong with the links of the list; empty when nothing is.
  static std::string complaint(const skipList<T> &list) {
    const std::vector<SkipNode *> all = nodes(list, 0);
    if (static_cast<qint32>(all.size()) != list.count()) {
      return "the count is not the number of nodes";
    }
    if (list.levelCount_ < 3 || list.levelCount_ > SkipNode::kMaxLevel) {
      return "the level count is out of bounds";
    }
    for (std::size_t at = 1; at < all.size(); ++at) {
      const int order = list.comparison_->compare(*elementOf(all[at - 1]), *elementOf(all[at]));
      if (order > 0 || (order == 0 && list.duplicatesAllowed_ == 0)) {
        return "two neighbours are out of order";
      }
    }
    return linksComplaint(list, all);
  }

 private:
  static T *elementOf(SkipNode *node) {
    return node == nullptr ? nullptr : static_cast<T *>(node->element);
  }

  template <typename Item>
  static bool contains(const std::vector<Item *> &items, const Item *item) {
    return std::find(items.begin(), items.end(), item) != items.end();
  }

  static std::vector<SkipNode *> nodes(const skipList<T> &list, int level) {
    std::vector<SkipNode *> found;
    for (SkipNode *node = list.head_->next(level); node != nullptr; node = node->next(level)) {
      found.push_back(node);
    }
    return found;
  }

  static std::string linksComplaint(const skipList<T> &list, const std::vector<SkipNode *> &all) {
    std::vector<SkipNode *> below = all;
    for (int level = 0; level < list.levelCount_; ++level) {
      const std::vector<SkipNode *> here = nodes(list, level);
      auto from = below.begin();
      for (SkipNode *node : here) {
        from = std::find(from, below.end(), node);
        if (from == below.end()) {
          return "a level holds a node that the level below lacks";
        }
      }
      SkipNode *position = list.finger_->next(level);
      if (position != nullptr && !contains<SkipNode>(here, position)) {
        return "a finger entry names no node of its level";
      }
      below = here;
    }
    SkipNode *last = list.lastFound_;
    const bool known = last == nullptr || last == list.head_ || contains<SkipNode>(all, last);
    return known ? "" : "the last-found node is not in the list";
  }
};

struct NumbersInspector : SkipListInspector<double> {
  static std::string dump(const skipList<double> &list) {
    return SkipListInspector::dump(list, [](double value) { return general(value); });
  }
};

}  // namespace corvane

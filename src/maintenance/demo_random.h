// 演示账套的随机数: the same figures on every machine for the same seed, which no generator of the library promises.
#pragma once

#include <cstdint>
#include <iterator>
#include <vector>

namespace jxc::demo {

/// SplitMix64: 64 bits of state, whole numbers only.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    std::uint64_t z = (state_ += 0x9e3779b97f4a7c15U);
    z = (z ^ (z >> 30U)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27U)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31U);
  }
  /// 0 … below-1. The small bias of the remainder is of no matter here.
  int below(int below) { return static_cast<int>(next() % static_cast<std::uint64_t>(below)); }
  /// Both ends belong to it.
  int between(int least, int most) { return least + below(most - least + 1); }
  bool chance(int perMille) { return below(1000) < perMille; }
  template <class List>
  const auto& oneOf(const List& list) {
    return list[static_cast<std::size_t>(below(static_cast<int>(std::size(list))))];
  }

 private:
  std::uint64_t state_;
};

/// Indexes with weights: what sells well is drawn often.
class Weighted {
 public:
  void add(int index, int weight) {
    total_ += static_cast<std::uint64_t>(weight);
    indexes_.push_back(index);
    sums_.push_back(total_);
  }
  bool isEmpty() const { return indexes_.empty(); }
  int draw(Random& random) const {
    const std::uint64_t wanted = random.next() % total_;
    std::size_t low = 0;
    for (std::size_t high = sums_.size() - 1; low < high;) {
      const std::size_t middle = (low + high) / 2;
      if (sums_[middle] > wanted)
        high = middle;
      else
        low = middle + 1;
    }
    return indexes_[low];
  }

 private:
  std::uint64_t total_ = 0;
  std::vector<int> indexes_;
  std::vector<std::uint64_t> sums_;
};

}  // namespace jxc::demo

// 全部参数: a piece of a shop's life under every combination of the parameters that meet in a document.
#pragma once

#include "core/data_module.h"
#include "core/statements.h"

#include <array>
#include <gtest/gtest.h>

namespace jxc::test {

struct Switches {
  bool putaway, issue, auditsAtOnce, goesShort, invoices, momentOfSale;
};

/// Lives it under each combination, and takes it back. `set` sets a parameter of the shop.
template <class Set, class Life>
void underAllParameters(const Set& set, const Life& life) {
  constexpr std::array kNames{"cs_sprk", "cs_spck", "cs_shdj", "cs_kc", "cs_kp", "cs_cs014"};
  for (unsigned turn = 0; turn < 1u << kNames.size(); ++turn) {
    SCOPED_TRACE(turn);
    const Transaction trial(accountDb());
    const auto isOn = [turn](unsigned which) { return (turn >> which & 1u) != 0; };
    for (unsigned i = 0; i < kNames.size(); ++i)
      set(kNames[i], isOn(i));
    life(Switches{isOn(0), isOn(1), isOn(2), isOn(3), isOn(4), isOn(5)});
  }
}

}  // namespace jxc::test

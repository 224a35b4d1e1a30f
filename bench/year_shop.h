// 一年的店: an account set with a year of business and nothing else behind it, filled by hand in seconds.
#pragma once

#include <span>

struct sqlite3;

namespace jxc::bench {

/// A year (2025) of a shop with a thousand goods in sixty classes of thirty suppliers, five hundred customers and eight
/// employees; nine of ten rows are sales, one of twenty of them comes back. Before it, each goods was counted once.
/// What else a measurement needs is filled in by statements of its own. The last one made stays for the measurements
/// that follow with the same ones.
sqlite3* yearWith(int rows, std::span<const char* const> more = {});

/// To be filled in besides: the same rows fall on a hundred thousand goods.
extern const std::span<const char* const> manyGoods;

inline constexpr int mostOfYear = 1000000;  // rows of the ledger: a year has no more

}  // namespace jxc::bench

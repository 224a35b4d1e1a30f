// 一年的店: an account set with a year of business and nothing else behind it, filled by hand in seconds.
#pragma once

namespace jxc::bench {

/// A year (2025) of a shop with a thousand goods in sixty classes of thirty suppliers, five hundred customers and eight
/// employees; nine of ten rows are sales, one of twenty of them comes back. Before it, each goods was counted once.
/// The last one made stays for the measurements that follow.
void yearWith(int rows);

}  // namespace jxc::bench

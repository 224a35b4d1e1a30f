// 修改商品库存下限: the minimum of one goods, from the list of those that are below it.
#pragma once

namespace jxc {

class Prompt;
class Row;

/// Asks for the minimum of the goods of a row (`id`, g_sn, g_name, kc, g_zdkc). True: it was changed.
bool changeMinimum(const Row& goods, Prompt& prompt);

}  // namespace jxc

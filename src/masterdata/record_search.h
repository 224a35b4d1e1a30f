// 按编号查找: goods, partners and documents that a few typed characters mean, for the search box of the main window.
#pragma once

#include <QString>

#include <string_view>
#include <vector>

namespace jxc {

/// A row of the account set and the command whose screen shows it.
struct FoundRecord {
  std::string_view command;  // "btn_Menu6_Btn1"
  QString number;            // what its search box is given
  QString text;              // "商品 K0001 钛架"
};

/// Goods by number, barcode, mnemonic or the beginning of the name, suppliers and customers by number, mnemonic or
/// name, documents by the beginning of their number; a few of each. Fewer than two characters mean nothing.
std::vector<FoundRecord> findRecords(const QString& typed);

}  // namespace jxc

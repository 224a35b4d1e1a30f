// 批量批发价与POS提成: dialogs of the catalogue over prices of many goods and over the commissions of one.
#pragma once

#include "masterdata/goods_prices.h"
#include "ui/screen.h"

#include <cstdint>
#include <vector>

namespace jxc {

/// "批量定义批发价"
class TF_Spxxgl_Pfj : public ui::Screen {
 public:
  TF_Spxxgl_Pfj();
  ui::Field& comFw = field("comFw");
  ui::Field& comJb = field("comJb");
  ui::Field& comJs = field("comJs");
  ui::Field& tjgbl = field("tjgbl");
  ui::Field& comQz = field("comQz");
  /// For the marked goods, the class of the focused row, or all. Whether prices were set.
  bool run(const QString& classNumber, const QString& className, std::vector<std::int64_t> marked);

 private:
  void setPrices();
  void sourceChanged();
  bool isFixed() const;
  QString classNumber_;
  std::vector<std::int64_t> marked_;
};

/// "POS销售提成设置"
class TF_Spxxgl_Tc : public ui::Screen {
 public:
  TF_Spxxgl_Tc();
  bool edit(const QString& goods, const QString& name);

 private:
  void saveValue();
  QString goods_;
};

}  // namespace jxc

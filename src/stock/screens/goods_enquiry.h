// 单个商品的查询: an enquiry of one goods, which stands in its title, from whatever list names it.
#pragma once

#include "ui/enquiry_screen.h"

#include <optional>

namespace jxc {

class GoodsEnquiry : public ui::EnquiryScreen {
 public:
  explicit GoodsEnquiry(const ui::EnquirySpec& spec) : EnquiryScreen(spec) {}
  /// Opens for a goods in one warehouse, or (empty) in all that the operator may see.
  void showOf(const QString& goods, const QString& name, const QString& warehouse);

 protected:
  void activate() override;
  void complete(Criteria& criteria) const override { criteria.goods = goods_; }

 private:
  QString goods_;
  std::optional<QString> warehouse_;
};

/// The movements of the goods of a row (g_sn, g_name), and its batches.
void showMovements(const Row& goods, const QString& warehouse);
void showBatches(const Row& goods, const QString& warehouse);

}  // namespace jxc

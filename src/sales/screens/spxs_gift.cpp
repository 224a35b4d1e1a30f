#include "sales/screens/spxs_gift.h"

#include "core/small_lookups.h"
#include "sales/sale.h"
#include "stock/screens/trading_parts.h"
#include "ui/picker_screen.h"

#include <QLabel>

namespace jxc {
namespace spxs_gift_detail {

using ui::ColumnKind;

constexpr ui::ColumnSpec kGifts[] = {
    {"g_sn", "商品编号", ColumnKind::Text, 10},   {"g_name", "商品名称", ColumnKind::Text, 24},
    {"g_sptm", "商品条码", ColumnKind::Text, 15}, {"gg_name", "规格型号", ColumnKind::Text, 12},
    {"dw_name", "单位", ColumnKind::Text, 6},     {"kc_sl", "库存数量", ColumnKind::Quantity, 10},
};
constexpr ui::GridSpec kGrids[] = {{"gridGifts", "赠品", kGifts, "没有可以作为赠品的商品，请在商品资料中设置"}};

/// The warehouse whose stock the list shows.
QString& shownWarehouse() {
  static QString warehouse;
  return warehouse;
}

class TF_Spxs_Add2 : public ui::PickerScreen {
 public:
  TF_Spxs_Add2()
      : PickerScreen({.screen = {.name = "F_Spxs_Add2", .title = "选择赠品", .grids = kGrids},
                      .query = [](const QString& typed) { return sale::giftsToPick(typed, shownWarehouse()); }}) {}
};

constexpr ui::FieldSpec kFields[] = {{"tsl", "数量：", ui::FieldKind::Quantity}};

class TF_Spxs_Sele2 : public ui::Screen {
 public:
  TF_Spxs_Sele2()
      : Screen({.name = "F_Spxs_Sele2",
                .title = "赠品数量",
                .fields = kFields,
                .commands = trading_parts::okCancel,
                .focus = "tsl"}),
        goods_(new QLabel(this)) {
    panel().widget(goods_).form({"tsl"}).buttons("| btnOK btnCancel");
    field("tsl").onEnter([this] {
      saveValue();
      return true;
    });
    on(command("btnOK"), [this] { saveValue(); });
  }

  LineResult edit(Lines where, std::int64_t id, const QString& goods, double quantity, const LinePlace& place) {
    where_ = where;
    id_ = id;
    goodsCode_ = goods;
    quantity_ = quantity;
    place_ = place;
    result_ = {.number = place.number};
    showModal();
    return result_;
  }

 protected:
  void activate() override {
    goods_->setText(lookupValue("select g_name from jxc_goods where g_sn=?", goodsCode_) + u"　库存 "_qs +
                    getStockQty(goodsCode_, place_.warehouse));
    field("tsl").setNumber(quantity_);
  }

 private:
  void saveValue() {
    const double quantity = field("tsl").number();
    if (id_ == 0) {
      result_ = sale::addGift(where_, place_, goodsCode_, quantity, prompt());
    } else if (sale::changeGift(where_, id_, place_, quantity, prompt())) {
      result_.id = id_;
    }
    if (result_.id != 0) return accept();
    field("tsl").focus();
  }

  QLabel* goods_;
  Lines where_ = Lines::Draft;
  std::int64_t id_ = 0;
  QString goodsCode_;
  double quantity_ = 1;
  LinePlace place_;
  LineResult result_;
};

TF_Spxs_Sele2& quantityDialog() {
  return ui::screenAs<TF_Spxs_Sele2>("F_Spxs_Sele2");
}

const ui::Registered<TF_Spxs_Add2> kRegisteredAdd{"F_Spxs_Add2"};
const ui::Registered<TF_Spxs_Sele2> kRegisteredSele{"F_Spxs_Sele2"};

}  // namespace spxs_gift_detail

LineResult addSaleGift(Lines where, const LinePlace& place) {
  using namespace spxs_gift_detail;
  shownWarehouse() = place.warehouse;
  const auto row = ui::screenAs<TF_Spxs_Add2>("F_Spxs_Add2").pick();
  if (!row) return {.number = place.number};
  return quantityDialog().edit(where, 0, row->text("g_sn"), 1, place);
}

void changeSaleGift(Lines where, std::int64_t id, const LinePlace& place) {
  if (const auto line = sale::rules().lines().loadLine(where, id))
    spxs_gift_detail::quantityDialog().edit(where, id, line->goods, line->amounts.quantity(), place);
}

}  // namespace jxc

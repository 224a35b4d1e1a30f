#include "sales/screens/price.h"

#include "masterdata/prices.h"
#include "ui/display.h"
#include "ui/screen.h"

#include <optional>

namespace jxc {
namespace price_detail {

constexpr ui::FieldSpec kFields[] = {
    {"tsj", "　预设售价：", ui::FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsj1", "一级批发价：", ui::FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsj2", "二级批发价：", ui::FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsj3", "三级批发价：", ui::FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsj4", "四级批发价：", ui::FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsj5", "五级批发价：", ui::FieldKind::Money, "", 0, ui::ReadOnly},
};
constexpr ui::CommandSpec kCommands[] = {
    {"btnSj", "用预设售价", "0"}, {"btnSj1", "用一级价", "1"}, {"btnSj2", "用二级价", "2"},
    {"btnSj3", "用三级价", "3"},  {"btnSj4", "用四级价", "4"}, {"btnSj5", "用五级价", "5"},
    {"btnCancel", "取消", "Esc"},
};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Price", .title = "选择售价", .fields = kFields, .commands = kCommands, .focus = "tsj"};

class TF_Price : public ui::Screen {
 public:
  TF_Price() : Screen(kScreen) {
    auto prices = panel();
    for (int i = 0; i < 6; ++i) {
      const std::string row = std::string(kFields[i].name) + " " + std::string(kCommands[i].name);
      prices.row(row);
      on(command(kCommands[i].name), [this, i] {
        if (static_cast<std::size_t>(i) < prices_.size()) chosen_ = prices_[static_cast<std::size_t>(i)].price;
        accept();
      });
    }
    prices.buttons("| btnCancel");
  }

  std::optional<double> choose(const QString& goods) {
    prices_ = goodsPrices(goods);
    chosen_.reset();
    showModal();
    return chosen_;
  }

 protected:
  void activate() override {
    for (std::size_t i = 0; i < prices_.size(); ++i)
      field(kFields[i].name).setNumber(prices_[i].price);
  }

 private:
  std::vector<NamedPrice> prices_;
  std::optional<double> chosen_;
};

const ui::Registered<TF_Price> kRegistered{"F_Price"};

}  // namespace price_detail

void askGoodsPrice(const QString& goods, double& price) {
  if (const auto chosen = ui::screenAs<price_detail::TF_Price>("F_Price").choose(goods)) price = *chosen;
}

}  // namespace jxc

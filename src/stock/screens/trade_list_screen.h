// 购销单据列表: what the list of one side's documents does beside others: pay what is open, give back a whole document.
#pragma once

#include "stock/screens/document_list_screen.h"

namespace jxc {

/// Binds btn_Fukuan and btn_Zdth.
class TradeListScreen : public DocumentListScreen {
 protected:
  TradeListScreen(const ui::EnquirySpec& spec, const PartnerSide& side);

 private:
  void pay();
  void returnWhole();

  const PartnerSide& side_;
};

/// The same of one side, as an enquiry is registered.
template <PartnerType Side>
struct TradeListOf : TradeListScreen {
  explicit TradeListOf(const ui::EnquirySpec& spec) : TradeListScreen(spec, partnerSide(Side)) {}
};

namespace document_list_screen {

template <PartnerType Side, class List>
inline constexpr auto tradeCommands =
    ui::joinedTables(std::array{ui::EnquiryCommand{.name = "btn_Fukuan",
                                                   .caption = Side == PartnerType::Customer ? "收款" : "付款",
                                                   .key = "F12",
                                                   .right = {"wlzk", Side == PartnerType::Customer ? 2 : 5},
                                                   .views = "gridDj"},
                                ui::EnquiryCommand{.name = "btn_Zdth",
                                                   .caption = "整单退货",
                                                   .key = "F9",
                                                   .right = {Side == PartnerType::Customer ? "xsgl" : "cggl", 2},
                                                   .views = "gridDj"}},
                     List::kCommands);

}  // namespace document_list_screen
}  // namespace jxc

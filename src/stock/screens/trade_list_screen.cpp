#include "stock/screens/trade_list_screen.h"

#include "accounts/screens/partner_overview_screens.h"
#include "accounts/settling.h"
#include "stock/screens/trading_screen.h"
#include "ui/refresh_after.h"

namespace jxc {

TradeListScreen::TradeListScreen(const ui::EnquirySpec& spec, PartnerType side, std::string_view paying,
                                 std::string_view returning)
    : DocumentListScreen(spec) {
  on(command("btn_Fukuan"), [this, side, paying] { pay(side, paying); });
  on(command("btn_Zdth"), [this, returning] { returnWhole(returning); });
}

void TradeListScreen::pay(PartnerType side, std::string_view form) {
  const QString number = currentNumber();
  if (number.isEmpty()) return;
  // Amounts may be withheld from the list: the document itself says what is open.
  const auto settlement = partner_books::openSettlement(partnerSide(side), number, prompt());
  if (settlement && ui::screenAs<SettlementScreen>(form).edit(*settlement)) rowsChanged();
}

void TradeListScreen::returnWhole(std::string_view screen) {
  const QString number = currentNumber();
  if (number.isEmpty()) return;
  ui::refreshAfter([&] { ui::screenAs<TradingScreen>(screen).returnDocument(number, prompt()); },
                   [this] { rowsChanged(); });
}

}  // namespace jxc

// 账表部件: what the overviews of both ledgers over partners have in common: what is owed, what is still to invoice.
#pragma once

#include "accounts/partner_overview.h"
#include "accounts/screens/partner_overview_screens.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_text.h"
#include "ui/enquiry_screen.h"

#include <array>

namespace jxc {

/// The ledgers as arguments of a template.
struct OwedBooks {
  static constexpr const partner_books::PartnerLedger& ledger = partner_books::owedLedger;
};
struct InvoiceBooks {
  static constexpr const partner_books::PartnerLedger& ledger = partner_books::invoiceLedger;
};

/// `Owed` and `Got` are the words of the amounts that raise and lower a balance: 应收 and 已收, 应开 and 已开.
template <PartnerType Side, class Books, FixedText Owed, FixedText Got>
struct OverviewParts {
  using Text = PartnerText<Side>;
  using Kind = ui::ColumnKind;

  static std::vector<ListItem> employees() {
    return fillKeyedCombo("jxc_user", "u_name", QStringLiteral("所有经办人"), "id", "u_sn");
  }

  /// What every overview asks for; boxes come behind what one adds.
  static constexpr std::array asked{
      ui::Criterion{ui::Asks::From, "tdate11", "日期："}, ui::Criterion{ui::Asks::To, "tdate12", "至"},
      ui::Criterion{
          .asks = ui::Asks::Partner, .name = "tKhName1", .label = joined<Text::noun, "：">, .pick = pickPartner<Side>},
      ui::Criterion{ui::Asks::Employee, "comUser", "经办人：", employees},
      ui::Criterion{ui::Asks::Key, "tkey", "查找："}};
  static constexpr std::array boxes{ui::Criterion{.asks = ui::Asks::Box,
                                                  .name = "chkZero",
                                                  .label = joined<"期末", Owed, "为零的", Text::noun, "不显示">,
                                                  .box = partner_books::kHidesSettled},
                                    ui::Criterion{.asks = ui::Asks::Box,
                                                  .name = "chkAll",
                                                  .label = joined<"所有", Text::noun>,
                                                  .box = partner_books::kWithIdle,
                                                  .views = "gridHz"}};

  static constexpr ui::ColumnSpec totals[] = {
      {"k_ghskh", joined<Text::noun, "编号">},
      {"name", joined<Text::noun>, Kind::Text, 28},
      {"qcje", joined<"期初", Owed>, Kind::Money, 14, {.sum = true}},
      {"yfje", joined<"本期", Owed>, Kind::Money, 14, {.sum = true}},
      {"sfje", joined<"本期", Got>, Kind::Money, 14, {.sum = true}},
      {"wfje", joined<"期末", Owed>, Kind::Money, 14, {.sum = true}},
  };
  static Sql summary(const Criteria& criteria) {
    return partner_books::overviewSummary(Books::ledger, partnerSide(Side), criteria);
  }
  /// One row a partner, which leads to his lines in "gridMx".
  static constexpr ui::EnquiryView summaryView(std::string_view nothing, std::string_view paper = {}) {
    return {
        .grid = {"gridHz", joined<Owed, "汇总">, totals, nothing, "k_ghskh"},
        .source = {summary, partner_books::kPartnersHaveNoWarehouse},
        .mode = {"rHzb", "汇总表"},
        .chart = {.label = "name", .measure = "wfje"},
        .leads = {"gridMx", [](Criteria& criteria, const Row& row) { criteria.partner = row.text("k_ghskh"); }, "name"},
        .paper = paper};
  }

  /// Opening rows stand back, lines that wait stand out.
  static ui::RowLook lineLook(const Row& row) {
    switch (row.integer("dsort")) {
      case 1:
        return ui::RowLook::Muted;
      case 3:
        return ui::RowLook::Warning;
      default:
        return ui::RowLook::Normal;
    }
  }
  /// Every balance that is not settled is drawn red.
  static ui::RowLook open(const Row& row, std::string_view column) {
    return column == Books::ledger.running && row.number(column) != 0 ? ui::RowLook::Bad : ui::RowLook::Normal;
  }

  /// The repair under the name of its screen.
  template <FixedText Screen>
  static bool recompute(const Criteria& criteria, Prompt&) {
    return ui::screenAs<PartnerRepairScreen>(joined<Screen>).run(criteria.partner, criteria.from);
  }
};

}  // namespace jxc

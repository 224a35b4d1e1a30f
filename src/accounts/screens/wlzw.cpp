// 往来账务(客户)、往来账务(供货商): everything done with one partner or with all of them: documents and their settling,
// freight, statements on paper and as files, what was bought or sold, what is open for how long. One description for
// both sides; customers are looked at by type and region besides, and those who stay away.
#include "accounts/partner_overview.h"
#include "accounts/partner_statement.h"
#include "accounts/screens/partner_overview_screens.h"
#include "masterdata/partner_contacts.h"
#include "output/money_reports.h"
#include "statistics/screens/trade_columns.h"
#include "stock/screens/document_list_screen.h"
#include "ui/file_dialogs.h"
#include "ui/progress.h"

namespace jxc {
namespace wlzw_detail {

using namespace partner_books;  // NOLINT(google-build-using-namespace): inside this file's own namespace
using trade_columns::figures;
using trade_columns::isSales;
using ui::Asks;
using ui::ColumnKind;
using ui::ColumnSpec;

constexpr NoWarehouse kPartnersAreOfAll{"partners are of the whole shop"};

std::vector<ListItem> orders() {
  return {{QStringLiteral("顺序"), u"asc"_qs}, {QStringLiteral("倒序"), u"desc"_qs}};
}
void narrowToPartner(Criteria& criteria, const Row& row) {
  criteria.partner = row.text("ghs_sn");
}
QString documentInWords(const Row& row) {
  return u"单据 "_qs + row.text("djh") + u"　"_qs + row.text("ghs_name");
}

/// What both sides have.
template <PartnerType Side>
struct Statement {
  using Text = PartnerText<Side>;
  static constexpr bool isCustomer = isSales<Side>;
  static constexpr Right money = seesMoney<Side>;
  using Documents = document_list_screen::Columns<SeveralKinds | WithMoney | (isCustomer ? OfCustomers : OfSuppliers)>;
  static constexpr ColumnSpec amount(std::string_view field, std::string_view caption) {
    return {field, caption, ColumnKind::Total, 0, {.sum = true}, money};
  }
  static constexpr ColumnSpec name{"ghs_name", joined<Text::noun>, ColumnKind::Text, 24};

  // The list at the left.
  static Sql partners(const Criteria&) { return statementPartners(partnerSide(Side)); }
  static constexpr ColumnSpec kPartners[] = {{"name", joined<Text::noun>, ColumnKind::Text, 16},
                                             {"ye", joined<Text::owed>, ColumnKind::Total, 9, {}, money},
                                             {.field = "sn", .caption = "编号", .use = {.hidden = true}},
                                             {.field = "tele", .caption = "电话", .use = {.hidden = true}}};
  static constexpr std::string_view kFindIn[] = {"sn", "name", "jm", "tele"};
  static constexpr std::string_view kSideList = isCustomer ? "gridKh" : "gridGhs";
  static constexpr ui::EnquirySide kSide = {
      .grid = {kSideList, joined<Text::noun, "列表">, kPartners, "没有符合条件的往来单位", "sn"},
      .source = {partners, kPartnersAreOfAll},
      .narrow = [](Criteria& criteria, const Row& row) { criteria.partner = row.text("sn"); },
      .find = "tfind",
      .findIn = kFindIn};

  // Documents, and freight and packing.
  using Answer = Sql(const PartnerSide&, const Criteria&, const Warehouses&);
  template <Answer& Of>
  static Sql of(const Criteria& criteria, const Warehouses& warehouses) {
    return Of(partnerSide(Side), criteria, warehouses);
  }
  static std::vector<ListItem> kinds() { return statementKinds(partnerSide(Side)); }
  static std::vector<std::pair<QString, QString>> wordsOfPaper(const Criteria& criteria) {
    return statementWords(partnerSide(Side), criteria);
  }
  static ui::RowLook paidLater(const Row& row, std::string_view column) {
    return column == "hkje" && row.number(column) != 0 ? ui::RowLook::Good : ui::RowLook::Normal;
  }
  static constexpr ui::Criterion kAsked[] = {
      {Asks::From, "tdate11", "日期："},
      {Asks::To, "tdate12", "至"},
      {Asks::Key, "tkey1", "查找："},
      {.asks = Asks::Kind, .name = "comLx", .label = "数据过滤：", .items = kinds, .views = "gridDj"},
      {.asks = Asks::Order, .name = "comSort1", .label = "排序：", .items = orders, .views = "gridDj"},
      {Asks::Warehouse, "comCk1", "仓库："},
      {.asks = Asks::Box, .name = "chkQk", .label = "只看欠款单据", .box = kUnpaidOnly, .views = "gridDj"}};
  static constexpr ui::RowsBelow kGoods = {
      .grid = {"gridDjMx", "单据商品", Documents::template goods<true>, "选择上面的单据，这里显示它的商品", "rowkey"},
      .source = of<statementGoods>,
      .narrow = document_list_screen::toLines,
      .says = documentInWords};
  static constexpr std::array kCharges{amount("yf", "运费"),
                                       amount("bzf", "包装费"),
                                       ColumnSpec{"sl", "数量", ColumnKind::Quantity, 0, {.sum = true}},
                                       amount("yfje", joined<Text::owed, "金额">),
                                       amount("sfje", isCustomer ? "实收金额" : "实付金额"),
                                       amount("yhje", "优惠金额")};
  static constexpr ColumnSpec kPayer{"yffs", "付款方", ColumnKind::Text, 12};
  static constexpr auto kChargeSums = ui::joinedTables(std::array{name, kPayer}, kCharges);
  static constexpr auto kCharged =
      ui::joinedTables(std::array{ColumnSpec{"djh", "单据号", ColumnKind::Text, 15},
                                  ColumnSpec{"rq", "日期", ColumnKind::Date}, name, kPayer},
                       kCharges);
  static constexpr ui::EnquiryView kDocumentViews[] = {
      {.grid = {"gridDj", joined<Text::noun, "所有单据">, Documents::documents, "该时间段内没有单据", "rowkey"},
       .source = of<statementDocuments>,
       .mode = {"rDjb", "单据表"},
       .leads = {.document = "djh"},
       .below = &kGoods,
       .paper = statementPaper(Side),
       .paperWords = wordsOfPaper,
       .rowLook = document_list_screen::lookOf,
       .cellLook = paidLater,
       .foot = {"lHj", document_list_screen::kindTotals}},
      {.grid = {"gridFy", "费用汇总表", kChargeSums, "该时间段内没有带运费或包装费的单据", "rowkey"},
       .source = of<chargeTotals>,
       .mode = {"rFyb", "费用汇总表"},
       .chart = {.label = "ghs_name", .measure = "yf"},
       .leads = {"gridFyDj",
                 [](Criteria& criteria, const Row& row) {
                   narrowToPartner(criteria, row);
                   criteria.group = row.text("yffs");
                 },
                 "ghs_name"}},
      {.grid = {"gridFyDj", "费用单据", kCharged, "没有带运费或包装费的单据", "djh"},
       .source = of<chargedDocuments>,
       .leads = {.document = "djh"}}};
  static bool settle(const Row& row, Prompt& prompt) {
    return editSettlement(partnerSide(Side), openSettlement(partnerSide(Side), row.text("djh"), prompt));
  }
  static constexpr ui::EnquiryCommand kDocumentCommands[] = {
      {.name = "btn_Cx", .caption = "高级查询", .key = "F3", .views = "gridDj"},
      {.name = "btn_Fukuan",
       .caption = isCustomer ? "销售收款" : "采购付款",
       .key = "F6",
       .right = {"wlzk", isCustomer ? 2 : 5},
       .views = "gridDj",
       .elsewhere = joined<Text::taken, "只能在单据表进行！">,
       .rule = settle},
      {.name = "btn_ChaKan", .caption = "查看单据", .key = "F8", .views = "gridDj gridFyDj"},
      {.name = "btn_Dzd", .caption = "批量对账单", .key = "F7", .right = money, .views = "gridDj gridFy"}};
  static constexpr ui::EnquiryTab kDocumentTab = {.name = "cxTab1",
                                                  .caption = joined<Text::noun, "所有单据">,
                                                  .criteria = kAsked,
                                                  .views = kDocumentViews,
                                                  .commands = kDocumentCommands,
                                                  .search = "btnSearch1",
                                                  .period = "btnDate1"};

  // What was bought or sold.
  template <FixedText Number>
  static constexpr std::array kTradeAsked{
      ui::Criterion{Asks::From, joined<"tdate", Number, "1">, "日期："},
      ui::Criterion{Asks::To, joined<"tdate", Number, "2">, "至"},
      ui::Criterion{Asks::Key, joined<"tkey", Number>, "商品信息："},
      ui::Criterion{Asks::Kind, joined<"comLx", Number>, "类型：", trade_columns::kinds<Side>},
      ui::Criterion{Asks::Warehouse, joined<"comCk", Number>, "仓库："},
      ui::Criterion{Asks::Comparison, joined<"comDb", Number>, "对比："}};
  static constexpr std::array<std::string_view, isCustomer ? 3 : 2> kCompared = [] {
    if constexpr (isCustomer)
      return std::array<std::string_view, 3>{"sl", "zje", "lr"};
    else
      return std::array<std::string_view, 2>{"sl", "zje"};
  }();
  static constexpr auto kLast = [] {
    if constexpr (isCustomer)
      return std::array<ColumnSpec, 0>{};
    else
      return std::array{ColumnSpec{"rq", "最后进货日期", ColumnKind::Date}};
  }();
  static constexpr auto kGoodsSums = ui::joinedTables(goodsNames, figures<Side, "">(), kLast, goodsDetails);
  /// Sums by a grouping, whose pieces stand beside an earlier period too.
  template <TradeBy By>
  static constexpr ui::EnquiryView sums(std::string_view grid, std::string_view caption, ui::ViewMode mode,
                                        std::span<const ColumnSpec> columns, std::string_view key,
                                        std::string_view label, std::string_view to) {
    auto view = trade_columns::sumView<Side, By>(grid, mode.name, caption, columns, key, label, to);
    view.mode = mode;
    view.compares = kCompared;
    return view;
  }
  static constexpr ui::EnquiryView kGoodsView =
      sums<TradeBy::Goods>("gridHz", "汇总表", {"rHzb", "汇总表"}, kGoodsSums, "g_sn", "g_name", "gridXf");
  static constexpr ui::EnquiryView kFlow = [] {
    ui::EnquiryView view = trade_columns::lineView<Side>("gridXf", "rLsb", "流水表");
    view.paper = isCustomer ? "khdzmxb" : "jthmxb";
    return view;
  }();
  static constexpr auto kFlowAsked = ui::joinedTables(
      kTradeAsked<"2">,
      std::array{ui::Criterion{
          .asks = Asks::Order, .name = "comSort2", .label = "排序：", .items = orders, .views = "gridXf"}});
  static constexpr ui::EnquiryCommand kTradeCommands[] = {{.name = "btn_Cx2", .caption = "高级查询", .key = "F3"}};
  static constexpr ui::EnquiryTab tradeTab(std::string_view caption, std::span<const ui::EnquiryView> views) {
    return {.name = "cxTab2",
            .caption = caption,
            .criteria = kFlowAsked,
            .views = views,
            .commands = kTradeCommands,
            .search = "btnSearch2",
            .period = "btnDate2"};
  }

  // What is open for how long.
  static constexpr ui::Criterion kAgeAsked[] = {{Asks::Key, "tkey6", joined<Text::noun, "：">},
                                                {Asks::Warehouse, "comCk6", "仓库："}};
  static constexpr ColumnSpec kAges[] = {name,
                                         amount("wfje", isCustomer ? "未收合计" : "未付合计"),
                                         amount("w30", "30天内"),
                                         amount("w60", "31到60天"),
                                         amount("w90", "61到90天"),
                                         amount("wmore", "90天以上"),
                                         amount("qt", "其他往来"),
                                         amount("ye", joined<"当前", Text::owed>),
                                         {"num", "单据数", ColumnKind::Number, 7, {.sum = true}},
                                         {"rq", "最早日期", ColumnKind::Date},
                                         {"lxr", "联系人"},
                                         {"tele", "电话", ColumnKind::Text, 14}};
  static constexpr ui::EnquiryView kAgeViews[] = {
      {.grid = {"gridZl", "欠款账龄", kAges, "没有未结清的单据", "ghs_sn"},
       .source = of<openByAge>,
       .chart = {.label = "ghs_name", .measure = "wfje"},
       .leads = {"gridZlDj", narrowToPartner, "ghs_name"}},
      {.grid = {"gridZlDj", "未结清单据", Documents::documents, "没有未结清的单据", "rowkey"},
       .source = of<openDocuments>,
       .leads = {.document = "djh"},
       .cellLook = paidLater}};
  static constexpr ui::EnquiryTab kAgeTab = {
      .name = "cxTab6", .caption = "欠款账龄", .criteria = kAgeAsked, .views = kAgeViews, .search = "btnSearch6"};

  static constexpr ui::EnquirySpec spec(std::string_view screen, std::span<const ui::EnquiryTab> tabs) {
    return {
        .name = screen, .title = joined<"往来账务(", Text::noun, ")">, .tabs = tabs, .side = &kSide, .focus = "tfind"};
  }

  struct Screen : ui::EnquiryScreen {
    explicit Screen(const ui::EnquirySpec& described) : EnquiryScreen(described) {
      resize(1264, 672);
      grid(kSideList).setMultiSelect(true);
      on(command("btn_ChaKan"), [this] { follow(); });
      on(command("btn_Dzd"), [this] { writeAll(); });
      on(command("btn_Cx"), [this] {
        if (ofDocuments_.ask(command("btn_Cx"))) search();
      });
      on(command("btn_Cx2"), [this] {
        // The goods stand among the inputs here.
        ofTrade_.asked().group = field("tkey2").trimmed();
        if (!ofTrade_.ask(command("btn_Cx2"))) return;
        field("tkey2").setText(ofTrade_.asked().group);
        search();
      });
    }

   protected:
    void activate() override {
      EnquiryScreen::activate();
      const QString partner = handedOverPartner(partnerSide(Side));
      if (partner.isEmpty()) return;
      grid(kSideList).waitLoaded();
      grid(kSideList).selectKey(partner);
    }
    void complete(Criteria& criteria) const override {
      const std::string_view list = shown().spec().name;
      const bool isTrade = list == "gridXf" || list == "gridHz" || list == "gridYf";
      if (!isTrade && list != "gridDj") return;
      const Criteria& more = (isTrade ? ofTrade_ : ofDocuments_).asked();
      criteria.employee = more.employee;
      criteria.goodsClass = more.goodsClass;
      if (!isTrade) criteria.group = more.group;
    }

   private:
    /// Statements of the partners that are marked, or of all that have something to tell.
    void writeAll() {
      const Criteria asked = criteria();
      RowSet partners({"sn", "name"});
      for (const Row& row : grid(kSideList).selectedRows()) {
        if (row.text("sn").isEmpty()) continue;
        partners.addText(row.text("sn").toStdString());
        partners.addText(row.text("name").toStdString());
      }
      if (partners.isEmpty()) partners = partnersOfStatements(partnerSide(Side), asked);
      const QString noun = words(partnerSide(Side).noun);
      if (partners.isEmpty()) return prompt().notice(u"该时间段内没有需要对账的"_qs + noun + u"！"_qs);
      if (!prompt().ask(
              u"将生成 %1 个%2的对账单，每个%2一个PDF文件，\r\n\r\n日期：%3 至 %4，确认吗？"_qs.arg(partners.rowCount())
                  .arg(noun, asked.from, asked.to)))
        return;
      const QString folder = ui::chooseFolder(this, QStringLiteral("对账单保存到"));
      if (folder.isEmpty()) return;
      int written = 0;
      {
        ui::Progress progress(QStringLiteral("正在生成对账单..."), this);
        written = writeStatements(partnerSide(Side), partners, asked, folder, progress.report());
      }
      prompt().notice((written < partners.rowCount() ? u"已取消，"_qs : QString()) +
                      u"生成了 %1 份对账单，保存在：\r\n\r\n%2"_qs.arg(written).arg(folder));
    }

    MoreConditions ofDocuments_{"F_WlzwKh_Cx"}, ofTrade_{"F_WlzwKh_Cx"};
  };
};

// ---- customers ---------------------------------------------------------------------------------------------------

using Customers = Statement<PartnerType::Customer>;
constexpr PartnerType kCustomer = PartnerType::Customer;

constexpr ColumnSpec kMonths[] = {{"tjrq", "月份", ColumnKind::Text, 10},
                                  {"zje", "销售总金额", ColumnKind::Total, 14, {.sum = true}, kSeesPrice},
                                  {"sl", "销售总数量", ColumnKind::Quantity, 14, {.sum = true}},
                                  {"lr", "销售总毛利", ColumnKind::Total, 14, {.sum = true}, kSeesProfit}};
constexpr ui::EnquiryView kMonthView = [] {
  auto view = Customers::sums<TradeBy::Month>("gridYf", "月消费统计", {"rYfb", "月消费统计图"}, kMonths, "tjrq", "tjrq",
                                              "gridXf");
  view.chart.first = true;
  return view;
}();
constexpr ui::EnquiryView kConsumption[] = {Customers::kFlow, Customers::kGoodsView, kMonthView};

/// Customers by what they have in common: a sum shows its customers below, and leads to them and to their lines.
template <TradeBy By, FixedText Number, FixedText Search, FixedText Field, FixedText Caption>
struct Kinds {
  static constexpr auto kSums = ui::joinedTables(
      std::array{ColumnSpec{joined<Field>, joined<Caption>, ColumnKind::Text, 20}}, figures<kCustomer, "">());
  static constexpr auto kOfCustomers =
      ui::joinedTables(std::array{ColumnSpec{"ghs_sn", "客户编号"}, Customers::name}, figures<kCustomer, "">());
  static constexpr std::string_view kCustomerList = joined<"gridKh", Number>, kLineList = joined<"gridMx", Number>;
  static constexpr ui::RowsBelow kBelow = {.grid = {joined<"gridKhs", Number>, joined<"该", Caption, "的客户">,
                                                    kOfCustomers, "选择上面的一行，这里显示其中的客户", "ghs_sn"},
                                           .source = tradeTotalsOf<kCustomer, TradeBy::Partner>,
                                           .narrow = narrowTo<By>};
  static constexpr ui::EnquiryView kSumView = [] {
    auto view = Customers::sums<By>(joined<"gridFx", Number>, joined<"按", Caption, "合计">,
                                    {joined<"rFx", Number>, joined<"按", Caption>}, kSums, joined<Field>, joined<Field>,
                                    kCustomerList);
    view.below = &kBelow;
    return view;
  }();
  static constexpr ui::EnquiryView kViews[] = {
      kSumView,
      Customers::sums<TradeBy::Partner>(kCustomerList, "按客户合计", {joined<"rKh", Number>, "按客户"}, kOfCustomers,
                                        "ghs_sn", "ghs_name", kLineList),
      trade_columns::lineView<PartnerType::Customer>(kLineList, joined<"rMx", Number>, "明细表")};
  static constexpr ui::EnquiryTab kTab = {.name = joined<"cxTab", Number>,
                                          .caption = joined<"客户", Caption, "分析">,
                                          .criteria = Customers::kTradeAsked<Number>,
                                          .views = kViews,
                                          .search = joined<"btnSearch6", Search>,
                                          .period = joined<"btnDate", Number>};
};

// Those who stay away.
constexpr ui::Criterion kDormantAsked[] = {
    {.asks = Asks::Amount, .name = "tdays", .label = "未消费天数超过：", .amount = 90, .whole = true},
    {Asks::Key, "tkey5", "客户："},
    {Asks::Warehouse, "comCk5", "仓库："},
    {.asks = Asks::Box, .name = "chkNever", .label = "包括从未消费的客户", .box = kNeverBought}};
constexpr ColumnSpec kDormant[] = {{"kh_sn", "客户编号"},
                                   {"kh_name", "客户", ColumnKind::Text, 24},
                                   {"days", "未消费天数", ColumnKind::Number, 9},
                                   {"rq", "最后消费日期", ColumnKind::Date},
                                   {"kh_tele", "电话", ColumnKind::Text, 14},
                                   {"kh_lxr", "联系人"},
                                   {"kt_name", "客户类型"},
                                   {"z_name", "地区"},
                                   {"sl", "消费数量", ColumnKind::Quantity, 0, {.sum = true}},
                                   {"zje", "消费总金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
                                   {"lr", "毛利", ColumnKind::Total, 0, {.sum = true}, kSeesProfit}};
constexpr ui::EnquiryView kDormantViews[] = {
    {.grid = {"gridWxf", "长期未消费客户", kDormant, "没有超过这么多天未消费的客户", "kh_sn"},
     .source = dormantCustomers,
     .leads = {"gridMx5",
               [](Criteria& criteria, const Row& row) {
                 criteria.partner = row.text("kh_sn");
                 criteria.key.clear();  // it found the customer
                 criteria.boxes = 0;
               },
               "kh_name"}},
    trade_columns::lineView<PartnerType::Customer>("gridMx5", {}, "明细表")};

using Types = Kinds<TradeBy::CustomerType, "3", "1", "kt_name", "类型">;
using Regions = Kinds<TradeBy::Region, "4", "2", "z_name", "地区">;
constexpr ui::EnquiryTab kCustomerTabs[] = {Customers::kDocumentTab,
                                            Customers::tradeTab("客户消费情况表", kConsumption),
                                            Types::kTab,
                                            Regions::kTab,
                                            {.name = "cxTab5",
                                             .caption = "长期未消费客户",
                                             .criteria = kDormantAsked,
                                             .views = kDormantViews,
                                             .search = "btnSearch63"},
                                            Customers::kAgeTab};
constexpr ui::EnquirySpec kKh = Customers::spec("F_WlzwKh", kCustomerTabs);
const ui::RegisteredEnquiry<Customers::Screen> kRegisteredKh{kKh};

// ---- suppliers ---------------------------------------------------------------------------------------------------

using Suppliers = Statement<PartnerType::Supplier>;

constexpr ui::EnquiryView kSupplied[] = {Suppliers::kGoodsView, Suppliers::kFlow};
constexpr ui::EnquiryTab kSupplierTabs[] = {Suppliers::kDocumentTab, Suppliers::tradeTab("供货商商品", kSupplied),
                                            Suppliers::kAgeTab};
constexpr ui::EnquirySpec kGhs = Suppliers::spec("F_WlzwGhs", kSupplierTabs);
const ui::RegisteredEnquiry<Suppliers::Screen> kRegisteredGhs{kGhs};

}  // namespace wlzw_detail
}  // namespace jxc

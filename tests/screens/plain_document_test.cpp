// A document without partner and money on the one document screen: a loss of goods, with rules of its own, as whoever
// adds such a document describes it.
#include "core/fillers.h"
#include "screens/harness/trading_test.h"
#include "stock/ledger.h"
#include "stock/screens/document_screen.h"

#include <QTabWidget>

namespace jxc::test {
namespace plain_document_test {

using ui::ColumnKind;
using ui::FieldKind;

/// Lines at the cost of the warehouse; only what this test asks.
class LossLines final : public LineRules {
 public:
  LineDraft newLine(const QString& goods, const LinePlace& place, bool) const override {
    LineDraft line;
    line.goods = goods;
    line.amounts.setPrice(getGoodsCost(goods, place.warehouse, place.date));
    return line;
  }
  std::optional<LineDraft> loadLine(Lines, std::int64_t id) const override {
    const RowSet rows = openSelect("select * from jxc_bssp where id=?", id);
    if (rows.isEmpty()) return {};
    LineDraft line;
    line.goods = rows.front().text("g_sn");
    line.note = rows.front().text("bs_note");
    line.amounts.setPrice(rows.front().number("bs_dj"));
    line.amounts.setQuantity(rows.front().number("bs_sl"));
    return line;
  }
  LineResult addLine(Lines, const LinePlace& place, const LineDraft& line, Prompt&) const override {
    const std::int64_t id =
        insertRow("jxc_bssp", {{"gl_djh", place.number}, {"g_sn", line.goods}, {"a_name", session().a_name}});
    write(id, line);
    return {.id = id, .number = place.number};
  }
  bool changeLine(Lines, std::int64_t id, const LinePlace&, const LineDraft& line, Prompt&) const override {
    write(id, line);
    return true;
  }
  double setChange(const QString&, QStringView, Lines, std::int64_t, Prompt&) const override { return 0; }
  ScanResult enterBarcode(const LinePlace& place, const QString& code, bool, Prompt& prompt) const override {
    LineDraft line = newLine(lookupValue("select g_sn from jxc_goods where g_sptm=?", code), place, false);
    line.amounts.setQuantity(1);
    return {.outcome = Scan::Added, .id = addLine(Lines::Draft, place, line, prompt).id, .number = place.number};
  }
  Sql goodsToPick(const LinePlace&, const PickFilter&) const override { return Sql("select * from jxc_goods"); }
  bool mayStage(const QString&, const LinePlace&, Lines, PickingMemory&, Prompt&) const override { return true; }
  bool stockAllows(const QString&, double, const LinePlace&, Prompt&, PickingMemory*) const override { return true; }
  std::int64_t stageGoods(const QString&, double, const LinePlace&, Lines, PickingMemory&, Prompt&) const override {
    return 0;
  }
  CopyResult copyStaged(const LinePlace& place, Lines) const override { return {.number = place.number}; }

 private:
  static void write(std::int64_t id, const LineDraft& line) {
    const double quantity = line.amounts.quantity(), price = line.amounts.price();
    updateRow("jxc_bssp", id,
              {{"bs_sl", quantity}, {"bs_dj", price}, {"bs_zje", quantity * price}, {"bs_note", line.note}});
  }
};

class LossRules final : public RulesOver<DocumentDraft> {
 public:
  const DocumentFamily& family() const override { return families::loss; }
  const LineRules& lines() const override { return lines_; }
  DocumentDraft fresh(const QString& lastDate) const override {
    DocumentDraft draft;
    begin(draft, lastDate);
    return draft;
  }
  SaveResult save(const DocumentDraft& draft, Prompt& prompt) const override {
    const auto writeHead = [&](const QString& number) {
      insertRow("jxc_bsd", {{"gl_djh", number},
                            {"bs_bsrq", draft.date},
                            {"ck_sn", draft.warehouse},
                            {"u_sn", draft.salesperson},
                            {"bs_note", draft.note},
                            {"bs_status", 0},
                            {"bs_checker", u""},
                            {"bs_chkrq", u""},
                            {"a_name", session().a_name}});
    };
    if (isIncomplete(draft, prompt)) return {.number = draft.number};
    return saveDocument(family(), {.number = draft.number, .date = draft.date, .writeHead = writeHead}, prompt);
  }

 private:
  LossLines lines_;
};

const LossRules& lossRules() {
  static const LossRules rules;
  return rules;
}

constexpr ui::FieldSpec kFields[] = {
    {"dateCg", "报损日期：", FieldKind::Date},
    {"jsn", "单据编号：", FieldKind::Text, "jxc_bsd.gl_djh", 0, ui::ReadOnly},
    {"comCk", "报损仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tSptm", "商品条码：", FieldKind::Text},
    {"tnote", "备注：", FieldKind::Text, "jxc_bsd.bs_note"},
    {"tkey", "查找：", FieldKind::Text},
    {"comSort", "排序：", FieldKind::Combo},
};
constexpr ui::ColumnSpec kLines[] = {{"g_sn", "商品编号"},
                                     {"g_name", "商品名称"},
                                     {"bs_sl", "数量", ColumnKind::Quantity, 8, {.sum = true}},
                                     {"bs_note", "备注"}};
constexpr ui::ColumnSpec kWaiting[] = {
    {"gl_djh", "单据编号"}, {"bs_bsrq", "日期", ColumnKind::Date}, {"ck_name", "仓库"}};
constexpr ui::GridSpec kGrids[] = {{"gridLines", "报损商品", kLines},
                                   {"gridWaiting", "待审核单据", kWaiting},
                                   {"gridWaitingLines", "单据商品", kLines}};
constexpr ui::CommandSpec kCommands[] = {
    {"btnPanel", "条码选项"},
    {"btnAddOld", "添加商品", "F2"},
    {"btnModi", "修改", "F3"},
    {"btnDel", "删除", "Ctrl+D"},
    {"btnPrin", "打印", "Ctrl+P"},
    {"btnOK", "保存", "F5"},
    {"btnSearch", "查询", "F2"},
    {"btnRChk", "审核", "F6"},
    {"btnPreview", "预览影响", "F9"},
    {"btn_Check", "全部审核", "F7"},
    {"btn_Dele", "删除单据", "Ctrl+Del"},
    {"btn_Prin", "打印单据", "Ctrl+P"},
    {"btnAdd", "新增商品", "Ctrl+N"},
    {"btnTab2Modi", "修改商品", "F3"},
    {"btnDele", "删除商品", "Ctrl+D"},
    {"btnCancel", "退出", "Esc"},
};
constexpr std::string_view kHeadForm[] = {"dateCg jsn", "comCk comUser tnote"};
constexpr DocumentScreenSpec kLoss = {
    .screen = {.name = "F_Loss", .title = "商品报损", .fields = kFields, .grids = kGrids, .commands = kCommands},
    .draftTitle = "商品报损",
    .waitingTitle = "待审核报损单",
    .lineScreen = "F_Loss_Sele",
    .make = {{"kcgl", 3}, u"商品报损！"},
    .audit = {{"kcgl", 10}, u"商品报损审核！"},
    .deleteWaiting = {{"kcgl", 3}, u"商品报损！"},
    .headForm = kHeadForm,
    .scanRow = "tSptm btnPanel | btnAddOld btnModi btnDel",
    .saveRow = "btnPrin | btnOK btnCancel",
    .searchRow = "tkey btnSearch comSort |",
    .waitingButtons = "btnRChk btnPreview btn_Check btn_Dele btn_Prin |",
    .lineButtons = "btnAdd btnTab2Modi btnDele |",
};
struct LossScreen : DocumentScreenOver<DocumentDraft> {
  LossScreen() : DocumentScreenOver(kLoss, lossRules()) {}
};

constexpr ui::FieldSpec kLineFields[] = {{"tsl", "数量：", FieldKind::Quantity}, {"tnote", "备注：", FieldKind::Text}};
constexpr ui::CommandSpec kLineCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
struct LossLine : LineScreen {
  LossLine()
      : LineScreen(
            {.screen = {.name = "F_Loss_Sele", .title = "报损商品", .fields = kLineFields, .commands = kLineCommands},
             .rules = rulesOf<lossRules>}) {}
};

class PlainDocumentTest : public TradingScreenTest {
 protected:
  PlainDocumentTest() {
    ui::registerScreen("F_Loss_Sele", [] { return static_cast<ui::Screen*>(new LossLine); });
    addGoods({.sn = u"10000001"_qs, .name = u"镜架"_qs, .barcode = u"690"_qs, .cost = 40, .stock = 5});
  }
};

TEST_F(PlainDocumentTest, GoodsAreScannedCountedSavedAndAuditedWithoutAnyMoneyInput) {
  LossScreen screen;
  open(screen, [&](ui::Screen& s) {
    type(s, "tSptm", u"690");
    press(s, "Return");
    ASSERT_EQ(s.grid("gridLines").rowCount(), 1);
    expectScreen("F_Loss_Sele", [&](ui::Screen& line) {
      type(line, "tsl", u"2");
      type(line, "tnote", u"割边损坏");
      press(line, "F5");
    });
    press(s, "F3");
    EXPECT_EQ(s.grid("gridLines").currentNumber("bs_sl"), 2);
    type(s, "tnote", u"盘点发现");
    expectQuestion(
        u"单据保存后处于“未审核”状态，是否确认保存？\r\n\r\n处于“未审核”状态的报损单，可以在“报损/报溢\r\n\r\n"
        "审核”面板中，进行修改及审核操作！"_qs,
        Answer::Yes);
    press(s, "F5");
    EXPECT_TRUE(s.grid("gridLines").isEmpty());
    EXPECT_EQ(rows("select ck_sn,bs_note,bs_status from jxc_bsd"), "100001 盘点发现 0");
    s.findChild<QTabWidget*>()->setCurrentIndex(1);
    ASSERT_EQ(s.grid("gridWaiting").rowCount(), 1);
    EXPECT_EQ(s.grid("gridWaiting").currentText("ck_name"), lookupValue("select ck_name from jxc_ckxx"));
    const QString number = s.grid("gridWaiting").currentText("gl_djh");
    expectScreen("F_Yltx", [&](ui::Screen& preview) { EXPECT_GT(preview.grids().front()->rowCount(), 0); });
    press(s, "F9");
    EXPECT_EQ(rows("select bs_status from jxc_bsd"), "0");
    expectQuestion(u"您的操作将审核单据："_qs + number + u"，确认吗？"_qs, Answer::No);
    press(s, "F6");
    expectQuestion(u"您的操作将审核单据："_qs + number + u"，确认吗？"_qs, Answer::Yes);
    press(s, "F6");
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
  });
  EXPECT_EQ(rows("select kc_sl,kc_zsl from jxc_kcsp where g_sn='10000001'"), "3 3");
  EXPECT_EQ(rows("select gl_sl,gl_je,gl_bz from jxc_goodslist where gl_flag='bs'"), "-2 -80 割边损坏");
}

}  // namespace plain_document_test
}  // namespace jxc::test

#include "maintenance/proof_findings.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace jxc::proof {
namespace proof_findings_detail {

using enum Weight;

constexpr std::u16string_view recompute = u"数据核对→重新计算结存";
constexpr std::u16string_view sync = u"库存查询→库存核对→库存同步";
constexpr std::u16string_view nothing = u"不需要处理";
constexpr std::u16string_view again = u"取消审核该单据后重新审核";

constexpr KindWords table[] = {
    {Kind::Damage, "damage", Wrong, u"帐套文件", u"文件已损坏，通常是磁盘或断电所致：里面的数据不能再相信",
     u"退出系统，换磁盘，用最近的备份恢复；损坏的文件先留着"},
    {Kind::NoChecksums, "no-checksums", Note, u"服务器", u"服务器没有打开数据校验：磁盘悄悄改坏的数据不会被发现",
     u"停止服务器后运行 pg_checksums --enable"},
    {Kind::ForeignCode, "foreign-code", Wrong, u"外来的程序", u"本系统从不建立触发器、视图和规则：有人想让帐套自己做事",
     u"查明是谁建立的，用备份恢复或删除它"},
    {Kind::ForeignTable, "foreign-table", Note, u"外来的数据表", u"不是本系统的数据表或索引", nothing},

    {Kind::UnknownFlag, "flag", Wrong, u"流水标志", u"流水的类型标志不认识，推算时不计入结存", u"查明来源后更正该流水"},
    {Kind::Running, "running", Wrong, u"流水结存", u"结存、均价或结存金额与逐笔推算不符", recompute},
    {Kind::RunningByPrice, "running-by-price", Known, u"流水结存",
     u"“重新计算结存数据”按单价推算（不含折扣），审核单据时按金额推算，两者可以不同", nothing},
    {Kind::RunningOtherDigits, "running-digits", Known, u"小数位数", u"过账时的小数位数参数与现在不同", nothing},
    {Kind::RunningCancelledTwice, "running-cancelled-twice", Known, u"流水结存",
     u"一张单据里同一商品有两行，取消审核时逐行推算，每次都还看得到另一行", recompute},
    {Kind::RunningLateOpening, "running-late-opening", Known, u"流水结存",
     u"期初建账晚于业务录入，建账本身不推算后面的流水", recompute},
    {Kind::RunningAverageSet, "running-average-set", Known, u"流水结存", u"当前均价由操作员修改过，下一次推算会覆盖它",
     nothing},
    {Kind::RunningCostFilled, "running-cost-filled", Known, u"流水结存", u"“出库成本价同步”填入了原来为零的均价",
     nothing},

    {Kind::BalanceMissing, "balance-missing", Wrong, u"当前库存", u"有流水，却没有该商品在该仓库的库存记录", sync},
    {Kind::BalanceTwice, "balance-twice", Wrong, u"当前库存", u"同一商品在同一仓库有两条库存记录", recompute},
    {Kind::BookStock, "book-stock", Wrong, u"帐面库存", u"帐面库存与流水合计不符", sync},
    {Kind::ShelfStock, "shelf-stock", Wrong, u"库存数量", u"库存数量与帐面库存减未入库、加未出库的数量不符", sync},
    {Kind::Sold, "sold", Wrong, u"销售总数", u"销售总数与销售、顾客退货流水合计不符", recompute},
    {Kind::SoldClosed, "sold-closed", Known, u"销售总数", u"数据结算删除了结算日之前的流水，销售总数仍包含它们",
     nothing},
    {Kind::WarehouseCost, "warehouse-cost", Wrong, u"仓库成本均价", u"成本均价与最后一条流水的均价不符", recompute},
    {Kind::WarehouseCostFixed, "warehouse-cost-fixed", Known, u"仓库成本均价",
     u"使用固定成本价：流水均价照常推算，库存的成本均价不变", nothing},
    {Kind::WarehouseCostBehind, "warehouse-cost-behind", Known, u"仓库成本均价",
     u"销售、报损报溢、借货不改成本均价：补录或取消较早的这类单据后，均价要到下一张进货类单据才更新", recompute},
    {Kind::GoodsStock, "goods-stock", Wrong, u"商品总库存", u"商品资料的库存与各仓库合计不符", recompute},
    {Kind::GoodsAverage, "goods-average", Wrong, u"商品成本均价", u"商品资料的成本均价与各仓库加权均价不符", recompute},
    {Kind::GoodsAverageBehind, "goods-average-behind", Known, u"商品成本均价",
     u"只有进货、退货、拆分、捆绑更新商品均价：此后的销售、调拨、盘点改变了加权", recompute},
    {Kind::Month, "month", Wrong, u"本月结存", u"本月结存与当前库存不符", u"审核下一张本月进销单据时自动更新"},
    {Kind::MonthBehind, "month-behind", Known, u"本月结存",
     u"最后一张单据属于以前月份，或是只加减本单金额的库存单据：本月结存由下一张本月进销单据更新", nothing},
    {Kind::MonthTwice, "month-twice", Wrong, u"本月结存", u"同一仓库同一月份有两条结存", u"删除多余的一条"},

    {Kind::PartnerBalance, "partner-balance", Wrong, u"往来余额", u"逐笔余额与发生额不符",
     u"应收（应付）帐表→重新计算"},
    {Kind::PartnerMaster, "partner-master", Wrong, u"往来余额", u"客户（供货商）资料的余额与最后一笔不符",
     u"应收（应付）帐表→重新计算"},
    {Kind::CashBalance, "cash-balance", Wrong, u"现金银行余额", u"逐笔余额与发生额不符", u"现金银行→重新计算"},
    {Kind::CashTransferCancelled, "cash-transfer-cancelled", Known, u"现金银行余额",
     u"取消审核转账时只重新计算所选行的账户，对方账户的余额不变", u"现金银行→重新计算"},
    {Kind::InvoiceBalance, "invoice-balance", Wrong, u"发票余额", u"逐笔未开票余额与发生额不符",
     u"销售（进货）发票→重新计算"},
    {Kind::InvoiceByHand, "invoice-by-hand", Wrong, u"手工发票",
     u"手工发票的单号重复，或者客户（供货商）、应开金额与单号不符", u"查明后删除多余的一张，或删除后重新增加"},

    {Kind::NoLines, "no-lines", Wrong, u"单据", u"单据没有商品明细", u"删除该单据"},
    {Kind::GoodsUnmoved, "goods-unmoved", Wrong, u"单据",
     u"单据标记为已入库（出库），明细还有没入库（出库）的数量：既不在库存里，也不在待入库（出库）的单据里",
     u"取消审核该单据，重新输入该行数量后再审核"},
    {Kind::MoveUnmarked, "move-unmarked", Wrong, u"单据",
     u"单据标记为待入库（出库），商品已全部入库（出库）或取消：单据还列在待入库（出库）的单据里", again},
    {Kind::MovedTooMuch, "moved-too-much", Wrong, u"单据", u"已入库（出库）与取消的数量之和大于单据的数量",
     u"取消审核多入库（出库）的单据"},
    {Kind::PartsDiffer, "parts-differ", Wrong, u"入库出库",
     u"商品的已入库（出库）数量与已审核的入库单（出库单）合计不符", u"取消审核该入库单（出库单）后重新审核"},
    {Kind::LoanDiffers, "loan-differs", Wrong, u"借货还货", u"借货商品的已还、已转销售数量或已用押金与其还货单合计不符",
     u"取消审核该还货单后重新还货"},
    {Kind::LoanTooMuch, "loan-too-much", Wrong, u"借货还货", u"已还与已转销售的数量之和大于借出数量",
     u"取消审核多还的还货单"},
    {Kind::DepositTooMuch, "deposit-too-much", Wrong, u"借货押金", u"退回的押金大于押金减去已用押金后剩下的部分",
     u"取消审核多退押金的还货单后重新还货"},
    {Kind::Checker, "checker", Wrong, u"单据", u"审核状态与审核人、审核日期不一致", again},
    {Kind::WaitingPosted, "waiting-posted", Wrong, u"单据", u"未审核的单据留有库存流水或账目", again},
    {Kind::RowsMissing, "rows-missing", Wrong, u"单据", u"已审核单据的库存流水行数与明细不符", again},
    {Kind::LedgerAmount, "ledger-amount", Wrong, u"单据", u"库存流水的金额或数量与单据明细合计不符", again},
    {Kind::HeadAmount, "head-amount", Wrong, u"单据", u"单据的应收（应付）金额与明细合计不符", again},
    {Kind::StaleBalancing, "stale-balancing", Wrong, u"单据", u"优惠商品的金额不是实付（收）与应付（收）的差额", again},
    {Kind::PartnerLine, "partner-line", Wrong, u"单据", u"已审核单据的往来账与单据不符", again},
    {Kind::InvoiceLine, "invoice-line", Wrong, u"单据", u"已审核单据的应开发票金额与往来账不符，或登记了两行", again},
    {Kind::CashLine, "cash-line", Wrong, u"单据", u"已审核单据的现金银行账与单据不符", again},
    {Kind::DifferenceLine, "difference-line", Wrong, u"单据", u"盘点、拆分、捆绑的成本差额与费用、收入账不符", again},
    {Kind::PaymentLine, "payment-line", Wrong, u"收付款单", u"已审核收付款（应收应付）单的账目与单据不符", again},
    {Kind::ExpenseLine, "expense-line", Wrong, u"费用收入", u"费用或收入的现金银行账与其登记不符", again},
    {Kind::DocumentTwice, "document-twice", Wrong, u"重复单号", u"两张已审核单据使用同一单号", u"查明后删除其中一张"},
    {Kind::DocumentSharedNumber, "document-shared-number", Known, u"重复单号",
     u"两位操作员同时保存用了同一单号，审核时后保存的自动换号", nothing},

    {Kind::LedgerOrphan, "ledger-orphan", Wrong, u"孤立流水", u"库存流水没有对应的已审核单据",
     u"查明后删除该流水并重新计算"},
    {Kind::PartnerOrphan, "partner-orphan", Wrong, u"孤立往来账", u"往来账没有对应的已审核单据",
     u"查明后删除该行并重新计算"},
    {Kind::CashOrphan, "cash-orphan", Wrong, u"孤立现金账", u"现金银行账没有对应的已审核单据",
     u"查明后删除该行并重新计算"},
    {Kind::InvoiceOrphan, "invoice-orphan", Wrong, u"孤立发票账", u"发票账没有对应的已审核单据", u"查明后删除该行"},
    {Kind::RoundingOrphan, "rounding-orphan", Wrong, u"孤立抹零", u"抹零的账目没有对应的已审核收付款单",
     u"查明后删除该行并重新计算"},
    {Kind::ContractOrphan, "contract-orphan", Wrong, u"孤立合同", u"合同的关联单据不存在", u"合同管理→修改→确定"},
    {Kind::ContractGone, "contract-gone", Wrong, u"单据合同", u"单据上的合同已不存在",
     u"待审核单据→单据合同→不用合同（已审核的单据先取消审核）"},
    {Kind::ContractFile, "contract-file", Note, u"合同附件", u"附件文件不在本机，可能在保存它的那台电脑上",
     u"合同管理→修改→选择附件"},
    {Kind::GoodsGone, "goods-gone", Wrong, u"商品资料", u"有库存或流水的商品不在商品资料中", u"重新增加该编号的商品"},
    {Kind::WarehouseGone, "warehouse-gone", Wrong, u"仓库资料", u"有库存或流水的仓库不在仓库资料中",
     u"重新增加该编号的仓库"},
    {Kind::CodeTwice, "code-twice", Wrong, u"重复编号", u"编号重复，单据和统计会重复计算", u"修改其中一个编号"},

    {Kind::LogChain, "log-chain", Wrong, u"操作日志", u"日志被修改、删除或插入过：从这一行起与上一行的校验值不连",
     u"与备份中的日志对照查明"},

    {Kind::OddFigure, "odd-figure", Note, u"不寻常的数字", u"数量或金额超过一百万，多半是把条码扫进了数量栏",
     u"查看该单据，输错的取消审核后改正"},
    {Kind::FutureDay, "future-day", Note, u"不寻常的日期", u"日期在今天以后", u"查看该单据，输错的取消审核后改正"},
    {Kind::DatedBack, "dated-back", Note, u"不寻常的日期", u"录入时比已有的同类单据早 31 天以上，可能选错了月份或年份",
     u"查看该单据，输错的取消审核后改正"},
    {Kind::LockedDay, "locked-day", Note, u"账目锁定",
     u"账目锁定以后又有锁定日期的流水：前台收银不受锁定限制，其他单据不应有", u"查看该单据，不对的解除锁定后改正"},
    {Kind::ClockBehind, "clock-behind", Note, u"本机的时钟", u"本机的日期早于日志最后一条的日期", u"检查本机的时钟"},

    {Kind::Draft, "draft", Note, u"未保存的单据", u"有商品明细，单据还没有保存", u"打开对应界面保存或放弃"},
    {Kind::Staging, "staging", Note, u"已选未入单的商品", u"多选界面里选过、还没有放进单据的商品", nothing},
};

}  // namespace proof_findings_detail

const KindWords& wordsOf(Kind kind) {
  const KindWords& words = proof_findings_detail::table[static_cast<std::size_t>(kind)];
  if (words.kind != kind) throw std::logic_error("kinds of findings are out of order");
  return words;
}

void Findings::add(Kind kind, std::int64_t more, Place place) {
  if (more == 0) return;
  Entry& entry = entries_[kind];
  if (entry.count == 0) entry.first = std::move(place);
  entry.count += more;
}

std::vector<Finding> Findings::all() const {
  std::vector<Finding> findings;
  for (const auto& [kind, entry] : entries_) {
    const KindWords& text = wordsOf(kind);
    findings.push_back({.weight = text.weight,
                        .code = std::string(text.code),
                        .check = words(text.check),
                        .place = entry.first.place,
                        .stored = entry.first.stored,
                        .due = entry.first.due,
                        .reason = words(text.reason),
                        .repair = words(text.repair),
                        .count = entry.count});
  }
  std::ranges::stable_sort(findings, {}, &Finding::weight);
  return findings;
}

int Proof::wrong() const {
  return static_cast<int>(std::ranges::count(findings, Weight::Wrong, &Finding::weight));
}

QString Proof::summary() const {
  const std::string_view damage = wordsOf(Kind::Damage).code;
  if (const auto at = std::ranges::find(findings, damage, &Finding::code); at != findings.end())
    return QStringLiteral("帐套文件已损坏，没有核对帐目：") + at->place;
  const int known = static_cast<int>(std::ranges::count(findings, Weight::Known, &Finding::weight));
  QString text = finished ? QStringLiteral("核对完成：") : QStringLiteral("核对已停止：");
  text += QStringLiteral("%1 条库存流水，%2 张单据，").arg(ledgerRows).arg(documents);
  text += wrong() == 0 ? QStringLiteral("没有发现错误") : QStringLiteral("发现 %1 类错误").arg(wrong());
  if (known > 0) text += QStringLiteral("，%1 类已知差异").arg(known);
  return text + u'。';
}

RowSet Proof::rows() const {
  constexpr std::array<const char*, 3> weights = {"错误", "已知", "提示"};
  RowSet rows({"id", "weight", "level", "checked", "place", "stored", "due", "num", "reason", "repair"});
  std::int64_t id = 0;
  for (const Finding& finding : findings) {
    rows.addInteger(++id);
    rows.addText(weights[static_cast<std::size_t>(finding.weight)]);
    rows.addInteger(static_cast<int>(finding.weight));
    for (const QString* text : {&finding.check, &finding.place, &finding.stored, &finding.due})
      rows.addText(text->toStdString());
    rows.addInteger(finding.count);
    rows.addText(finding.reason.toStdString());
    rows.addText(finding.repair.toStdString());
  }
  return rows;
}

}  // namespace jxc::proof

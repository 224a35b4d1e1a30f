// 分批收发单据族: the records of putaway and issue, and what each of them moves.
#include "accounts/partner_ledger.h"
#include "stock/partial_movement.h"

namespace jxc {
namespace partial_families_detail {

constexpr LineColumns putawayLines = {.table = "jxc_rksp", .quantity = "rk_sl"};
constexpr LineColumns issueLines = {.table = "jxc_cksp", .quantity = "ck_sl"};

template <const PartialMovement& Movement>
std::optional<QString> standsAgainst(const QString& number) {
  return partial::standsAgainst(Movement, number);
}
template <const PartialMovement& Movement>
void post(const QString& number) {
  partial::post(Movement, number);
}
template <const PartialMovement& Movement>
bool takeBack(const QString& number, Prompt& prompt, CancelMode mode) {
  return partial::takeBack(Movement, number, prompt, mode);
}

}  // namespace partial_families_detail

namespace partial {

constexpr PartialMovement putaway = {
    .family = &families::putaway,
    .source = &families::purchaseReceipt,
    .back = &families::purchaseReturn,
    .emptied = "",
    .direction = 1,
    .shortRefusal = u"",
    .shortQuestion = u"",
    .doing = u"入库",
    .sourceWord = u"采购进货单",
    .sourceDeed = u"采购",
    .auditLog = u"审核入库单",
    .auditLogEnd = u"种商品",
};

constexpr PartialMovement issue = {
    .family = &families::issue,
    .source = &families::sale,
    .back = &families::saleReturn,
    .emptied = "ls_ckrq",
    .direction = -1,
    .shortRefusal = u"出库数量不能大于库存数量！",
    .shortQuestion = u"出库数量大于库存数量，出库后库存会出现负数，继续吗？",
    .doing = u"出库",
    .sourceWord = u"商品销售单",
    .sourceDeed = u"销售",
    .auditLog = u"审核出库单",
    .auditLogEnd = u"",
};

// What comes back of a loan is a document of its own rules, since rent and deposit go with it; what is open of the loan
// is the same question.
constexpr PartialMovement lending = {
    .family = &families::loanReturn,
    .source = &families::loan,
    .back = nullptr,
    .emptied = "",
    .direction = 1,
    .shortRefusal = u"",
    .shortQuestion = u"",
    .doing = u"还货",
    .sourceWord = u"客户借货单",
    .sourceDeed = u"借货",
    .auditLog = u"",
    .auditLogEnd = u"",
};

}  // namespace partial

namespace families {

constexpr DocumentFamily putaway = {
    .prefix = u"RK",
    .name = u"商品入库单",
    .head = "jxc_rkd",
    .lines = "jxc_rksp",
    .number = "gl_djh",
    .date = "rk_rq",
    .status = "rk_status",
    .checker = "rk_checker",
    .checkDate = "rk_chkrq",
    .note = "rk_note",
    .warehouse = "ck_sn",
    .line = {.columns = &partial_families_detail::putawayLines, .source = "j_sn", .sourceLine = "id2", .expires = ""},
    .comesIn = true,
    .pieces = "rk_zsl",
    .partial = &partial::putaway,
    .shortageWord = u"出库",
    .partner = "ghs_sn",
    .side = PartnerType::Supplier,
    .make = {"cggl", 8},
    .audit = {"cggl", 9},
    .cancel = {"cggl", 12},
    .savedLog = u"增加未审核入库单",
    .deletedLog = u"删除商品入库单：",
    .emptiedLog = u"因删除单据的所有商品而删除商品入库单：",
    .cancelledLog = u"取消审核商品入库单：",
    .enquiry = u"入库查询",
    .waitingHint = u"处于“未审核”状态的入库单，可以在“待审核\r\n\r\n入库单”面板中，进行修改及审核操作！",
    .standsAgainst = partial_families_detail::standsAgainst<partial::putaway>,
    .post = partial_families_detail::post<partial::putaway>,
    .takeBack = partial_families_detail::takeBack<partial::putaway>,
    .paper = {.kind = u"cgrk", .plain = u"cgrk.fr3"},
};

constexpr DocumentFamily issue = {
    .prefix = u"CK",
    .name = u"商品出库单",
    .head = "jxc_ckd",
    .lines = "jxc_cksp",
    .number = "gl_djh",
    .date = "ck_rq",
    .status = "ck_status",
    .checker = "ck_checker",
    .checkDate = "ck_chkrq",
    .note = "ck_note",
    .warehouse = "ck_sn",
    .line = {.columns = &partial_families_detail::issueLines, .source = "gl_djh2", .sourceLine = "id2", .expires = ""},
    .pieces = "ck_zsl",
    .partial = &partial::issue,
    .shortageWord = u"出库",
    .shortageAtAudit = u"CK",
    .partner = "kh_sn",
    .side = PartnerType::Customer,
    .make = {"xsgl", 6},
    .audit = {"xsgl", 9},
    .cancel = {"xsgl", 13},
    .look = {"xsgl", 10},
    .savedLog = u"增加未审核出库单",
    .deletedLog = u"删除商品出库单：",
    .emptiedLog = u"因删除单据的所有商品而删除商品出库单：",
    .cancelledLog = u"取消审核商品出库单：",
    .enquiry = u"出库查询",
    .waitingHint = u"处于“未审核”状态的出库单，可以在“待审核\r\n\r\n出库单”面板中，进行修改及审核操作！",
    .standsAgainst = partial_families_detail::standsAgainst<partial::issue>,
    .post = partial_families_detail::post<partial::issue>,
    .takeBack = partial_families_detail::takeBack<partial::issue>,
    .paper = {.kind = u"spck", .plain = u"spck.fr3"},
};

}  // namespace families
}  // namespace jxc

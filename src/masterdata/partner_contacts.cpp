#include "masterdata/partner_contacts.h"

#include "core/deletion.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"

#include <array>

namespace jxc {

ContactRecord readContact(const PartnerSide& side, std::int64_t id) {
  const RowSet rows = openSelect(compose("select * from {} where id=?", {side.diary}), id);
  if (rows.isEmpty()) {
    throw DbError(DbError::Kind::Other, QStringLiteral("该联系信息已被其他操作员删除，请刷新列表！"));
  }
  const Row row = rows.front();
  return {.id = id,
          .partner = row.text(side.sn),
          .date = row.text("lx_rq"),
          .note = row.text("lx_note"),
          .employee = row.text("u_sn")};
}

bool saveContact(const PartnerSide& side, const ContactRecord& draft, Prompt& prompt) {
  const QString note = sanitizeKeyword(draft.note.trimmed());
  if (refused({{note.isEmpty(), u"联系内容必须填写！"_qs, Subject::Note},
               {draft.date.isEmpty(), u"联系日期必须填写！"_qs, Subject::Date}},
              prompt))
    return false;
  Transaction transaction(accountDb());
  if (draft.id == 0) {
    insertRow(side.diary,
              {{"lx_rq", draft.date}, {"lx_note", note}, {"u_sn", draft.employee}, {side.sn, draft.partner}});
  } else {
    updateRow(side.diary, draft.id, {{"lx_rq", draft.date}, {"lx_note", note}, {"u_sn", draft.employee}});
  }
  transaction.commit();
  return true;
}

bool deleteContact(const PartnerSide& side, std::int64_t id, Prompt& prompt) {
  return deleteAsking({.table = side.diary, .question = QStringLiteral("您确定要删除该联系信息吗！")}, id, prompt);
}

Sql contactStatement(const PartnerSide& side, const QString& partner) {
  // An employee who was deleted since leaves the record without a name.
  return {compose("select a.*,b.u_name from {} a left join jxc_user b on a.u_sn=b.u_sn where {}=? "
                  "order by a.lx_rq desc,a.id desc",
                  {side.diary, "a." + std::string(side.sn)}),
          partner};
}

namespace partner_contacts_detail {

QString& handedOver(const PartnerSide& side) {
  static std::array<QString, 2> partners;
  return partners[side.isCustomer() ? 0 : 1];
}

}  // namespace partner_contacts_detail

void handOverPartner(const PartnerSide& side, const QString& partner) {
  partner_contacts_detail::handedOver(side) = partner;
}

QString handedOverPartner(const PartnerSide& side) {
  return partner_contacts_detail::handedOver(side);
}

}  // namespace jxc

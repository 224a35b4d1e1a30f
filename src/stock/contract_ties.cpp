#include "stock/contract_ties.h"

#include "accounts/partner_ledger.h"
#include "core/numbers.h"
#include "core/session.h"
#include "core/sql.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/document.h"
#include "stock/document_rules.h"

namespace jxc::contract_ties {
namespace contract_ties_detail {

/// `ht_type` of the contracts that documents of this family have.
QString typeOf(const DocumentFamily& family) {
  return family.side == PartnerType::Customer ? u"kh"_qs : u"ghs"_qs;
}

/// Another document of the family with this contract, the newest; empty: none.
QString otherWith(const DocumentFamily& family, const QString& contract, const QString& document) {
  return lookupValue(compose("select top 1 {} from {} where {}=? and {}<>? order by id desc",
                             {family.number, family.head, family.contract, family.number}),
                     contract, document);
}

bool goesWith(const DocumentFamily& family, const QString& contract, const QString& document) {
  return isAdded(contract) && otherWith(family, contract, document).isEmpty();
}

void untie(const DocumentFamily& family, const QString& contract, const QString& document) {
  execSql("update jxc_htgl set gl_djh=? where ht_sn=? and gl_djh=?", otherWith(family, contract, document), contract,
          document);
}

RowSet contractsOf(const DocumentFamily& family, const QString& document) {
  return openSelect(compose("select distinct {} from {} where {}=? and {}<>''",
                            {family.contract, family.head, family.number, family.contract}),
                    document);
}

void giveUp(const DocumentFamily& family, const QString& document) {
  for (const Row row : contractsOf(family, document)) {
    const QString contract = row.text(family.contract);
    if (goesWith(family, contract, document))
      deleteContract(contract);
    else
      untie(family, contract, document);
  }
}

}  // namespace contract_ties_detail

void markNew(const QString& contract, bool ofDocument) {
  execSql("delete from jxc_htdj where ht_sn=?", contract);  // of one that had the number before a reset
  if (ofDocument) insertRow("jxc_htdj", {{"ht_sn", contract}, {"a_name", session().a_name}});
}

bool isAdded(const QString& contract) {
  return exists("select top 1 id from jxc_htdj where ht_sn=? and ht_sn<>''", contract);
}

bool isOfOwnDraft(const QString& contract) {
  return exists(
      "select top 1 a.id from jxc_htdj a,jxc_htgl b where a.ht_sn=b.ht_sn and a.ht_sn=? and a.a_name=? and "
      "b.gl_djh=''",
      contract, session().a_name);
}

QString addedForDraft(const DocumentFamily& family) {
  if (family.contract.empty()) return {};
  return lookupValue(
      "select top 1 a.ht_sn from jxc_htdj a,jxc_htgl b where a.ht_sn=b.ht_sn and a.a_name=? and b.gl_djh='' and "
      "b.ht_type=? order by a.id desc",
      session().a_name, contract_ties_detail::typeOf(family));
}

QString shown(const QString& contract) {
  if (contract.isEmpty()) return {};
  return lookupValue("select ht_sn+' '+ht_name from jxc_htgl where ht_sn=?", contract);
}

Refusal against(const DocumentFamily& family, const QString& contract, const QString& partner) {
  if (contract.isEmpty()) return {};
  const RowSet rows = openSelect("select ht_type,ht_name,ghs_sn from jxc_htgl where ht_sn=?", contract);
  if (rows.isEmpty() || rows.front().text("ht_type") != contract_ties_detail::typeOf(family))
    return {u"合同 "_qs + contract + u" 刚刚被其他操作员删除，请重新选择合同！"_qs};
  const Row row = rows.front();
  if (row.text("ghs_sn") == partner || isOfOwnDraft(contract)) return {};
  const DocumentPartner& side = partnerOf(family);
  return {u"合同“%1”是与“%2”签订的，请重新选择合同！"_qs.arg(
      row.text("ht_name"),
      lookupValue(compose("select {} from {} where {}=?", {side.name, side.table, side.key}), row.text("ghs_sn")))};
}

void htLink(const QString& contract, const QString& partner, const QString& document) {
  execSql(
      "delete from jxc_htdj where ht_sn=? and (a_name<>? or exists (select h.id from jxc_htgl h where "
      "h.ht_sn=jxc_htdj.ht_sn and h.gl_djh<>'' and h.gl_djh<>?))",
      contract, session().a_name, document);
  execSql("update jxc_htgl set ghs_sn=?,gl_djh=? where ht_sn=?", partner, document, contract);
}

Refusal change(const DocumentFamily& family, const QString& document, const QString& seen, const QString& contract) {
  using namespace contract_ties_detail;
  Transaction transaction(accountDb());
  if (const Refusal locked = linesLocked(family, document)) return locked;
  const RowSet heads = openSelect(compose("select id,{},{} from {} where {}=? and {}=0 order by id",
                                          {family.partner, family.contract, family.head, family.number, family.status}),
                                  document);
  if (heads.isEmpty()) return {changedMeanwhile(document)};
  const Row head = heads.front();
  if (head.text(family.contract) == contract) return {};
  if (head.text(family.contract) != seen) return {changedMeanwhile(document)};
  const QString partner = head.text(family.partner);
  if (const Refusal stands = against(family, contract, partner)) return stands;
  giveUp(family, document);
  updateRow(family.head, head.integer("id"), {{family.contract, contract}});
  if (!contract.isEmpty()) htLink(contract, partner, document);
  transaction.commit();
  return {};
}

void documentGoes(const DocumentFamily& family, const QString& document) {
  if (family.contract.empty()) return;
  contract_ties_detail::giveUp(family, document);
  // One that the head does not name, of an older set: no document stands behind it any more.
  execSql("update jxc_htgl set gl_djh='' where gl_djh=?", document);
}

void partnerChanged(const DocumentFamily& family, const QString& document, const QString& partner) {
  using namespace contract_ties_detail;
  if (family.contract.empty()) return;
  for (const Row row : contractsOf(family, document)) {
    const QString contract = row.text(family.contract);
    if (goesWith(family, contract, document)) {
      execSql("update jxc_htgl set ghs_sn=? where ht_sn=?", partner, contract);
    } else if (against(family, contract, partner)) {
      untie(family, contract, document);
      execSql(compose("update {} set {}='' where {}=? and {}=?",
                      {family.head, family.contract, family.number, family.contract}),
              document, contract);
    }
  }
}

QString standingDocument(const QString& contract) {
  const QString told = lookupValue("select gl_djh from jxc_htgl where ht_sn=?", contract);
  QString stands;
  for (const DocumentFamily* family : {&families::purchaseReceipt, &families::sale}) {
    if (rowExists(family->head, family->number, told)) return told;
    if (stands.isEmpty()) stands = contract_ties_detail::otherWith(*family, contract, told);
  }
  return stands;
}

void deleteContract(const QString& contract) {
  for (const Row row : openSelect("select * from jxc_htgl where ht_sn=?", contract))
    leaveFile(row);
  execSql("delete from jxc_htgl where ht_sn=?", contract);
  execSql("delete from jxc_htdj where ht_sn=?", contract);
}

void leaveFile(const Row& contract) {
  if (contract.text("ht_fujian").isEmpty()) return;
  insertRow("jxc_htwj", {{"ht_path", contract.text("ht_path")},
                         {"ht_fujian", contract.text("ht_fujian")},
                         {"ht_fjname", contract.text("ht_fjname")},
                         {"ht_type", contract.text("ht_type")},
                         {"ht_rq", u""}});
}

}  // namespace jxc::contract_ties

// 单据列表: documents of any kinds as one list, audited ones and those that wait: heads, their lines, and what is done
// with them from there.
#pragma once

#include "core/enquiry.h"
#include "core/fillers.h"
#include "core/list_audit.h"
#include "core/prompt.h"
#include "stock/document_family.h"

#include <QString>

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jxc {

/// Boxes of a list's criteria: only what is not paid yet; waiting documents too; only those; of a transfer the
/// warehouse is the one that goods leave, or the one that they come to.
inline constexpr unsigned kUnpaidOnly = 1, kWaitingToo = 2, kWaitingOnly = 4, kGoesOut = 8, kComesIn = 16;
/// Whatever is open, also what we owe for a return.
inline constexpr unsigned kOpenOnly = 32;
/// An order of a list, and the day that its period means then: by the day of audit in place of the document's own.
inline constexpr const char16_t* kByAudit = u"chkrq";

/// In sums the row of those that are gone from their list (partners, classes, employees) or that have none, by its key
/// and by its name. As what is asked for it means just these.
inline constexpr const char16_t* kOthers = u"其他";
/// Of whom it is, by number: one employee, all that are gone, or whoever.
void addEmployee(Filter& filter, std::string_view column, const QString& employee);

using Families = std::span<const DocumentFamily* const>;

/// How a list differs from the usual one.
struct DocumentListing {
  bool byRight = true;  // each kind only for who has one of its rights; without: whoever may open the list sees all
  /// Further columns of a head, ",a.x as y": the head is `a`, its partner `b`.
  std::string (*columns)(const DocumentFamily&) = nullptr;
};

/// Heads of the families, each kind only for who has one of its rights; a partner who is gone is told by his number.
/// Asked for by period, key (number, partner, note, original number), warehouse (either one of a transfer), kind (the
/// prefix), partner, employee, document, goods and boxes. Columns: djh, gtype ("采购进货"), status, zt ("已审核",
/// "待审核"), rq, ghs_sn, ghs_name, ck_name, ck_in (where a transfer goes), zg_name and zg_sl (what a split takes apart
/// or a bundle becomes), u_name, dnote, a_name, checker, chkrq, j_sn2 (the partner's number), fpno, j_th (it went back
/// as a whole), rowkey; yuan: yfje, sfje, yhje, hkje, wfje (open), yf, bzf (freight, packing; yffs: who pays), zje
/// (worth: what is due, or the sum of the lines). Amounts are null for who must not see prices (cost, where goods were
/// bought or move within the house); those of returns are negative, as their heads keep them.
Sql listedDocuments(Families families, const Criteria& criteria, const Warehouses& warehouses,
                    const DocumentListing& listing = {});

/// The lines of the same documents, with the same conditions, called as the ledger calls them: gl_kdrq, gl_djh, gl_dj,
/// gl_sl, gl_je, gl_taxje, gl_zje (of returns negative), gl_bz; zmsl and cysl are book and difference of a count, ck_in
/// the other warehouse of a line, lid its id.
Sql listedLines(Families families, const Criteria& criteria, const Warehouses& warehouses,
                const DocumentListing& listing = {});

/// How many of these documents wait for their audit: a row `n` a kind that the operator may see.
Sql waitingDocuments(Families families, const Warehouses& warehouses);

/// What a document leaves open, in yuan, of a head `a` of a kind that has money: due less what was paid with it,
/// discounted, and collected since.
std::string openAmount(const DocumentFamily& family);
/// "采购进货", "库存调拨" …
QString kindWord(const DocumentFamily& family);
/// What a list of kinds offers: all of them, and each that the listing shows the operator.
std::vector<ListItem> listedKinds(Families families, const DocumentListing& listing = {});
/// Two letters of a kind and what its day and turn make of it.
bool isDocumentNumber(QStringView typed);
/// The number of a document of these families that the operator may look at, typed or scanned; otherwise says that
/// there is none.
std::optional<QString> findListed(Families families, const QString& typed, Prompt& prompt);

/// Takes the audit of a document back (`cancelDocument`); one that waits is refused. True: it is cancelled.
bool cancelListed(const QString& number, Prompt& prompt);
/// Asks once, then cancels all of them, the last one posted first, and tells all refusals at the end, a missing right
/// once for each kind. The number of those that were cancelled; nothing: the operator said no.
std::optional<int> cancelAllListed(std::span<const QString> numbers, Prompt& prompt,
                                   const AuditProgress& progress = {});

/// A set of families that an enquiry lists.
template <const DocumentFamily&... Family>
struct DocumentSet {
  static constexpr std::array<const DocumentFamily*, sizeof...(Family)> families{&Family...};
  static constexpr bool isOne = sizeof...(Family) == 1;
  static Sql documents(const Criteria& criteria, const Warehouses& warehouses) {
    return listedDocuments(families, criteria, warehouses);
  }
  static Sql lines(const Criteria& criteria, const Warehouses& warehouses) {
    return listedLines(families, criteria, warehouses);
  }
  static std::vector<ListItem> kinds() { return listedKinds(families); }
};
template <std::size_t... I>
DocumentSet<families::all[I].get()...> everyDocument(std::index_sequence<I...>);  // for its type only
/// All that there are, in the order of `documentFamilies`.
using EveryDocument = decltype(everyDocument(std::make_index_sequence<std::size(families::all)>()));

}  // namespace jxc

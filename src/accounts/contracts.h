// 合同: contracts with suppliers and customers, each with a text and an attached file; a purchase or a sale may point
// to its contract.
#pragma once

#include "accounts/attachments.h"
#include "core/enquiry.h"
#include "core/prompt.h"
#include "masterdata/partner_side.h"
#include "stock/contract_ties.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc::contracts {

using contract_ties::htLink;

struct Draft {
  QString number;  // ht_sn; empty for a new one
  QString name, date;
  QString partner;   // kh_sn or ghs_sn
  QString employee;  // u_sn
  QString content;   // any length
  QString file;      // an attachment that was chosen now; empty: the one that is there stays
  attachments::Keeper keeper = attachments::Keeper::Folder;  // that it goes to
  QString shown = {};       // what stood in it when it was opened: another operator's change is not overwritten unseen
  bool ofDocument = false;  // a new one is added for a document that is being made, and goes with it
};

/// A contract as it is looked at.
struct Contract {
  std::int64_t id = 0;
  QString number, name, date, partner, partnerName, employee, employeeName, content;
  QString document;    // that it is tied to
  QString attachment;  // its shown name; empty: there is none
  QString shown;       // for the draft of a change
};

/// Of either side. Nothing, after telling so, when another operator has deleted it.
std::optional<Contract> openContract(const PartnerSide& side, const QString& number, Prompt& prompt);
/// Saves a new or changed contract with its attachment, which goes first: a file that cannot be taken is refused with
/// the reason, or with what the server said, and nothing is written. Its number, or nothing when refused or stopped.
std::optional<QString> saveContract(const PartnerSide& side, const Draft& draft, Prompt& prompt,
                                    const attachments::Progress& progress = {});

/// Path of a contract's attachment on this machine, fetched from its server where it lies on one, ready to be opened;
/// nothing, after telling why, where there is none.
std::optional<QString> attachmentToOpen(const QString& number, Prompt& prompt,
                                        const attachments::Progress& progress = {});

/// Deletes a contract with its file, and what points to it. Asks, and tells of a file that could not be removed.
bool deleteContract(const QString& number, Prompt& prompt, const attachments::Progress& progress = {});
/// The same without questions, whatever points to it: of a contract that was added for a document which is given up.
/// Waits for no server.
void htDelete(const QString& number);
/// The same for the draft of a document that is left without saving: of one that was picked for another document
/// meanwhile nothing goes.
void dropAdded(const QString& number);
/// Removes the files that no contract names, those on a server beside the window; what could not be reached, or lies in
/// a folder of another station, is tried again with the next call. Whoever deletes a document that may have a contract
/// calls it when that is done; each login does.
void removeLeftFiles();

/// Contracts of a period and with a key in number, name, its letters or the partner's, the newest first, with `u_name`
/// and the partner's name as `ghs_name` on both sides.
Sql contractList(const PartnerSide& side, const Criteria& criteria);
inline constexpr NoWarehouse kContractsHaveNoWarehouse{"a contract binds the shop, whichever branch it was made for"};

}  // namespace jxc::contracts

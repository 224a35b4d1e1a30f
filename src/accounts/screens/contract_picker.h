// 单据合同: which contract a receipt or a sale has: picked from those with its partner, added, or none.
#pragma once

#include "masterdata/partner_side.h"

#include <QString>

#include <optional>

namespace jxc {

/// What a document is to its contract.
struct ContractOfDocument {
  const PartnerSide* side = &supplierSide;
  QString partner;   // code
  QString contract;  // number of the one that it has; empty: none
  bool mayChange = true;
};

/// Opens the list of the partner's contracts. The number of the contract that the document is to have, empty for none;
/// nothing: the operator left it as it is.
std::optional<QString> chooseContract(const ContractOfDocument& document);

}  // namespace jxc
